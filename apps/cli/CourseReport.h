// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "apps/cli/CommandOutput.h"
#include "apps/course/CourseDocument.h"
#include "core/PlexoSCOManifest.h"

/// A SCO that was added to the course.
struct PlacedSCO {
  /// As the course file writes it.
  std::string source = {};
  /// Identifier of its item in the package.
  std::string identifier = {};
  /// Its module's number from 1, and its place in it ("pretest", "content", "post-test"); 0 and empty in a
  /// flat course.
  std::size_t moduleNumber = 0;
  std::string role = {};
  bool isAdopted = false;
  /// Of the content, within the SCO's folder; the launch address may be that of a page in front of it.
  std::string page = {};
  PlexoSCOManifest manifest = {};
};

/// Tells of a package that was written: where it is and which SCOs it holds.
class CourseReport {
 public:
  CourseReport(const CourseDocument& courseFile, std::string packageName, std::vector<PlacedSCO> placedSCOs)
      : course(courseFile), package(std::move(packageName)), scos(std::move(placedSCOs)) {}

  /// The package's path, and a line of title, page and number of files for each SCO; in a module
  /// course with its module and its place in front.
  void PrintText(CommandOutput& output) const;
  void PrintPath(CommandOutput& output) const { output.PrintLine(package); }
  void PrintJson(CommandOutput& output) const;

 private:
  const CourseDocument& course;
  std::string package;
  std::vector<PlacedSCO> scos;
};
