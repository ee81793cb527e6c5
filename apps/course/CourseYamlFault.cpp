// SPDX-License-Identifier: Apache-2.0
#include "apps/course/CourseYamlFault.h"

#include <yaml-cpp/exceptions.h>

#include <string_view>

namespace {

constexpr const char* kAlias =
    "'*' starts an alias, and nothing has its name; put a text that starts with '*' in quotes";
constexpr const char* kAnchor = "'&' starts an anchor's name; put a text that starts with '&' in quotes";
constexpr const char* kEscape =
    "this escape means nothing in double quotes; write a back-slash twice, or use single quotes";
constexpr const char* kIndent =
    "this belongs to nothing above it; the keys or entries of one level start in one column, and every key "
    "has its ': '";

}  // namespace

std::string DescribeYamlFault(const std::string& parserMessage) {
  static const struct {
    std::string_view start;
    const char* words;
  } faults[] = {
      {YAML::ErrorMsg::MAP_VALUE,
       "a ':' can't stand here; a text that holds ': ' needs quotes, the keys of one level start in one "
       "column, and every one has its ': '"},
      {YAML::ErrorMsg::MAP_KEY, "a key can't start here; the keys of one level start in one column"},
      {YAML::ErrorMsg::END_OF_MAP_FLOW, "a ',' or the '}' of a map is missing before this"},
      {YAML::ErrorMsg::END_OF_SEQ_FLOW, "a ',' or the ']' of a list is missing before this"},
      {YAML::ErrorMsg::END_OF_MAP, kIndent},
      {YAML::ErrorMsg::END_OF_SEQ, kIndent},
      {YAML::ErrorMsg::BLOCK_ENTRY,
       "a list's entry can't start here; each starts in a line of its own, indented with blanks"},
      {YAML::ErrorMsg::TAB_IN_INDENTATION, "a tab can't indent a line; use blanks"},
      {YAML::ErrorMsg::FLOW_END, "this bracket closes nothing; put a text that holds it in quotes"},
      {YAML::ErrorMsg::UNKNOWN_TOKEN, "a text can't start with this character; put it in quotes"},
      {YAML::ErrorMsg::EOF_IN_SCALAR, "the quotation mark that opens a text behind this is never closed"},
      {YAML::ErrorMsg::DOC_IN_SCALAR, "no line of a text in quotes can start with '---' or '...'"},
      {YAML::ErrorMsg::CHAR_IN_BLOCK,
       "nothing can follow '|' or '>' in a line; put a text that starts with one in quotes"},
      {YAML::ErrorMsg::INVALID_ESCAPE, kEscape},
      {YAML::ErrorMsg::INVALID_HEX, kEscape},
      {YAML::ErrorMsg::INVALID_UNICODE, kEscape},
      {YAML::ErrorMsg::UNKNOWN_ANCHOR, kAlias},
      {YAML::ErrorMsg::ALIAS_NOT_FOUND, kAlias},
      {YAML::ErrorMsg::CHAR_IN_ALIAS, kAlias},
      {YAML::ErrorMsg::ANCHOR_NOT_FOUND, kAnchor},
      {YAML::ErrorMsg::CHAR_IN_ANCHOR, kAnchor},
  };
  for (const auto& [start, words] : faults) {
    if (parserMessage.starts_with(start)) return words;
  }
  return parserMessage;
}
