// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

/// Whether a course may be published, and what keeps it from that.
enum class PlexoPublishStatus : std::uint32_t {
  READY = 0,
  SCO_MISSING = 1,
  INVALID_TOTAL_WEIGHT = 2,
  ZERO_MODULE_WEIGHT = 3,
  LINEAR_NO_SCOS = 4,
  NO_MODULES = 5,
};

/// The status of the course as it stands. A faulty module is reported as such only if the weightages up to it
/// make exactly 1.0: the sum is judged last and overrules what was found before. There is no tolerance.
PlexoPublishStatus GetPublishStatus();

/// The dictionary's key of the message that says the status; null for `READY`.
const char* GetPublishStatusKey(PlexoPublishStatus status);
