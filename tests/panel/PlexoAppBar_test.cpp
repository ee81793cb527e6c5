// SPDX-License-Identifier: Apache-2.0
#include "panel/PlexoAppBar.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "core/PlexoCourseModel.h"
#include "core/PlexoLinearCourseModel.h"
#include "core/PlexoModuleCourseModel.h"
#include "support/PanelSession.h"
#include "support/StagedCourse.h"

namespace {

constexpr const char* kUnpublished = "There are unpublished changes. Do you wish to publish the Plexo file?";
constexpr const char* kNotReady =
    "Cannot publish the course as one or more modules in this course are incomplete. Insert all the required "
    "components as applicable to the template and then publish.";

class AppBarTest : public testing::Test {
 protected:
  [[nodiscard]] bool IsTemplateChoiceShown() const { return panel.ui.Sees("Simple Remediation"); }

  /// The key of the only module, whose course is dirty from now on.
  TzString ChooseModules() {
    panel.Choose("Simple Remediation");
    course.SetIsDirty(true);
    return GetModuleCourseModel()->GetModuleOrder().front();
  }

  void ExpectPublishDialog() {
    panel.ui.OnNextDialog([](TzHeadlessDriver& dialog) {
      EXPECT_TRUE(dialog.Sees("Publish Folder"));
      dialog.Press("Close");
    });
  }

  PanelSession panel;
  PlexoCourseModel& course = *GetCourseModel();
};

}  // namespace

TEST_F(AppBarTest, ItsButtonsAreOnWhileACourseShows) {
  EXPECT_FALSE(panel.ui.IsEnabled("New Course"));
  EXPECT_FALSE(panel.ui.IsEnabled("Publish Course"));
  panel.Choose("Multiple SCOs");
  EXPECT_TRUE(panel.ui.IsEnabled("New Course"));
  EXPECT_TRUE(panel.ui.IsEnabled("Publish Course"));
  SetPublishButtonDisabled(true);
  EXPECT_FALSE(panel.ui.IsEnabled("Publish Course"));
  SetNewButtonDisabled(true);
  EXPECT_FALSE(panel.ui.IsEnabled("New Course"));
  ReleaseAppBar();
  ReleaseAppBar();
  EXPECT_FALSE(panel.ui.Sees("New Course"));
  SetNewButtonDisabled(false);
  SetPublishButtonDisabled(false);
  CreateAppBar();
  EXPECT_FALSE(panel.ui.IsEnabled("New Course")) << "a bar starts with its buttons off";
}

TEST_F(AppBarTest, ABarThatSomebodyStillShowsAfterItsEndDoesNothing) {
  panel.Choose("Multiple SCOs");
  const auto canvases = panel.session.ui.GetFrontCanvases();
  const auto isBar = [](const TzCanvas* canvas) {
    return canvas->GetSpec().place == TzCanvasSpec::Place::AppBar;
  };
  const TzCanvasPtr held(*std::ranges::find_if(canvases, isBar));
  ReleaseAppBar();
  panel.ui.Press("New Course");
  EXPECT_FALSE(IsTemplateChoiceShown());
  CreateAppBar();
}

TEST_F(AppBarTest, NewAsksNothingWhereNothingCanBeLost) {
  panel.Choose("Multiple SCOs");
  panel.ui.Press("New");
  EXPECT_TRUE(IsTemplateChoiceShown());
  EXPECT_TRUE(course.GetManifestDetailsEdited()) << "it outlives the course";

  ChooseModules();
  panel.ui.Press("New");
  EXPECT_TRUE(IsTemplateChoiceShown());
  EXPECT_FALSE(course.GetIsDirty());
}

TEST_F(AppBarTest, NewOnUnpublishedWorkDoesWhatTheAnswerSays) {
  const struct {
    TzMessageBoxButton answer;
    bool isReady;
    bool leaves;
  } rows[] = {
      {kTzButtonCancel, true, false},
      {kTzButtonNo, true, true},
      {kTzButtonNo, false, true},
      {kTzButtonYes, false, false},
      // The dialog that follows is closed without publishing, and the course goes all the same.
      {kTzButtonYes, true, true},
  };
  for (const auto& [answer, isReady, leaves] : rows) {
    PanelSession fresh;
    const TzString key = ChooseModules();
    GetModuleCourseModel()->SetPostTest(key, MakeSCO("post"));
    if (isReady) GetModuleCourseModel()->AddContentSCO(key, MakeSCO("content"));
    panel.ui.AnswerNextBox(kUnpublished, answer);
    if (answer == kTzButtonYes && isReady) ExpectPublishDialog();
    if (answer == kTzButtonYes && !isReady) panel.ui.AnswerNextBox(kNotReady, kTzButtonOk);
    panel.ui.Press("New");
    panel.ui.CheckFinished();
    EXPECT_EQ(panel.session.ui.GetShownBoxes().front().title, "Publish SCO Package");
    EXPECT_EQ(IsTemplateChoiceShown(), leaves) << answer << isReady;
    EXPECT_EQ(GetModuleCourseModel()->GetModules().empty(), leaves);
    EXPECT_EQ(course.GetIsDirty(), !leaves);
  }
}

TEST_F(AppBarTest, PublishSaysWhyACourseIsNotReady) {
  const struct {
    const char* weightage;
    bool hasZeroModule;
    bool isComplete;
    const char* box;
  } rows[] = {
      {"1.0", false, true, nullptr},
      {"1.0", false, false,
       "Course cannot be published. Ensure that the modules contain at least one SCO of each component "
       "(pretest, "
       "post-test, and content) as applicable to the template."},
      {"0.5", false, true,
       "Course cannot be published. Ensure that the weightage of all modules add up to 100%."},
      {"1.0", true, true,
       "Course cannot be published as the modules have zero weightage.\n\nAssign appropriate weightage to "
       "modules "
       "and retry."},
  };
  for (const auto& row : rows) {
    PanelSession fresh;
    const TzString key = ChooseModules();
    GetModuleCourseModel()->SetWeightage(key, row.weightage);
    if (row.isComplete) {
      GetModuleCourseModel()->SetPostTest(key, MakeSCO("post"));
      GetModuleCourseModel()->AddContentSCO(key, MakeSCO("content"));
    }
    if (row.hasZeroModule) {
      GetModuleCourseModel()->AddModule(key + "0", "Last");
      GetModuleCourseModel()->SetWeightage(key + "0", "0");
    }
    if (row.box == nullptr) {
      ExpectPublishDialog();
    } else {
      panel.ui.AnswerNextBox(row.box, kTzButtonOk);
    }
    panel.ui.Press("Publish");
    panel.ui.CheckFinished();
  }
}

TEST_F(AppBarTest, PublishNeedsAScoInAFlatCourseAndAModuleInTheOthers) {
  panel.Choose("Multiple SCOs");
  panel.ui.AnswerNextBox("Course cannot be published. Ensure that the course contains at least one SCO.",
                         kTzButtonOk);
  panel.ui.Press("Publish");
  GetLinearCourseModel()->AddSCO(MakeSCO("a"));
  ExpectPublishDialog();
  panel.ui.Press("Publish");
  panel.ui.CheckFinished();
  PanelSession fresh;
  ChooseModules();
  GetModuleCourseModel()->Clear();
  panel.ui.AnswerNextBox("Course cannot be published. Ensure that the course contains at least one module.",
                         kTzButtonOk);
  panel.ui.Press("Publish");
  panel.ui.CheckFinished();
}

TEST_F(AppBarTest, ActionsThatItDoesNotKnowAndAHostWithoutWordsAreLeftAlone) {
  panel.Choose("Multiple SCOs");
  OnAppBarAction("other", {});
  TzSession mute = TzSession::Current();
  mute.dictionary = nullptr;
  const TzSession session = TzSession::Install(mute);
  OnAppBarAction("new", {});
  OnAppBarAction("publish", {});
  TzSession::Install(session);
  EXPECT_FALSE(IsTemplateChoiceShown());
}
