// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "apps/course/CourseDocument.h"
#include "apps/course/CourseKeys.h"
#include "apps/course/CourseReading.h"

/// Looks at the files that a course file lists. For a course that is worked on every path will do.
class ListedFiles {
 public:
  ListedFiles(const std::string& courseFile, CoursePurpose coursePurpose, CourseStop stop,
              CourseFileErrors& errorList);

  /// Counts a file or a module of the course. False, with an error noted once, if there are too many of them
  /// together, and if the reading is stopped.
  [[nodiscard]] bool Admit(const YAML::Mark& mark);
  /// The file that the key gives, by its path or as a map with options. None, with an error noted, unless it
  /// is admitted, is there and of a kind that a course can take; and if the key is absent.
  [[nodiscard]] std::optional<ListedFile> Find(const CourseKeys& keys, std::string_view key);
  /// Likewise those of the key's list.
  [[nodiscard]] std::vector<ListedFile> FindAll(const CourseKeys& keys, std::string_view key);
  /// From here on options of adoption are errors: files that are taken as they are have none.
  void RefuseOptions() { takesOptions = false; }
  /// From here on what completes has passed, in every package that doesn't say otherwise.
  void LetCompletionPass() { completionPasses = true; }

 private:
  [[nodiscard]] std::vector<YAML::Node> ReadList(const CourseKeys& keys, std::string_view key) const;
  [[nodiscard]] std::optional<ListedFile> Read(const YAML::Node& node, const std::string& what,
                                               const YAML::Mark& place);
  /// The options of a file that isn't adopted are errors.
  void RefuseAdoption(const CourseKeys& keys, const std::string& reason);
  void ReadOptions(const CourseKeys& keys, ListedFile& file);
  [[nodiscard]] std::optional<ListedFile> Look(const CourseText& text);

  CoursePurpose purpose;
  CourseStop isStopped;
  bool takesOptions = true;
  bool completionPasses = false;
  std::string folder;
  std::size_t count = 0;
  CourseFileErrors& errors;
};
