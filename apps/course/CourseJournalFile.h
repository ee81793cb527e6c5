// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "apps/course/CourseDocument.h"
#include "apps/course/CourseFileError.h"
#include "host/session/TzProblem.h"

/// Unsaved work on a course.
struct CourseJournalEntry {
  CourseDocument course;
  /// The course file that it was opened from or last saved to; absent if there is none yet.
  std::optional<std::string> courseFile;
  /// When it was written, in seconds since 1970.
  std::int64_t time = 0;
};

struct CourseJournalResult {
  CourseJournalEntry entry;
  /// The entry is of use only without any.
  std::vector<CourseFileError> errors;
};

/// Writes a journal in one step: a YAML map of the time, the course file and the course with absolute paths.
/// None if it was written.
[[nodiscard]] std::optional<TzProblem> WriteCourseJournal(const std::string& path,
                                                          const CourseJournalEntry& entry);

/// Reads a journal; its course as `ReadCourseDraft` reads one.
CourseJournalResult ReadCourseJournal(const std::string& path);
