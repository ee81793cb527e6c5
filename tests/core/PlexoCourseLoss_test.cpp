// SPDX-License-Identifier: Apache-2.0
#include "core/PlexoCourseLoss.h"

#include <gtest/gtest.h>

#include "core/PlexoCourseModel.h"
#include "core/PlexoLinearCourseModel.h"
#include "core/PlexoModuleCourseModel.h"
#include "support/StagedCourse.h"
#include "support/TestSession.h"

TEST(PlexoCourseLoss, OnlyScosOfTheTemplateAreWorkToLose) {
  const auto isDirtyAfter = [](PlexoCourseType type, auto&& prepare) {
    TestSession session;
    GetCourseModel()->SetCourseType(type);
    GetModuleCourseModel()->AddModule("1", "One");
    prepare();
    GetCourseModel()->SetIsDirty(true);
    ClearDirtyIfNothingToLose();
    return GetCourseModel()->GetIsDirty();
  };
  using enum PlexoCourseType;
  const auto nothing = [] {};
  const auto preTest = [] { GetModuleCourseModel()->SetPreTest("1", MakeSCO("pre")); };
  const auto postTest = [] { GetModuleCourseModel()->SetPostTest("1", MakeSCO("post")); };
  EXPECT_FALSE(isDirtyAfter(LINEAR, nothing));
  EXPECT_TRUE(isDirtyAfter(LINEAR, [] { GetLinearCourseModel()->AddSCO(MakeSCO("a")); }));
  EXPECT_FALSE(isDirtyAfter(CONTENT_POST, nothing));
  EXPECT_FALSE(isDirtyAfter(CONTENT_POST, preTest));
  EXPECT_TRUE(isDirtyAfter(CONTENT_POST, postTest));
  EXPECT_TRUE(isDirtyAfter(PRE_CONTENT_POST, preTest));
}
