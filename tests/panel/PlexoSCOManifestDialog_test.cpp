// SPDX-License-Identifier: Apache-2.0
#include "panel/PlexoSCOManifestDialog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <utility>

#include "support/PanelSession.h"

namespace {

class SCOManifestDialogTest : public testing::Test {
 protected:
  void Open(const TzHeadlessDriver::DialogScript& person) {
    panel.ui.OnNextDialog(person);
    dialog.DoModal();
    panel.ui.CheckFinished();
  }

  PanelSession panel;
  PlexoSCOManifestDialog dialog;
};

}  // namespace

TEST_F(SCOManifestDialogTest, OkWritesWhatWasEnteredIntoTheCopy) {
  PlexoSCOManifest expected;
  expected.title = "Intro";
  expected.masteryScore = "80";
  expected.maxTimeAllowed = "01:30:09";
  expected.timeLimitAction = "continue,no message";
  expected.dataFromLMS = "a=1";
  expected.hasMasteryScore = expected.hasMaxTimeAllowed = expected.hasTimeLimitAction =
      expected.hasDataFromLMS = true;
  Open([&](TzHeadlessDriver& person) {
    EXPECT_FALSE(dialog.accepted);
    person.Type("Title", "Intro");
    person.Check("Mastery Score");
    person.Type("Mastery Score", "80");
    person.Check("Time Allowed");
    person.Type("Time Allowed", "1");
    person.Type("minutes", "30");
    person.Type("seconds", "9");
    person.Check("Time Limit Action");
    person.Choose("Time Limit Action", "Continue without message");
    person.Check("Launch Data");
    person.Type("Launch Data", "a=1");
    person.Press("OK");
  });
  EXPECT_TRUE(dialog.accepted);
  EXPECT_EQ(dialog.scoManifest, expected);

  // Opened again it shows all that; with the boxes off the cells read their fallbacks.
  Open([&](TzHeadlessDriver& person) {
    EXPECT_FALSE(dialog.accepted);
    EXPECT_EQ(person.Read("Time Limit Action"), "Continue without message");
    EXPECT_EQ(person.Read("seconds"), "9");
    for (const char* box : {"Mastery Score", "Time Allowed", "Time Limit Action", "Launch Data"})
      person.Uncheck(box);
    person.Press("OK");
  });
  PlexoSCOManifest off;
  off.title = "Intro";
  off.timeLimitAction = "exit,message";
  EXPECT_EQ(dialog.scoManifest, off);
}

TEST_F(SCOManifestDialogTest, AFreshManifestsActionIsALabelAndOpensAsNotRecognised) {
  dialog.scoManifest.hasTimeLimitAction = true;
  Open([&](TzHeadlessDriver& person) {
    EXPECT_THAT(person.See(),
                testing::HasSubstr("checkbox \"Time Limit Action:\" off\n"
                                   "popup \"Time Limit Action:\" = \"Exit with message\" disabled"));
    person.Type("Title", "Edited");
    person.Press("Cancel");
  });
  EXPECT_FALSE(dialog.accepted);
  PlexoSCOManifest unchanged;
  unchanged.hasTimeLimitAction = true;
  EXPECT_EQ(dialog.scoManifest, unchanged);
}

TEST_F(SCOManifestDialogTest, TimeLimitActionsGoBothWaysByTheirExactTexts) {
  const char* const texts[] = {"exit,message", "exit,no message", "continue,message", "continue,no message"};
  for (int index = 0; index < 4; ++index) {
    bool recognised = false;
    EXPECT_EQ(PlexoSCOManifestDialog::TimeLimitActionText(index, recognised), texts[index]);
    EXPECT_TRUE(recognised);
    recognised = false;
    EXPECT_EQ(PlexoSCOManifestDialog::TimeLimitActionIndex(texts[index], recognised), index);
    EXPECT_TRUE(recognised);
  }
  bool recognised = true;
  for (const int index : {-1, 4}) {
    EXPECT_EQ(PlexoSCOManifestDialog::TimeLimitActionText(index, recognised), "");
    EXPECT_FALSE(std::exchange(recognised, true));
  }
  for (const char* text : {"", "Exit with message", "exit, message", "Exit,Message"}) {
    EXPECT_EQ(PlexoSCOManifestDialog::TimeLimitActionIndex(text, recognised), 0) << text;
    EXPECT_FALSE(std::exchange(recognised, true)) << text;
  }
  const TzSession session = TzSession::Install({});
  EXPECT_EQ(PlexoSCOManifestDialog::TimeLimitActionText(0, recognised), "");
  EXPECT_EQ(PlexoSCOManifestDialog::TimeLimitActionIndex("exit,message", recognised), 1);
  EXPECT_TRUE(recognised) << "left as it was";
  TzSession::Install(session);
}
