// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "apps/cli/CourseFile.h"
#include "apps/cli/CourseKeys.h"

/// Looks at the files that a course file lists.
class ListedFiles {
 public:
  ListedFiles(const std::string& courseFile, CourseFileErrors& errorList);

  /// Counts a file or a module of the course. False, with an error noted once, if there are too many of them
  /// together, and if the user interrupts.
  [[nodiscard]] bool Admit(const YAML::Mark& mark);
  /// None, with an error noted, unless the file is admitted, is there and of a kind that a course can take.
  [[nodiscard]] std::optional<ListedFile> Find(const CourseText& text);

 private:
  std::string folder;
  std::size_t count = 0;
  CourseFileErrors& errors;
};
