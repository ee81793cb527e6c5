// SPDX-License-Identifier: Apache-2.0
#include "panel/PlexoSCORemoval.h"

#include <algorithm>

#include "core/PlexoCourseModel.h"
#include "host/files/TzFileUtil.h"

namespace {

/// The record and the folder of a SCO; a slot that holds none has no folder path.
void RemoveStaged(const TzString& folderPath) {
  if (folderPath.IsEmpty()) return;
  GetCourseModel()->RemoveSCOManifest(folderPath);
  const TzPath folder(folderPath);
  if (TzFile(folder).Exists()) TzFileUtil::DeleteDirectory(folder, true);
}

/// In ascending order, each once.
std::vector<int> GetExisting(std::vector<int> indices, std::size_t count) {
  std::erase_if(indices,
                [count](int index) { return index < 0 || static_cast<std::size_t>(index) >= count; });
  std::ranges::sort(indices);
  indices.erase(std::unique(indices.begin(), indices.end()), indices.end());
  return indices;
}

}  // namespace

void PlexoSCORemoval::RemoveLinearSCOs(PlexoLinearCourseModel& course, const std::vector<int>& indices) {
  for (const int index : indices) RemoveStaged(course.GetSCOFolder(index));
  course.RemoveSCOs(indices);
  GetCourseModel()->SetIsDirty(course.CountSCOs() > 0);
}

void PlexoSCORemoval::RemoveContentSCOs(PlexoModuleCourseModel& course, const TzString& moduleKey,
                                        const std::vector<int>& indices) {
  const std::vector<PlexoSCOModel>& contents = course.ReadModule(moduleKey).contents;
  // The list comes from a player; the model takes only indices that exist.
  const std::vector<int> existing = GetExisting(indices, contents.size());
  for (const int index : existing) RemoveStaged(contents[static_cast<std::size_t>(index)].folderPath);
  course.RemoveContentSCOs(moduleKey, existing);
  GetCourseModel()->SetIsDirty(true);
}

void PlexoSCORemoval::RemovePreTest(PlexoModuleCourseModel& course, const TzString& moduleKey) {
  const TzString folderPath = course.ReadModule(moduleKey).preTest.folderPath;
  course.RemovePreTest(moduleKey);
  RemoveStaged(folderPath);
  GetCourseModel()->SetIsDirty(true);
}

void PlexoSCORemoval::RemovePostTest(PlexoModuleCourseModel& course, const TzString& moduleKey) {
  const TzString folderPath = course.ReadModule(moduleKey).postTest.folderPath;
  course.RemovePostTest(moduleKey);
  RemoveStaged(folderPath);
  GetCourseModel()->SetIsDirty(true);
}

void PlexoSCORemoval::RemoveModule(PlexoModuleCourseModel& course, const TzString& moduleKey) {
  const PlexoModuleModel& module = course.ReadModule(moduleKey);
  RemoveStaged(module.preTest.folderPath);
  RemoveStaged(module.postTest.folderPath);
  for (const PlexoSCOModel& sco : module.contents) RemoveStaged(sco.folderPath);
  course.RemoveModule(moduleKey);
  GetCourseModel()->SetIsDirty(course.CountModules() > 0);
}
