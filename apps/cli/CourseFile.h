// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "apps/cli/CourseKeys.h"
#include "core/PlexoCourseType.h"
#include "host/files/TzPath.h"

/// A file that a course file lists.
struct ListedFile {
  /// As it is written there.
  std::string name;
  /// Absolute.
  TzPath path;
  /// The identifier of the one item to take of it; empty for what there is.
  std::string item = {};
  /// What completes has passed.
  bool completionPasses = false;
};

/// Which files are adopted: those that the course would refuse or damage; none; all.
enum class CourseIntake { Auto, AsIs, Always };

/// One module of a course file.
struct CourseModule {
  std::optional<std::string> title;
  /// Share of the course as the text of a fraction; those of all modules add up to exactly 1.0.
  std::string weightage;
  bool forceContentSequence = false;
  std::optional<ListedFile> preTest;
  std::vector<ListedFile> content;
  std::optional<ListedFile> postTest;
};

/// What a course file says, checked as far as that goes without opening the files that it lists. A text that
/// it doesn't give is absent.
struct CourseFile {
  std::string templateName;
  PlexoCourseType courseType = PlexoCourseType::LINEAR;
  /// "1.2" or "2004".
  std::string scormVersion = "2004";
  /// Letters, digits and underscores.
  std::string identifier;
  std::optional<std::string> title;
  std::optional<std::string> description;
  std::optional<std::string> version;
  /// "hh:mm:ss"
  std::optional<std::string> duration;
  std::optional<std::string> subject;
  bool forceSequence = false;
  CourseIntake intake = CourseIntake::Auto;
  std::vector<ListedFile> files;
  std::vector<CourseModule> modules;
};

struct CourseFileResult {
  CourseFile course;
  /// By line and column. The course is of use only without any.
  std::vector<CourseFileError> errors;
};

/// Reads a course file (YAML 1.2). Paths in it are relative to its own folder. Some messages come from the
/// session's dictionary, which must be there.
CourseFileResult ReadCourseFile(const std::string& path);
