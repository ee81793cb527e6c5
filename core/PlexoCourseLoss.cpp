// SPDX-License-Identifier: Apache-2.0
#include "core/PlexoCourseLoss.h"

#include <algorithm>

#include "core/PlexoCourseModel.h"
#include "core/PlexoLinearCourseModel.h"
#include "core/PlexoModuleCourseModel.h"

namespace {

bool HoldsWork(const PlexoModuleModel& module, PlexoCourseType type) {
  if (module.key.IsEmpty()) return false;
  if (!module.contents.empty() || !module.postTest.IsEmpty()) return true;
  return type == PlexoCourseType::PRE_CONTENT_POST && !module.preTest.IsEmpty();
}

bool CourseHoldsWork(PlexoCourseType type) {
  if (type == PlexoCourseType::LINEAR) return GetLinearCourseModel()->CountSCOs() > 0;
  const auto modules = GetModuleCourseModel()->GetModules();
  return std::ranges::any_of(modules, [&](const auto& entry) { return HoldsWork(entry.second, type); });
}

}  // namespace

void ClearDirtyIfNothingToLose() {
  PlexoCourseModel* course = GetCourseModel();
  if (!CourseHoldsWork(course->GetCourseType())) course->SetIsDirty(false);
}
