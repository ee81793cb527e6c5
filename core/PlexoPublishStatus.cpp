// SPDX-License-Identifier: Apache-2.0
#include "core/PlexoPublishStatus.h"

#include "core/PlexoCourseModel.h"
#include "core/PlexoLinearCourseModel.h"
#include "core/PlexoModuleCourseModel.h"

namespace {

bool HasAllSCOs(const PlexoModuleModel& module, PlexoCourseType type) {
  const bool needsPreTest = type == PlexoCourseType::PRE_CONTENT_POST;
  return !module.contents.empty() && !module.postTest.IsEmpty() &&
         !(needsPreTest && module.preTest.IsEmpty());
}

PlexoPublishStatus GetModulesStatus(PlexoCourseType type) {
  PlexoPublishStatus status = PlexoPublishStatus::READY;
  std::size_t count = 0;
  double sum = 0.0;
  for (const auto& [key, module] : GetModuleCourseModel()->GetModules()) {
    if (module.key.IsEmpty()) continue;
    ++count;
    const double weightage = module.weightage.ToDouble();
    sum += weightage;
    if (weightage == 0.0) {
      status = PlexoPublishStatus::ZERO_MODULE_WEIGHT;
    } else if (!HasAllSCOs(module, type)) {
      status = PlexoPublishStatus::SCO_MISSING;
    }
    if (status != PlexoPublishStatus::READY) break;
  }
  // The sum overrules a faulty module, even that of the modules up to it alone: authors settle weightages
  // first, and are told of a missing SCO only when these are right.
  if (count == 0) return PlexoPublishStatus::NO_MODULES;
  return sum == 1.0 ? status : PlexoPublishStatus::INVALID_TOTAL_WEIGHT;
}

}  // namespace

PlexoPublishStatus GetPublishStatus() {
  const PlexoCourseType type = GetCourseModel()->GetCourseType();
  if (type != PlexoCourseType::LINEAR) return GetModulesStatus(type);
  return GetLinearCourseModel()->CountSCOs() == 0 ? PlexoPublishStatus::LINEAR_NO_SCOS
                                                  : PlexoPublishStatus::READY;
}

const char* GetPublishStatusKey(PlexoPublishStatus status) {
  switch (status) {
    case PlexoPublishStatus::SCO_MISSING:
      return "kPlexoPublishWarnSCOMissing";
    case PlexoPublishStatus::INVALID_TOTAL_WEIGHT:
      return "kPlexoPublishWarnInvalidTotalWeight";
    case PlexoPublishStatus::ZERO_MODULE_WEIGHT:
      return "kPlexoPublishWarnZeroModuleWeight";
    case PlexoPublishStatus::LINEAR_NO_SCOS:
      return "kPlexoPublishWarnLinearNoSCOs";
    case PlexoPublishStatus::NO_MODULES:
      return "kPlexoPublishWarnNoModules";
    case PlexoPublishStatus::READY:
      break;
  }
  return nullptr;
}
