// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "apps/cli/CommandOutput.h"
#include "apps/cli/CourseFile.h"

/// Tells of a package that was written: where it is and which SCOs it holds, as the course's models have
/// them.
class CourseReport {
 public:
  CourseReport(const CourseFile& courseFile, std::string packageName)
      : course(courseFile), package(std::move(packageName)) {}

  /// The package's path, and a line of title, launch file and number of files for each SCO.
  void PrintText(CommandOutput& output) const;
  void PrintPath(CommandOutput& output) const { output.PrintLine(package); }
  void PrintJson(CommandOutput& output) const;

 private:
  const CourseFile& course;
  std::string package;
};
