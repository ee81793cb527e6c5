// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <yaml-cpp/yaml.h>

#include <string>

#include "apps/course/CourseDocument.h"
#include "apps/course/CourseFileError.h"
#include "apps/course/CourseKeys.h"

/// What a course is read for: to become a package, or to be worked on.
enum class CoursePurpose { Build, Edit };

/// Reads the map of a whole course. Paths in it are relative to the folder of `courseFile`.
CourseDocument ReadCourseMap(const YAML::Node& map, const std::string& courseFile, CoursePurpose purpose,
                             const CourseStop& stop, CourseFileErrors& errors);
