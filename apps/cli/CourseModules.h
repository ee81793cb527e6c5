// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

#include "apps/cli/CourseFile.h"
#include "apps/cli/ListedFiles.h"

/// Reads the modules of a course file; `place` is where their list stands.
std::vector<CourseModule> ReadCourseModules(const std::vector<YAML::Node>& nodes, PlexoCourseType courseType,
                                            const YAML::Mark& place, ListedFiles& files,
                                            CourseFileErrors& errors);
