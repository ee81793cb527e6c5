// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>

/// How far a course was played. All are 0 for one that wasn't.
struct PlexoPlayExtent {
  std::size_t learners = 0;
  std::uint64_t requests = 0;
  std::size_t states = 0;
  /// False if a bound was met, so that learners may find ways that weren't played.
  bool isComplete = true;
};
