// SPDX-License-Identifier: Apache-2.0
#include "core/PlexoPublishStatus.h"

#include <gtest/gtest.h>

#include <vector>

#include "core/PlexoCourseModel.h"
#include "core/PlexoLinearCourseModel.h"
#include "core/PlexoModuleCourseModel.h"
#include "support/StagedCourse.h"
#include "support/TestSession.h"

namespace {

/// A module with the SCOs that its letters name: p(retest), c(ontent), t(est).
struct Module {
  const char* weightage;
  std::string_view scos;
};

void AddModule(const TzString& key, const Module& module) {
  PlexoModuleCourseModel& course = *GetModuleCourseModel();
  course.AddModule(key, "A module");
  course.SetWeightage(key, module.weightage);
  if (module.scos.find('p') != std::string_view::npos) course.SetPreTest(key, MakeSCO("pre"));
  if (module.scos.find('c') != std::string_view::npos) course.AddContentSCO(key, MakeSCO("content"));
  if (module.scos.find('t') != std::string_view::npos) course.SetPostTest(key, MakeSCO("test"));
}

}  // namespace

TEST(PlexoPublishStatus, TheSumOfTheWeightagesUpToTheFirstFaultyModuleIsJudgedLast) {
  using enum PlexoCourseType;
  using enum PlexoPublishStatus;
  const struct {
    PlexoCourseType type;
    std::vector<Module> modules;
    PlexoPublishStatus status;
  } cases[] = {
      {CONTENT_POST, {}, NO_MODULES},
      {CONTENT_POST, {{"1.0", "ct"}}, READY},
      {CONTENT_POST, {{"0.5", "ct"}, {"0.5", "ct"}}, READY},
      {CONTENT_POST, {{"1.0", "pct"}}, READY},
      {PRE_CONTENT_POST, {{"0.5", "pct"}, {"0.5", "pct"}}, READY},
      {PRE_CONTENT_POST, {{"1.0", "ct"}}, SCO_MISSING},
      {PRE_CONTENT_POST, {{"1.0", "pt"}}, SCO_MISSING},
      {PRE_CONTENT_POST, {{"1.0", "pc"}}, SCO_MISSING},
      {CONTENT_POST, {{"1.0", ""}}, SCO_MISSING},
      {CONTENT_POST, {{"1.0", "c"}}, SCO_MISSING},
      {CONTENT_POST, {{"0.5", "ct"}, {"0.5", "t"}}, SCO_MISSING},
      {CONTENT_POST, {{"0.5", ""}, {"0.5", ""}}, INVALID_TOTAL_WEIGHT},
      {CONTENT_POST, {{"0", "ct"}}, INVALID_TOTAL_WEIGHT},
      {CONTENT_POST, {{"", "ct"}}, INVALID_TOTAL_WEIGHT},
      {CONTENT_POST, {{"1.0", "ct"}, {"0", "ct"}}, ZERO_MODULE_WEIGHT},
      {CONTENT_POST, {{"1.0", "ct"}, {"0", ""}, {"0.5", "ct"}}, ZERO_MODULE_WEIGHT},
      {CONTENT_POST, {{"1.0", "ct"}, {"1.0", "ct"}}, INVALID_TOTAL_WEIGHT},
      {CONTENT_POST, {{"0.9999999", "ct"}}, INVALID_TOTAL_WEIGHT},
      // A tenth isn't exact in binary, and there is no tolerance.
      {CONTENT_POST, std::vector<Module>(10, {"0.1", "ct"}), INVALID_TOTAL_WEIGHT},
  };
  for (const auto& each : cases) {
    const TestSession session;
    GetCourseModel()->SetCourseType(each.type);
    std::size_t count = 0;
    for (const Module& module : each.modules) AddModule(TzString::FromNumber(++count), module);
    // What a question about an unknown key leaves behind is no module.
    GetModuleCourseModel()->GetModule("unknown");
    EXPECT_EQ(GetPublishStatus(), each.status) << "case " << &each - cases;
  }
}

TEST(PlexoPublishStatus, AFlatCourseNeedsOneSco) {
  const TestSession session;
  AddModule("1", {"1.0", "pct"});
  EXPECT_EQ(GetPublishStatus(), PlexoPublishStatus::LINEAR_NO_SCOS);
  GetLinearCourseModel()->AddSCO(MakeSCO("a"));
  EXPECT_EQ(GetPublishStatus(), PlexoPublishStatus::READY);
}
