// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <yaml-cpp/yaml.h>

#include <cstddef>
#include <optional>
#include <string>

#include "apps/course/CourseKeys.h"

inline constexpr std::size_t kLargestCourseFile = std::size_t{4} << 20U;
inline constexpr std::size_t kDeepestCourseFile = 64;
/// With every alias written out, so that following aliases takes no longer than reading a large file.
inline constexpr std::size_t kMostCourseValues = 1'000'000;
inline constexpr std::size_t kMostCourseText = std::size_t{16} << 20U;

/// Reads the one YAML document of a course file. None, with an error noted, if the file can't be read, is too
/// large or too deeply nested, is no YAML, or holds more than one document; or if `stop` ends the reading.
std::optional<YAML::Node> LoadCourseYaml(const std::string& path, const CourseStop& stop,
                                         CourseFileErrors& errors);
