// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/files/TzFileUtil.h"
#include "host/files/TzPath.h"

/// What a course is made of.
enum class CourseTemplate {
  /// A flat list.
  MultipleScos,
  /// Modules of content and post-test.
  SimpleRemediation,
  /// Modules of pretest, content and post-test.
  TestRollup,
};

/// The word for it in course files: "multiple-scos".
const char* GetTemplateName(CourseTemplate courseTemplate);

/// A file that a course file lists.
struct ListedFile {
  /// As it is written there.
  std::string name;
  /// Absolute.
  TzPath path;
  /// The identifier of the one item to take of it; empty for what there is.
  std::string item = {};
  /// What the course calls it; empty for its own title.
  std::string title = {};
  /// What completes has passed.
  bool completionPasses = false;
  /// There was no such file when the course was read.
  bool isMissing = false;

  /// False for a file that the course wraps.
  [[nodiscard]] bool IsPackage() const { return TzFileUtil::GetExtension(path) == "zip"; }
  /// The same file, taken in the same way, however it is written and whether or not it is there.
  bool operator==(const ListedFile& other) const {
    return path == other.path && item == other.item && title == other.title &&
           completionPasses == other.completionPasses;
  }
};

/// Which files are adopted: those that the course would refuse or damage; none; all.
enum class CourseIntake { Auto, AsIs, Always };

/// One module of a course file.
struct CourseModule {
  std::optional<std::string> title;
  /// Percent of the course, in decimal. Absent in all modules of a course that is shared evenly.
  std::optional<std::string> weightage;
  bool forceContentSequence = false;
  std::optional<ListedFile> preTest;
  std::vector<ListedFile> content;
  std::optional<ListedFile> postTest;

  bool operator==(const CourseModule&) const = default;
};

/// What a course file says. A text that it doesn't give is absent.
struct CourseDocument {
  CourseTemplate courseTemplate = CourseTemplate::MultipleScos;
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

  bool operator==(const CourseDocument&) const = default;
};
