// SPDX-License-Identifier: Apache-2.0
#include "core/PlexoModuleCourseModel.h"

#include <cassert>
#include <new>
#include <utility>

#include "host/files/TzFileUtil.h"

namespace {

void DeleteFolderOf(const PlexoSCOModel& sco) {
  if (sco.folderPath.IsEmpty()) return;
  const TzPath folder(sco.folderPath);
  if (TzFile(folder).Exists()) TzFileUtil::DeleteDirectory(folder, true);
}

void EmptySlot(PlexoSCOModel& slot) {
  DeleteFolderOf(slot);
  slot = PlexoSCOModel();
}

}  // namespace

void PlexoModuleCourseModel::AddModule(const TzString& key, const TzString& title) {
  moduleOrder.push_back(key);
  PlexoModuleModel module;
  module.key = key;
  modules[key] = module;
  SetModuleTitle(key, title);
}

void PlexoModuleCourseModel::RemoveModule(const TzString& key) {
  modules.erase(key);
  std::erase(moduleOrder, key);
}

void PlexoModuleCourseModel::SwapModules(std::size_t first, std::size_t second) {
  assert(first < moduleOrder.size() && second < moduleOrder.size() && "modules to swap exist");
  std::swap(moduleOrder[first], moduleOrder[second]);
}

void PlexoModuleCourseModel::SwapContentSCOs(const TzString& key, std::size_t first, std::size_t second) {
  auto& contents = modules[key].contents;
  assert(first < contents.size() && second < contents.size() && "contents to swap exist");
  std::swap(contents[first], contents[second]);
}

void PlexoModuleCourseModel::SetContentForcedSequence(const TzString& key, bool forced) {
  modules[key].contentForcedSequence = forced;
}

void PlexoModuleCourseModel::RemovePreTest(const TzString& key) { EmptySlot(modules[key].preTest); }

void PlexoModuleCourseModel::RemovePostTest(const TzString& key) { EmptySlot(modules[key].postTest); }

void PlexoModuleCourseModel::RemoveContentSCOs(const TzString& key, const std::vector<int>& indices) {
  auto& contents = modules[key].contents;
  int step = 0;
  for (const int index : indices) {
    const int shifted = index - step++;
    assert(shifted >= 0 && static_cast<std::size_t>(shifted) < contents.size() && "content to remove exists");
    DeleteFolderOf(contents[static_cast<std::size_t>(shifted)]);
    contents.erase(contents.begin() + shifted);
  }
}

bool PlexoModuleCourseModel::HasValidTotalWeightage() const {
  double sum = 0.0;
  for (const auto& [key, module] : modules) {
    if (!module.key.IsEmpty()) sum += module.weightage.ToDouble();
  }
  return sum == 1.0;
}

void PlexoModuleCourseModel::Clear() {
  moduleOrder.clear();
  modules.clear();
}

PlexoModuleCourseModel* GetModuleCourseModel() {
  static auto* const model = new (std::nothrow) PlexoModuleCourseModel;
  return model;
}
