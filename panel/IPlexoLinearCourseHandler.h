// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <vector>

/// Hears what the author does to the list of a flat course. The order of the operations is part of the
/// interface.
class IPlexoLinearCourseHandler {
 public:
  virtual ~IPlexoLinearCourseHandler() = default;
  /// The row at the first index now stands at the second.
  virtual void OnLinearSCOsSwapped(std::int32_t from, std::int32_t to) = 0;
  /// The rows at these indices, which ascend, are about to go.
  virtual void OnLinearSCOsRemoved(const std::vector<int>& indices) = 0;
  virtual void OnLinearSelectionChanged() = 0;
};
