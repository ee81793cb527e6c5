// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

#include "apps/course/CourseDocument.h"
#include "apps/course/ListedFiles.h"

/// Reads the modules of a course of this template, for building or for editing; `place` is where their list
/// stands.
std::vector<CourseModule> ReadCourseModules(const std::vector<YAML::Node>& nodes,
                                            CourseTemplate courseTemplate, const YAML::Mark& place,
                                            ListedFiles& files, CourseFileErrors& errors);
std::vector<CourseModule> ReadDraftModules(const std::vector<YAML::Node>& nodes,
                                           CourseTemplate courseTemplate, ListedFiles& files,
                                           CourseFileErrors& errors);

/// Each module's share of the course as the text of a fraction. Those of a course that was read for building
/// add up to exactly 1.0.
std::vector<std::string> GetWeightageFractions(const std::vector<CourseModule>& modules);
