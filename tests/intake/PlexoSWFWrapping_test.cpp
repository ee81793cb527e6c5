// SPDX-License-Identifier: Apache-2.0
#include "intake/PlexoSWFWrapping.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>

#include "core/PlexoCourseModel.h"
#include "core/PlexoInstallFolder.h"
#include "core/PlexoLinearCourseModel.h"
#include "host/files/TzFileUtil.h"
#include "intake/PlexoAddFileDriver.h"
#include "intake/PlexoSCOWrapper.h"
#include "intake/PlexoSharedPlayer.h"
#include "panel/PlexoStrings.h"
#include "support/FaultyFileSystem.h"
#include "support/OwnInstallTree.h"
#include "support/TestMovies.h"
#include "support/TestSession.h"

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

/// With an install tree of the test's own beside the test program, in which the movie player is the installed
/// one.
class PlexoSWFWrappingTest : public testing::Test {
 protected:
  PlexoSWFWrappingTest() {
    RegisterDefaultStrings();
    LayOwnInstallTree();
    WriteFile(Tree() / "standard.js", "standard");
    for (const std::string version : {"1_2", "2004"}) {
      const TzPath pages = Tree() / "SCORM" / version;
      WriteFile(pages / "Default.htm", version +
                                           " @MOVIENAME @MOVIEWIDTH x @MOVIEHEIGHT @FILENAME "
                                           "@STROBEPLAYER_CODEBASE @StrobePlayerVersion @PDFNAME end");
      WriteFile(pages / "DefaultPDF.htm", version + " @PDFNAME @FILENAME @MOVIENAME end");
      for (const char* name : {"scorm_support.htm", "scorm_support.swf", "scorm_support.js"}) {
        WriteFile(pages / "SCORM_support" / name, version);
      }
    }
  }

  static TzPath Tree() { return GetPlexoInstallFolder(); }
  static TzPath Working() { return GetCourseModel()->GetWorkingFolder(); }

  std::vector<TzString> Add(const TzPath& file) {
    session.ui.AnswerNextChooser({file});
    return PlexoAddFileDriver::AddFilesToLinearCourse(GetLinearCourseModel());
  }
  std::string LastBox() const { return session.BoxTexts().empty() ? "" : session.BoxTexts().back(); }

  TestSession session;
  TestFolder folder;
};

}  // namespace

TEST_F(PlexoSWFWrappingTest, AMovieIsAskedWhetherItIsAnInteraction) {
  const struct {
    TzPath movie;
    std::int32_t result;
  } cases[] = {
      {folder.Path() / "missing.swf", kPlexoProbeNoFile},
      {TestMovie("says-flag"), kPlexoProbeIsInteraction},
      {TestMovie("says-nothing"), kPlexoProbeNoInteraction},
  };
  for (const auto& [movie, expected] : cases) {
    std::int32_t width = 0;
    std::int32_t height = 0;
    EXPECT_EQ(PlexoSWFWrapping::ProbeLearningInteraction(movie.GetString(), width, height), expected)
        << movie;
    if (expected != kPlexoProbeIsInteraction) continue;
    EXPECT_EQ(width, 640) << movie;
    EXPECT_EQ(height, 480) << movie;
  }
}

TEST_F(PlexoSWFWrappingTest, AMovieBecomesAScoAroundOneSharedPlayer) {
  GetCourseModel()->SetScormVersion("1.2");
  EXPECT_THAT(Add(TestMovie("interaction")), ElementsAre("interaction"));
  EXPECT_THAT(session.BoxTexts(), IsEmpty());
  EXPECT_THAT(session.problems, IsEmpty());

  const PlexoSCOModel sco = GetLinearCourseModel()->GetSCO(0);
  EXPECT_EQ(sco.launchFile, "interaction.htm");
  EXPECT_EQ(sco.scormVersion, "1.2");
  EXPECT_THAT(sco.files, ElementsAre("interaction.htm", "interaction.swf"));
  EXPECT_EQ(sco.manifest.href, "interaction.htm");
  EXPECT_EQ(sco.manifest.masteryScore, "0");
  EXPECT_THAT(
      sco.manifest.files,
      ElementsAre("interaction.swf", "SCORM_support/scorm_support.htm", "SCORM_support/scorm_support.swf",
                  "SCORM_support/scorm_support.js", "standard.js", "interaction.htm"));
  EXPECT_EQ(sco.manifest, GetCourseModel()->GetSCOManifest(0));
  for (const TzString& file : sco.manifest.files) {
    EXPECT_TRUE(TzFile(Working() / "Linear/interaction" / file).Exists()) << file;
  }
  EXPECT_EQ(ReadFile(Working() / "Linear/interaction/interaction.htm"),
            "1_2 interaction.swf 640 x 480 interaction.htm "
            "https://player.invalid/pub/quiver/cabs/strobe/swstrobe.cab#version=9,0,0,0 9  end");
  EXPECT_THAT(ListTree(Working()), Contains("plexo_players/ruffle/ruffle.js"));

  // The folder's name is taken now; the player stays as it is.
  WriteFile(Working() / "plexo_players/ruffle/ruffle.js", "kept");
  Add(TestMovie("interaction"));
  EXPECT_EQ(LastBox(), "This file has already been added. Rename the file and retry adding.");
  EXPECT_EQ(GetCourseModel()->GetSCOManifestCount(), 1U);
  Add(TestMovie("says-flag"));
  EXPECT_EQ(ReadFile(Working() / "plexo_players/ruffle/ruffle.js"), "kept");

  // It goes with the last movie.
  PlexoSharedPlayer::CopySharedPlayer(PlexoWrapperKind::PDF);
  GetCourseModel()->RemoveSCOManifest(sco.folderPath);
  PlexoSharedPlayer::RemoveUnusedPlayers();
  EXPECT_TRUE(TzFile(Working() / "plexo_players/ruffle").Exists());
  EXPECT_FALSE(TzFile(Working() / "plexo_players/pdfjs").Exists());
  GetCourseModel()->RemoveSCOManifest(GetLinearCourseModel()->GetSCO(2).folderPath);
  PlexoSharedPlayer::RemoveUnusedPlayers();
  EXPECT_FALSE(TzFile(Working() / "plexo_players").Exists());
}

TEST_F(PlexoSWFWrappingTest, EveryRefusalHasItsWordsAndLeavesNothingBehind) {
  const struct {
    TzPath movie;
    std::string box;
  } cases[] = {
      {folder.Write("zip.swf", "PK\3\4 an archive"), "The given file is not a SWF file!"},
      {TestMovie("says-number"), "The given file is not a Learning Interaction SWF file!"},
      {TestMovie("no-height"), "The given Learning Interaction SWF file has errors!"},
      {TestMovie("no-width"), "The given Learning Interaction SWF file has errors!"},
      {TestMovie("below-zero"), "The given Learning Interaction SWF file has errors!"},
      {TestMovie("too-wide"), "The given Learning Interaction SWF file has errors!"},
  };
  for (const auto& [movie, box] : cases) {
    EXPECT_THAT(Add(movie), IsEmpty()) << movie;
    EXPECT_EQ(LastBox(), box) << movie;
    EXPECT_THAT(ListTree(Working()), IsEmpty()) << movie;
  }
  {
    const FaultyFileSystem full(FaultyFileSystem::Operation::Copy, 1, ENOSPC);
    Add(TestMovie("interaction"));
    EXPECT_EQ(LastBox(), "There was an error copying the SWF file into the working directory!");
  }
  TzFileUtil::DeleteFile(Tree() / "standard.js");
  Add(TestMovie("interaction"));
  EXPECT_EQ(LastBox(), "Unable to generate HTML file for Learning Interaction SWF!");
  EXPECT_THAT(session.problems.back().GetText(), HasSubstr("standard.js: the file doesn't exist"));
  EXPECT_THAT(ListTree(Working()), ElementsAre("Linear/"));
  EXPECT_EQ(GetCourseModel()->GetSCOManifestCount(), 0U);

  GetCourseModel()->SetAllowWrappedContent(false);
  const std::size_t boxes = session.BoxTexts().size();
  EXPECT_THAT(Add(TestMovie("interaction")), IsEmpty());
  EXPECT_EQ(session.BoxTexts().size(), boxes);
  GetCourseModel()->SetAllowWrappedContent(true);
}

TEST_F(PlexoSWFWrappingTest, ADocumentIsWrappedWithoutWhatOnlyMoviesNeed) {
  const TzPath sco = Working() / "Linear/guide";
  WriteFile(sco / "guide.pdf", "%PDF");
  TzFile(Tree() / "standard.js").SetAttribute(TzFileAttribute::ReadOnly, true);
  PlexoSCOWrapper wrapper;
  wrapper.SetKind(PlexoWrapperKind::PDF);
  wrapper.SetSourcePath(sco / "guide.pdf");
  wrapper.SetScormVersion("2004");
  EXPECT_EQ(wrapper.GenerateWrapper(), 0);
  EXPECT_THAT(ListTree(sco), ElementsAre("SCORM_support/", "SCORM_support/scorm_support.js", "guide.htm",
                                         "guide.pdf", "standard.js"));
  EXPECT_EQ(ReadFile(sco / "guide.htm"), "2004 guide.pdf guide.htm  end");
  EXPECT_FALSE(TzFile(sco / "standard.js").GetAttribute(TzFileAttribute::ReadOnly));
  EXPECT_THAT(wrapper.GetGeneratedFiles(),
              ElementsAre((sco / "SCORM_support/scorm_support.js").GetString(),
                          (sco / "standard.js").GetString(), (sco / "guide.htm").GetString()));
}

TEST_F(PlexoSWFWrappingTest, WhatAWrapperMadeIsKnownAfterAFailureToo) {
  TzFileUtil::DeleteFile(Tree() / "SCORM/2004/Default.htm");
  TzFileUtil::DeleteFile(Tree() / "SCORM/2004/SCORM_support/scorm_support.htm");
  const TzPath sco = Working() / "Linear/game";
  WriteFile(sco / "game.swf", "FWS");
  std::vector<TzString> files;
  EXPECT_EQ(PlexoSWFWrapping::WrapLearningInteraction(sco / "game.swf", 1, 2, files), 1);
  // A support file that is missing passes without a word.
  ASSERT_EQ(files.size(), 4U);
  EXPECT_EQ(files[0], (sco / "SCORM_support/scorm_support.htm").GetString());
  EXPECT_FALSE(TzFile(TzPath(files[0])).Exists());
  ASSERT_EQ(session.problems.size(), 1U);
  EXPECT_THAT(session.problems[0].GetText(), HasSubstr("Default.htm: the file doesn't exist"));
}

TEST_F(PlexoSWFWrappingTest, ThePlayersVersionSaysWhereItsInstallerIs) {
  const TzPath sco = Working() / "Linear/game";
  WriteFile(sco / "game.swf", "FWS");
  const std::string path = "/pub/quiver/cabs/strobe/swstrobe.cab#version=";
  const struct {
    std::int32_t version;
    std::string address;
  } cases[] = {{5, ""},
               {6, "https://download.invalid" + path + "6,0,29,0"},
               {7, "https://player.invalid" + path + "7,0,0,0"},
               {10, "https://player.invalid" + path + "10,0,0,0"},
               {11, ""}};
  for (const auto& [version, address] : cases) {
    PlexoSCOWrapper wrapper;
    wrapper.SetKind(PlexoWrapperKind::SWF);
    wrapper.SetSourcePath(sco / "game.swf");
    wrapper.SetPlayerVersion(version);
    EXPECT_EQ(wrapper.GenerateWrapper(), 0);
    EXPECT_THAT(ReadFile(sco / "game.htm"),
                HasSubstr("game.htm " + address + " " + std::to_string(version) + " "));
  }
}

TEST_F(PlexoSWFWrappingTest, APlayerThatCantBeCopiedIsToldOfAndLeavesNothing) {
  PlexoSharedPlayer::CopySharedPlayer(PlexoWrapperKind::SWF);
  const auto whole = ListTree(Working());
  TzFileUtil::DeleteDirectory(Working() / "plexo_players", true);
  {
    const FaultyFileSystem full(FaultyFileSystem::Operation::Copy, 3, ENOSPC);
    PlexoSharedPlayer::CopySharedPlayer(PlexoWrapperKind::SWF);
  }
  EXPECT_THAT(ListTree(Working()), ElementsAre("plexo_players/"));
  EXPECT_THAT(session.problems.back().GetText(), HasSubstr("the player couldn't be copied into the package"));
  PlexoSharedPlayer::CopySharedPlayer(PlexoWrapperKind::SWF);
  EXPECT_EQ(ListTree(Working()), whole);
}
