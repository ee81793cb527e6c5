// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "apps/course/CourseDocument.h"
#include "host/session/TzProblem.h"

/// How the paths of listed files are written.
enum class CoursePaths {
  /// From the course file's folder, where they lie below it or below the folder that it is in, so that the
  /// whole can be moved; else absolute.
  Relative,
  Absolute,
};

/// The text of a course file for this path, in the order of keys and with the words that a person would
/// choose. Files are taken as they are ("intake: as-is"), as somebody chose them one by one; of the options
/// of listed files the title is written, and those that only adoption has are not.
std::string FormatCourse(const CourseDocument& course, const std::string& path, CoursePaths paths);

/// Writes the course file in one step: whatever fails, the earlier file stays as it was. None if it was
/// written; a listed file whose name isn't UTF-8 can't be.
[[nodiscard]] std::optional<TzProblem> WriteCourseFile(const std::string& path, const CourseDocument& course);

/// Writes any text in the same way.
[[nodiscard]] std::optional<TzProblem> ReplaceCourseText(const std::string& path, const std::string& text);

/// Why files of the course can't be named in a course file; none if all can.
[[nodiscard]] std::optional<TzProblem> FindUnwritableFile(const CourseDocument& course);
