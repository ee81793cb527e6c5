// SPDX-License-Identifier: Apache-2.0
#include "core/PlexoModuleCourseModel.h"

#include <algorithm>
#include <iterator>
#include <new>
#include <stdexcept>
#include <utility>

#include "core/PlexoIndexRemoval.h"
#include "host/files/TzFileUtil.h"

namespace {

void DeleteFolderOf(const PlexoSCOModel& sco) {
  if (sco.folderPath.IsEmpty()) return;
  const TzPath folder(sco.folderPath);
  if (TzFile(folder).Exists()) TzFileUtil::DeleteDirectory(folder, true);
}

/// Callers know what there is: an index past it is a fault of theirs.
void RequireIndex(bool exists, const char* invariant) {
  if (!exists) throw std::logic_error(invariant);
}

void EmptySlot(PlexoSCOModel& slot) {
  DeleteFolderOf(slot);
  slot = PlexoSCOModel();
}

}  // namespace

void PlexoModuleCourseModel::AddModule(const TzString& key, const TzString& title) {
  places.emplace(key, moduleOrder.insert(moduleOrder.end(), key));
  PlexoModuleModel module;
  module.key = key;
  modules[key] = module;
  SetModuleTitle(key, title);
}

void PlexoModuleCourseModel::RemoveModule(const TzString& key) {
  const auto [first, last] = places.equal_range(key);
  for (auto place = first; place != last; ++place) moduleOrder.erase(place->second);
  places.erase(first, last);
  modules.erase(key);
}

void PlexoModuleCourseModel::SwapModules(std::size_t first, std::size_t second) {
  RequireIndex(std::max(first, second) < moduleOrder.size(), "the modules to swap exist");
  if (first == second) return;
  // The nodes change places, not their content: the key's place stays true.
  const auto front = std::next(moduleOrder.begin(), static_cast<std::ptrdiff_t>(std::min(first, second)));
  const auto back = std::next(moduleOrder.begin(), static_cast<std::ptrdiff_t>(std::max(first, second)));
  const auto behindBack = std::next(back);
  moduleOrder.splice(front, moduleOrder, back);
  moduleOrder.splice(behindBack, moduleOrder, front);
}

void PlexoModuleCourseModel::SwapContentSCOs(const TzString& key, std::size_t first, std::size_t second) {
  auto& contents = modules[key].contents;
  RequireIndex(std::max(first, second) < contents.size(), "the contents to swap exist");
  std::swap(contents[first], contents[second]);
}

void PlexoModuleCourseModel::SetContentForcedSequence(const TzString& key, bool forced) {
  modules[key].contentForcedSequence = forced;
}

void PlexoModuleCourseModel::RemovePreTest(const TzString& key) { EmptySlot(modules[key].preTest); }

void PlexoModuleCourseModel::RemovePostTest(const TzString& key) { EmptySlot(modules[key].postTest); }

void PlexoModuleCourseModel::RemoveContentSCOs(const TzString& key, const std::vector<int>& indices) {
  auto& contents = modules[key].contents;
  const auto count = static_cast<int>(contents.size());
  const bool allExist = std::ranges::all_of(indices, [&](int index) { return index >= 0 && index < count; });
  RequireIndex(allExist && IsAscendingFromZero(indices), "the contents to remove exist, in ascending order");
  for (const int index : indices) DeleteFolderOf(contents[static_cast<std::size_t>(index)]);
  EraseAscending(contents, indices);
}

bool PlexoModuleCourseModel::HasValidTotalWeightage() const {
  double sum = 0.0;
  for (const auto& [key, module] : modules) {
    if (!module.key.IsEmpty()) sum += module.weightage.ToDouble();
  }
  return sum == 1.0;
}

void PlexoModuleCourseModel::Clear() {
  places.clear();
  moduleOrder.clear();
  modules.clear();
}

PlexoModuleCourseModel* GetModuleCourseModel() {
  static auto* const model = new (std::nothrow) PlexoModuleCourseModel;
  return model;
}
