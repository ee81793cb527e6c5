// SPDX-License-Identifier: Apache-2.0
#include "shell/PlexoUIUtils.h"

#include <gtest/gtest.h>

#include "core/PlexoCourseModel.h"
#include "core/PlexoLinearCourseModel.h"
#include "support/TestSession.h"

TEST(PlexoUIUtils, KeepsTheLanguageOfTheHost) {
  EXPECT_EQ(PlexoUIUtils::GetPlexoUIUtils(), PlexoUIUtils::GetPlexoUIUtils());
  EXPECT_EQ(PlexoUIUtils::GetLangId(), "");
  PlexoUIUtils::SetLangId("de_DE");
  EXPECT_EQ(PlexoUIUtils::GetLangId(), "de_DE");
  PlexoUIUtils::SetLangId("");
}

TEST(PlexoUIUtils, OnlyUnpublishedWorkAsksBeforeClosing) {
  TestSession session;
  EXPECT_TRUE(PlexoUIUtils::ContinueProjectClosure());

  // Dirty, but with nothing in it.
  GetCourseModel()->SetIsDirty(true);
  EXPECT_TRUE(PlexoUIUtils::ContinueProjectClosure());
  EXPECT_FALSE(GetCourseModel()->GetIsDirty());
  EXPECT_TRUE(session.ui.GetShownBoxes().empty());

  GetLinearCourseModel()->AddSCO({});
  GetCourseModel()->SetIsDirty(true);
  session.ui.AnswerNextBox(kTzButtonNo);
  EXPECT_FALSE(PlexoUIUtils::ContinueProjectClosure());
  session.ui.AnswerNextBox(kTzButtonYes);
  EXPECT_TRUE(PlexoUIUtils::ContinueProjectClosure());
  EXPECT_EQ(session.BoxTexts(), std::vector<std::string>(2, "kPlexoExitWithUnsavedChangesDialogCaption"));

  TzSession::Install({});
  EXPECT_FALSE(PlexoUIUtils::ContinueProjectClosure());
}
