// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>

#include "apps/cli/CourseFile.h"
#include "apps/cli/CourseKeys.h"

/// Looks at the files that a course file lists.
class ListedFiles {
 public:
  ListedFiles(const std::string& courseFile, CourseFileErrors& errorList);

  /// None, with an error noted, unless the file is there and of a kind that a course can take.
  [[nodiscard]] std::optional<ListedFile> Find(const CourseText& text);

 private:
  std::string folder;
  CourseFileErrors& errors;
};
