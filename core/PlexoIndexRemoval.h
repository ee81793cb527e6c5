// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <functional>
#include <utility>
#include <vector>

#include "core/PlexoSCOModel.h"

/// True if no index is negative and each is above the one before it.
inline bool IsAscendingFromZero(const std::vector<int>& indices) {
  return (indices.empty() || indices.front() >= 0) &&
         std::ranges::adjacent_find(indices, std::ranges::greater_equal{}) == indices.end();
}

/// Removes the SCOs at these indices, which ascend from zero, in one pass; those past the end are skipped.
inline void EraseAscending(std::vector<PlexoSCOModel>& scos, const std::vector<int>& indices) {
  auto next = indices.begin();
  std::size_t kept = 0;
  for (std::size_t index = 0; index < scos.size(); ++index) {
    if (next != indices.end() && static_cast<std::size_t>(*next) == index) {
      ++next;
      continue;
    }
    if (kept != index) scos[kept] = std::move(scos[index]);
    ++kept;
  }
  scos.resize(kept);
}
