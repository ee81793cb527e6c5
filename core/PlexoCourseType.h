// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

/// The template of a course.
enum class PlexoCourseType : std::uint32_t {
  /// Modules with pretest, content and post-test.
  PRE_CONTENT_POST = 0,
  /// Modules with content and post-test.
  CONTENT_POST = 1,
  /// Any number of SCOs, no modules.
  LINEAR = 2,
};
