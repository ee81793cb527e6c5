// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <yaml-cpp/yaml.h>

#include <cstddef>
#include <optional>
#include <string>

#include "apps/cli/CourseKeys.h"

inline constexpr std::size_t kLargestCourseFile = std::size_t{4} << 20U;
inline constexpr int kDeepestCourseFile = 64;

/// Reads the one YAML document of a course file. None, with an error noted, if the file can't be read, is too
/// large or too deeply nested, is no YAML, or doesn't hold exactly one document.
std::optional<YAML::Node> LoadCourseYaml(const std::string& path, CourseFileErrors& errors);
