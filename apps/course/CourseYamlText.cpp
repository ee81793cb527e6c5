// SPDX-License-Identifier: Apache-2.0
#include "apps/course/CourseYamlText.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include "host/text/TzString.h"

namespace {

bool IsLetter(char byte) { return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z'); }
bool IsDigit(char byte) { return byte >= '0' && byte <= '9'; }

/// Words that readers of YAML 1.1 or 1.2 take for something else than a text.
bool IsReserved(std::string_view text) {
  static constexpr std::string_view kWords[] = {"null", "true", "false", "yes", "no", "on",
                                                "off",  "y",    "n",     "nan", "inf"};
  std::string word(text);
  std::ranges::transform(word, word.begin(), [](char byte) {
    return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte - 'A' + 'a') : byte;
  });
  return std::ranges::find(kWords, word) != std::end(kWords);
}

/// Only what needs no thought: letters first, or a path's start, and no sign that means anything in YAML.
bool IsPlain(std::string_view text) {
  const auto isHarmless = [](char byte) {
    return IsLetter(byte) || IsDigit(byte) || byte == ' ' || byte == '_' || byte == '-' || byte == '.' ||
           byte == '/' || byte == '(' || byte == ')';
  };
  if (text.empty() || text.back() == ' ' || !std::ranges::all_of(text, isHarmless)) return false;
  const bool isPath = text.front() == '/' || text.starts_with("../");
  return (isPath || IsLetter(text.front())) && !IsReserved(text);
}

/// The escape of a character that can't stand in double quotes; empty if it can.
std::string EscapeOf(char16_t unit) {
  switch (unit) {
    case u'"':
      return "\\\"";
    case u'\\':
      return "\\\\";
    case u'\n':
      return "\\n";
    case u'\t':
      return "\\t";
    case u'\r':
      return "\\r";
    default:
      break;
  }
  const bool isControl = unit < 0x20 || (unit >= 0x7F && unit < 0xA0);
  const bool isBreak = unit == 0x2028 || unit == 0x2029;
  const bool isMarkOrNone = unit == 0xFEFF || unit >= 0xFFFE;
  if (!isControl && !isBreak && !isMarkOrNone) return {};
  std::array<char, 8> escape = {};
  std::snprintf(escape.data(), escape.size(), "\\u%04X", static_cast<unsigned>(unit));
  return escape.data();
}

}  // namespace

std::string QuoteYamlText(std::string_view utf8) {
  const TzString text(utf8);
  std::string quoted = "\"";
  std::size_t start = 0;
  for (std::size_t index = 0; index < text.Length(); ++index) {
    const std::string escape = EscapeOf(text.At(index));
    if (escape.empty()) continue;
    quoted += text.Substring(start, index - start).GetUTF8String();
    if (text.At(index) != 0) quoted += escape;
    start = index + 1;
  }
  return quoted + text.Substring(start, text.Length()).GetUTF8String() + "\"";
}

std::string WriteYamlText(std::string_view utf8) {
  return IsPlain(utf8) ? std::string(utf8) : QuoteYamlText(utf8);
}
