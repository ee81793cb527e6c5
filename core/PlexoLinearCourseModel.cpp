// SPDX-License-Identifier: Apache-2.0
#include "core/PlexoLinearCourseModel.h"

#include <new>
#include <utility>

#include "core/PlexoIndexRemoval.h"

bool PlexoLinearCourseModel::Holds(int index) const {
  return index >= 0 && static_cast<std::size_t>(index) < scos.size();
}

PlexoSCOModel PlexoLinearCourseModel::GetSCO(int index) const {
  return Holds(index) ? scos[static_cast<std::size_t>(index)] : PlexoSCOModel();
}

void PlexoLinearCourseModel::SwapSCOs(int first, int second) {
  if (!Holds(first) || !Holds(second) || first == second) return;
  std::swap(scos[static_cast<std::size_t>(first)], scos[static_cast<std::size_t>(second)]);
}

TzString PlexoLinearCourseModel::GetSCOFolder(int index) const {
  return Holds(index) ? scos[static_cast<std::size_t>(index)].folderPath : TzString();
}

void PlexoLinearCourseModel::RemoveSCOs(const std::vector<int>& indices) {
  if (IsAscendingFromZero(indices)) {
    EraseAscending(scos, indices);
    return;
  }
  int step = 0;
  for (const int index : indices) {
    // Every step counts, also one that removes nothing: the shift is by place in the list.
    if (const int shifted = index - step++; Holds(shifted)) scos.erase(scos.begin() + shifted);
  }
}

void PlexoLinearCourseModel::Clear() {
  scos.clear();
  forcedSequence = false;
}

PlexoLinearCourseModel* GetLinearCourseModel() {
  static auto* const model = new (std::nothrow) PlexoLinearCourseModel;
  return model;
}
