// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <yaml-cpp/yaml.h>

#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "apps/course/CourseFileError.h"

/// Gathers the errors of a course file. Of very many it keeps the first by place, and counts the others.
class CourseFileErrors {
 public:
  void Add(const YAML::Mark& mark, std::string message, std::string reason = {},
           CourseFault fault = CourseFault::Wrong);
  /// An error of the file as a whole.
  void Add(std::string message, CourseFault fault = CourseFault::Wrong);

  /// The text, in UTF-8, that the marks are of.
  void SetText(std::string markedText) { text = std::move(markedText); }

  /// By line and column; of very many the first, and how many more there are. Columns count characters.
  [[nodiscard]] std::vector<CourseFileError> TakeSorted();

 private:
  void Keep(CourseFileError error);
  /// Of the first errors, whose columns count bytes, as marks do.
  void CountCharacters();

  std::string text;
  /// Sorted.
  std::vector<CourseFileError> first;
  std::size_t rest = 0;
  CourseFault restFault = CourseFault::Refused;
};

/// A text with the place where it stands.
struct CourseText {
  std::string text;
  YAML::Mark mark;
};

/// The node's text. None, with an error noted, if it has none; `what` names the node, `place` is where it is
/// asked for.
std::optional<CourseText> ReadCourseText(const YAML::Node& node, const std::string& what,
                                         const YAML::Mark& place, CourseFileErrors& errors);

/// One map of a course file, read key by key. Unknown and repeated keys, and values of the wrong type are
/// noted as errors; a value that is wrong counts as absent.
class CourseKeys {
 public:
  /// `what` names the map in messages: "the course file", "a module". `map` may be no map at all.
  CourseKeys(const YAML::Node& map, std::string_view what, std::span<const std::string_view> allowed,
             CourseFileErrors& errorList);

  [[nodiscard]] bool Has(std::string_view key) const { return entries.contains(key); }
  /// Where the key stands; the map's own place if it is absent.
  [[nodiscard]] YAML::Mark GetKeyMark(std::string_view key) const;
  [[nodiscard]] YAML::Mark GetMark() const { return mark; }

  /// A number counts as the text that it is written as.
  [[nodiscard]] std::optional<CourseText> ReadText(std::string_view key) const;
  [[nodiscard]] bool ReadFlag(std::string_view key) const;
  /// The value, whatever it is.
  [[nodiscard]] std::optional<YAML::Node> ReadNode(std::string_view key) const;
  /// The list's entries, whatever they are.
  [[nodiscard]] std::vector<YAML::Node> ReadList(std::string_view key) const;
  /// Likewise; an empty list is an error.
  [[nodiscard]] std::vector<YAML::Node> ReadFilledList(std::string_view key) const;
  /// Notes an error if the key is absent of a map. `what` says what it is for.
  void Require(std::string_view key, std::string_view what) const;

 private:
  struct Entry {
    YAML::Node value;
    YAML::Mark mark;
  };

  void Enter(const YAML::Node& key, const YAML::Node& value, std::span<const std::string_view> allowed);

  std::map<std::string, Entry, std::less<>> entries;
  std::string_view name;
  YAML::Mark mark;
  bool isMap;
  CourseFileErrors& errors;
};
