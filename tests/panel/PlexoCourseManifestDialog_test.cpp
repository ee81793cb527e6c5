// SPDX-License-Identifier: Apache-2.0
#include "panel/PlexoCourseManifestDialog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <string>

#include "core/PlexoCourseModel.h"
#include "core/PlexoLinearCourseModel.h"
#include "panel/PlexoDuration.h"
#include "support/PanelSession.h"
#include "support/StagedCourse.h"

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace {

constexpr const char* kUnsupported = "This course structure is not supported in the selected SCORM version.";

class CourseManifestDialogTest : public testing::Test {
 protected:
  /// Opens the dialog; with `prepare` before the person sits down in front of it.
  void Open(
      const TzHeadlessDriver::DialogScript& person,
      const std::function<void(TzSheet&)>& prepare = [](TzSheet& /*cells*/) {}) {
    PlexoCourseManifestDialog dialog;
    panel.ui.OnNextDialog([&](TzHeadlessDriver& driver) {
      prepare(*dialog.GetSheet());
      person(driver);
    });
    dialog.DoModal();
    panel.ui.CheckFinished();
  }

  [[nodiscard]] bool IsTemplateChoiceShown() const { return panel.ui.Sees("Simple Remediation"); }

  /// The course holds a SCO with a file, which an accepted dialog throws away.
  [[nodiscard]] bool HoldsSCO() const {
    return course.GetSCOManifestCount() == 1 && ListTree(course.GetWorkingFolder()).size() == 3;
  }

  PanelSession panel;
  PlexoCourseModel& course = *GetCourseModel();
};

}  // namespace

TEST(PlexoDuration, ReadsTextsOfEightCharactersOnly) {
  const struct {
    const char* text;
    PlexoDuration duration;
    const char* formatted;
  } rows[] = {
      {"07:05:00", {7, 5, 0}, "07:05:00"},    {"99:59:59", {99, 59, 59}, "99:59:59"},
      {"12-34x56", {12, 34, 56}, "12:34:56"}, {"ab:1c: 7", {0, 1, 7}, "00:01:07"},
      {"1:2:3", {0, 0, 0}, "00:00:00"},       {"", {0, 0, 0}, "00:00:00"},
      {"100:00:00", {0, 0, 0}, "00:00:00"},
  };
  for (const auto& [text, duration, formatted] : rows) {
    EXPECT_EQ(PlexoDuration::Parse(text), duration) << text;
    EXPECT_EQ(PlexoDuration::Parse(text).Format(), formatted) << text;
  }
  EXPECT_EQ((PlexoDuration{100, 0, 0}).Format(), "100:00:00");
}

TEST_F(CourseManifestDialogTest, OkStoresTheDetailsOnAnEmptyCourseAndTheNextOpeningShowsThem) {
  panel.Choose("Multiple SCOs");
  StagedCourse::AddLinearSCOs(1);
  ASSERT_TRUE(HoldsSCO());
  Open([](TzHeadlessDriver& dialog) {
    dialog.Type("Identifier", "My Course 1");
    dialog.Type("Title", "Feuer & Flamme");
    dialog.Type("Description", "Two\nlines");
    dialog.Type("Version", "1.0");
    dialog.Check("Duration");
    dialog.Type("Duration", "7");
    dialog.Type("minutes", "5");
    dialog.Check("Subject");
    dialog.Type("Subject", "Safety");
    dialog.Press("OK");
  });
  EXPECT_EQ(course.GetSCOManifestCount(), 0U);
  EXPECT_THAT(ListTree(course.GetWorkingFolder()), IsEmpty());
  EXPECT_FALSE(course.GetIsDirty());
  EXPECT_TRUE(course.GetManifestDetailsEdited());
  EXPECT_EQ(course.GetScormVersion(), "2004");
  EXPECT_EQ(course.GetCourseIdentifier(), "My_Course_1");
  EXPECT_EQ(course.GetPackageName(), "My_Course_1");
  EXPECT_EQ(course.GetCourseTitle(), "Feuer & Flamme");
  EXPECT_EQ(course.GetCourseDescription(), "Two\nlines");
  EXPECT_EQ(course.GetCourseVersion(), "1.0");
  EXPECT_EQ(course.GetCourseDuration(), "07:05:00");
  EXPECT_EQ(course.GetCourseSubject(), "Safety");
  EXPECT_TRUE(course.GetEnableCourseVersion() && course.GetEnableCourseDuration() &&
              course.GetEnableCourseSubject());
  Open([&](TzHeadlessDriver& dialog) {
    for (const auto& [name, text] : std::map<std::string, std::string>{
             {"Identifier", "My_Course_1"}, {"Title", "Feuer & Flamme"}, {"Description", "Two\nlines"}}) {
      EXPECT_EQ(dialog.Read(name), text) << name;
    }
    EXPECT_THAT(dialog.See(), HasSubstr("checkbox \"Duration:\" on\nedit_number \"Duration:\" = 7\n"));
    EXPECT_EQ(dialog.Read("minutes"), "5");
    EXPECT_EQ(dialog.Read("seconds"), "0");
    // Nothing is stored with a box off, whatever was entered.
    dialog.Uncheck("Version");
    dialog.Uncheck("Duration");
    dialog.Uncheck("Subject");
    dialog.Press("OK");
  });
  EXPECT_EQ(course.GetCourseVersion(), "");
  EXPECT_EQ(course.GetCourseDuration(), "00:00:00");
  EXPECT_EQ(course.GetCourseSubject(), "");
  EXPECT_FALSE(course.GetEnableCourseVersion() || course.GetEnableCourseDuration() ||
               course.GetEnableCourseSubject());
}

TEST_F(CourseManifestDialogTest, BlanksOfAnIdentifierBecomeUnderscoresAndAnotherCharacterIsRefused) {
  const char* const none = "Please enter a SCORM Identifier for this course!";
  const char* const invalid =
      "Please enter a valid SCORM Identifier for this course! Only alpha-numeric characters and underscores "
      "are "
      "allowed. Spaces are converted to underscores automatically.";
  const struct {
    const char* entered;
    const char* stored;
    const char* box;
  } rows[] = {
      {"My Course 1", "My_Course_1", nullptr},
      {"   ", "___", nullptr},
      {"1st", "1st", nullptr},
      {"azAZ09_", "azAZ09_", nullptr},
      {"", nullptr, none},
      {"a-b", nullptr, invalid},
      {"a.b", nullptr, invalid},
      {"a\tb", nullptr, invalid},
      {"\u00FCber", nullptr, invalid},
      {"a\u00A0b", nullptr, invalid},
  };
  for (const auto& row : rows) {
    PanelSession fresh;
    StagedCourse::AddLinearSCOs(1);
    Open([&](TzHeadlessDriver& dialog) {
      dialog.Type("Identifier", row.entered);
      if (row.box != nullptr) dialog.AnswerNextBox(row.box, kTzButtonOk);
      dialog.Press("OK");
      if (row.box == nullptr) return;
      EXPECT_TRUE(HoldsSCO()) << "a refused identifier changes nothing";
      EXPECT_EQ(course.GetCourseIdentifier(), "");
      dialog.Press("Cancel");
    });
    if (row.stored != nullptr) {
      EXPECT_EQ(course.GetCourseIdentifier(), row.stored);
    }
  }
}

TEST_F(CourseManifestDialogTest, OnlyAFlatCourseHasAChoiceOfVersions) {
  for (const char* version : {"1.2", "2004"}) {
    Open([&](TzHeadlessDriver& dialog) {
      dialog.Type("Identifier", "Course");
      dialog.Choose("Version", version);
      dialog.Press("OK");
    });
    EXPECT_EQ(course.GetScormVersion(), version);
  }
  course.SetCourseType(PlexoCourseType::CONTENT_POST);
  Open([](TzHeadlessDriver& dialog) {
    EXPECT_THAT(dialog.See(), HasSubstr("group \"SCORM Version\"\nstatic_text \"2004\"\n"));
    EXPECT_THAT(dialog.See(), Not(HasSubstr("popup")));
    dialog.Press("Cancel");
  });
}

TEST_F(CourseManifestDialogTest, TheChosenVersionShowsOnThePanel) {
  panel.ui.OnNextDialog([](TzHeadlessDriver& dialog) {
    dialog.Type("Identifier", "Course");
    dialog.Choose("Version", "1.2");
    dialog.Press("OK");
  });
  panel.ui.Press("Multiple SCOs");
  EXPECT_THAT(panel.ui.See(), HasSubstr("static_text \"1.2\"\n"));
}

TEST_F(CourseManifestDialogTest, ARefusedVersionHasEmptiedTheCourseAlready) {
  course.SetCourseType(PlexoCourseType::PRE_CONTENT_POST);
  course.SetCourseIdentifier("Before");
  StagedCourse::AddLinearSCOs(1);
  Open(
      [&](TzHeadlessDriver& dialog) {
        dialog.Type("Identifier", "After");
        dialog.AnswerNextBox(kUnsupported, kTzButtonOk);
        dialog.Press("OK");
        EXPECT_EQ(course.GetScormVersion(), "1.2");
        EXPECT_EQ(course.GetCourseIdentifier(), "Before");
        EXPECT_EQ(course.GetSCOManifestCount(), 0U);
        EXPECT_THAT(ListTree(course.GetWorkingFolder()), IsEmpty());
        EXPECT_FALSE(course.GetManifestDetailsEdited());
        dialog.Press("Cancel");
      },
      [](TzSheet& cells) { cells.SetCellValue("SCORMVersion", 0, true); });
  EXPECT_EQ(course.GetScormVersion(), "2004");
}

TEST_F(CourseManifestDialogTest, OpenedOnAModuleCourseOf12ItShowsTheTemplateChoiceAndStaysUpAsItIs) {
  panel.Choose("Simple Remediation");
  course.SetScormVersion("1.2");
  course.SetCourseIdentifier("Before");
  panel.ui.AnswerNextBox(kUnsupported, kTzButtonOk);
  Open([&](TzHeadlessDriver& dialog) {
    EXPECT_EQ(course.GetScormVersion(), "2004");
    EXPECT_EQ(dialog.Read("Identifier"), "");
    EXPECT_EQ(dialog.Read("Title"), "-0");
    dialog.Press("Cancel");
  });
  EXPECT_TRUE(IsTemplateChoiceShown());
}

TEST_F(CourseManifestDialogTest, CancelThrowsTheCourseAwayHoweverTheDialogWasOpened) {
  panel.Choose("Multiple SCOs");
  StagedCourse::AddLinearSCOs(1);
  course.SetScormVersion("1.2");
  EXPECT_FALSE(IsTemplateChoiceShown());
  panel.ui.OnNextDialog([](TzHeadlessDriver& dialog) { dialog.Press("Cancel"); });
  PlexoView::ShowCourseManifestDialog();
  EXPECT_TRUE(IsTemplateChoiceShown());
  EXPECT_TRUE(GetLinearCourseModel()->GetSCOs().empty());
  EXPECT_FALSE(course.GetIsDirty());
  EXPECT_EQ(course.GetScormVersion(), "2004");
  EXPECT_TRUE(HoldsSCO()) << "what was staged stays until the next course begins";
}
