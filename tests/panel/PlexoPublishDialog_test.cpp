// SPDX-License-Identifier: Apache-2.0
#include "panel/PlexoPublishDialog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "core/PlexoCourseModel.h"
#include "host/files/TzFileUtil.h"
#include "support/PanelSession.h"
#include "support/ReadArchive.h"
#include "support/StagedCourse.h"

using testing::Contains;

namespace {

constexpr const char* kBadName = "Please enter a valid file name to publish! (No special characters)";
constexpr const char* kBadFolder = "Please enter a valid folder name to publish! (No special characters)";
constexpr const char* kNoFolder = "The publish folder entered doesn't exist! Create?";
constexpr const char* kFolderFailed =
    "There was an error creating the directory! Please verify that the directory name is correct.";
constexpr const char* kOverwrite = "The specified file already exists. Do you want to overwrite?";
constexpr const char* kCreated = "SCORM package created!";

/// A flat course of one SCO that has been published nowhere, and a folder for its packages.
class PublishDialogTest : public testing::Test {
 protected:
  PublishDialogTest() {
    panel.Choose("Multiple SCOs");
    StagedCourse::AddLinearSCOs(1);
    course.SetPublishFolder(folder.Path());
    course.SetPackageName("before");
  }

  void Open(const TzHeadlessDriver::DialogScript& person) {
    panel.ui.OnNextDialog(person);
    PlexoPublishDialog().DoModal();
    panel.ui.CheckFinished();
  }

  /// Opens, enters name and folder, and presses the button; the dialog closes by itself.
  void Publish(const std::string& name, const TzPath& target) {
    Open([&](TzHeadlessDriver& dialog) {
      dialog.Type("Project Title", name);
      dialog.Type("Publish Folder", target.GetNative());
      dialog.Press("Publish");
    });
  }

  [[nodiscard]] bool IsUntouched() const {
    return course.GetPackageName() == "before" && course.GetPublishFolder() == folder.Path();
  }

  PanelSession panel;
  TestFolder folder;
  PlexoCourseModel& course = *GetCourseModel();
};

}  // namespace

TEST_F(PublishDialogTest, MakesThePackageAndTheNextOpeningOffersItsNameAndFolder) {
  const TzPath target = folder.Path() / "new" / "deep";
  panel.ui.AnswerNextBox(kNoFolder, kTzButtonYes);
  panel.ui.AnswerNextBox(kCreated, kTzButtonOk);
  Publish("course", target);
  EXPECT_EQ(panel.session.ui.GetShownBoxes().back().title, "Plexo Warning");
  EXPECT_THAT(ReadArchive(target / "course.zip").Names(), Contains("Linear/sco1/index.htm"));
  EXPECT_FALSE(course.GetIsDirty());
  Open([&](TzHeadlessDriver& dialog) {
    EXPECT_EQ(dialog.Read("Project Title"), "course.zip");
    EXPECT_EQ(dialog.Read("Publish Folder"), target.GetNative());
    dialog.AnswerNextBox(kOverwrite, kTzButtonYes);
    dialog.AnswerNextBox(kCreated, kTzButtonOk);
    dialog.Press("Publish");
  });
  EXPECT_THAT(ListTree(target), testing::ElementsAre("course.zip"));
}

TEST_F(PublishDialogTest, ANameWithoutTheExtensionGetsItAndCapitalsCount) {
  for (const auto& [entered, name] : std::map<std::string, std::string>{{"course", "course.zip"},
                                                                        {"done.zip", "done.zip"},
                                                                        {"course.v2", "course.v2.zip"},
                                                                        {"course.ZIP", "course.ZIP.zip"},
                                                                        {".zip", ".zip.zip"}}) {
    panel.ui.AnswerNextBox(kCreated, kTzButtonOk);
    Publish(entered, folder.Path());
    EXPECT_EQ(course.GetPackageName(), name);
    EXPECT_TRUE(TzFile(folder.Path() / name).Exists()) << name;
  }
}

TEST_F(PublishDialogTest, WhatIsRefusedKeepsTheDialogOpenAndTheCourseAsItIs) {
  const std::string here = folder.Path().GetNative();
  folder.Write("file", "");
  folder.Write("taken.zip", "earlier");
  struct Box {
    const char* text;
    TzMessageBoxButton answer;
  };
  const struct {
    std::string name;
    std::string target;
    std::vector<Box> boxes;
  } rows[] = {
      {"", here, {{kBadName, kTzButtonOk}}},
      {"what?", here, {{kBadName, kTzButtonOk}}},
      {"../other", here, {{kBadName, kTzButtonOk}}},
      {std::string(252, 'n'), here, {{kBadName, kTzButtonOk}}},
      {"", "", {{kBadName, kTzButtonOk}}},
      {"course", "", {{kBadFolder, kTzButtonOk}}},
      {"course", "a\nb", {{kBadFolder, kTzButtonOk}}},
      {"course", here + "/none", {{kNoFolder, kTzButtonNo}}},
      {"course", here + "/file/sub", {{kNoFolder, kTzButtonYes}, {kFolderFailed, kTzButtonOk}}},
      {"taken", here, {{kOverwrite, kTzButtonNo}}},
  };
  for (const auto& row : rows) {
    Open([&](TzHeadlessDriver& dialog) {
      dialog.Type("Project Title", row.name);
      dialog.Type("Publish Folder", row.target);
      for (const Box& box : row.boxes) dialog.AnswerNextBox(box.text, box.answer);
      dialog.Press("Publish");
      EXPECT_EQ(dialog.Read("Project Title"), row.name) << "the extension isn't shown";
      dialog.Press("Close");
    });
    EXPECT_TRUE(IsUntouched()) << row.name << " in " << row.target;
  }
  EXPECT_TRUE(course.GetIsDirty());
  EXPECT_EQ(ReadFile(folder.Path() / "taken.zip"), "earlier");
  EXPECT_THAT(ListTree(folder.Path()), testing::ElementsAre("file", "taken.zip"));
}

TEST_F(PublishDialogTest, WeightagesThatAreNotTheWholeAreRefusedBeforeAnythingElse) {
  panel.view.ReturnToTemplateChoice();
  panel.Choose("Simple Remediation");
  for (const auto& [weightage, name] :
       std::map<std::string, std::string>{{"0.9999999", "course"}, {"2", ""}, {"0", "a?b"}}) {
    GetModuleCourseModel()->SetWeightage(GetModuleCourseModel()->GetModuleOrder().front(), weightage);
    Open([&](TzHeadlessDriver& dialog) {
      dialog.Type("Project Title", name);
      dialog.AnswerNextBox("Total weightage of the modules must add up to 100%.", kTzButtonOk);
      dialog.Press("Publish");
      dialog.Press("Close");
    });
  }
}

TEST_F(PublishDialogTest, BrowsingStartsInTheLastFolderAndACancelledChooserChangesNothing) {
  Open([&](TzHeadlessDriver& dialog) {
    dialog.Type("Publish Folder", "/typed");
    dialog.AnswerNextFolderChooser("");
    dialog.Press("Browse");
    EXPECT_EQ(dialog.Read("Publish Folder"), "/typed");
    dialog.AnswerNextFolderChooser("/chosen");
    dialog.Press("Browse");
    EXPECT_EQ(dialog.Read("Publish Folder"), "/chosen");
    dialog.Press("Close");
  });
  for (const TzFolderChooserRequest& request : panel.session.ui.GetFolderRequests()) {
    EXPECT_EQ(request.title, "Browse");
    EXPECT_EQ(request.startFolder, folder.Path().GetString());
  }
  EXPECT_TRUE(IsUntouched());
}

TEST_F(PublishDialogTest, ClosesAfterAFailedRunTooAndKeepsTheChangesUnpublished) {
  TzFileUtil::CreateDirectory(folder.Path() / "folder.zip" / "full", true);
  panel.ui.AnswerNextBox(kOverwrite, kTzButtonYes);
  panel.ui.AnswerNextBox("There was some error while zipping the Plexo Package!", kTzButtonOk);
  Publish("folder", folder.Path());
  EXPECT_TRUE(course.GetIsDirty());
  EXPECT_EQ(course.GetPackageName(), "folder.zip");
}

TEST_F(PublishDialogTest, APlayerIsInThePackageOnlyAsLongAsAScoNeedsIt) {
  PlexoSCOManifest document = StagedCourse::Manifest("guide");
  document.sourcePath = "/chosen/guide.PDF";
  StagedCourse::AddLinear(document);
  for (const char* player : {"pdfjs", "ruffle"}) {
    WriteFile(course.GetWorkingFolder() / "plexo_players" / player / "player.js", player);
  }
  panel.ui.AnswerNextBox(kCreated, kTzButtonOk);
  Publish("course", folder.Path());
  EXPECT_THAT(ListTree(course.GetWorkingFolder() / "plexo_players"),
              testing::ElementsAre("pdfjs/", "pdfjs/player.js"));
  course.RemoveSCOManifest(course.GetSCOManifest(1).folderPath);
  GetLinearCourseModel()->RemoveSCOs({1});
  panel.ui.AnswerNextBox(kOverwrite, kTzButtonYes);
  panel.ui.AnswerNextBox(kCreated, kTzButtonOk);
  Publish("course.zip", folder.Path());
  EXPECT_THAT(ReadArchive(folder.Path() / "course.zip").Names(),
              testing::Not(Contains(testing::HasSubstr("plexo_players"))));
}
