// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "apps/course/CourseDocument.h"
#include "apps/course/CourseFileError.h"

struct CourseFileResult {
  CourseDocument course;
  /// By line and column. The course is of use only without any.
  std::vector<CourseFileError> errors;
};

// Both read YAML 1.2. Paths in it are relative to the file's own folder. Some messages come from the
// session's dictionary, which must be there. Reading ends early, with an error that says so, once `stop`
// answers true.

/// Reads a course that is to become a package: checked as far as that goes without opening the files that it
/// lists.
CourseFileResult ReadCourseFile(const std::string& path, const CourseStop& stop = nullptr);

/// Reads a course that somebody goes on working on. Whatever a course may lack on its way is fine: files and
/// modules, a module's tests and content, weightages that add up; a listed file that isn't there is kept and
/// marked. What is no course file at all is an error as ever, since it would be lost when the course is
/// saved.
CourseFileResult ReadCourseDraft(const std::string& path, const CourseStop& stop = nullptr);
