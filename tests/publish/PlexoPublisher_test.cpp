// SPDX-License-Identifier: Apache-2.0
#include "publish/PlexoPublisher.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <cstdlib>

#include "core/PlexoCourseModel.h"
#include "core/PlexoInstallFolder.h"
#include "core/PlexoLinearCourseModel.h"
#include "host/files/TzFileUtil.h"
#include "publish/PlexoManifestWriter.h"
#include "support/FaultyFileSystem.h"
#include "support/StagedCourse.h"
#include "support/TestSession.h"

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

namespace {

/// An install tree of the test's own beside the test program.
class PlexoPublisherTest : public testing::Test {
 protected:
  PlexoPublisherTest() {
    TzFileUtil::DeleteDirectory(GetSchemaInstallFolder(), true);
    for (const char* name :
         {"adlcp_rootv1p2.xsd", "ims_xml.xsd", "imscp_rootv1p1p2.xsd", "imsmd_rootv1p2p1.xsd"}) {
      WriteFile(GetSchemaInstallFolder() / "1_2" / "static" / name, name);
    }
    for (const char* name : {"lom.xsd", "unlisted.txt", "common/anyElement.xsd", "vocab/deep/er.xsd"}) {
      WriteFile(GetSchemaInstallFolder() / "2004" / "static" / "3rd" / name, name);
    }
    GetCourseModel()->SetPublishFolder(target.Path());
    GetCourseModel()->SetPackageName("course.zip");
  }

  static TzPath Working() { return GetCourseModel()->GetWorkingFolder(); }
  static int Publish() { return PlexoPublisher::GetPublisher()->PublishPackage(); }

  /// Names in the package, unpacked by another program.
  std::vector<std::string> Packed() const {
    const TestFolder unpacked;
    const std::string command = "unzip -qq " + (target.Path() / "course.zip").GetNative() + " -d " +
                                unpacked.Path().GetNative() + " 2>/dev/null";
    EXPECT_EQ(std::system(command.c_str()), 0);
    return ListTree(unpacked.Path());
  }

  TestSession session;
  TestFolder target;
};

}  // namespace

TEST_F(PlexoPublisherTest, PacksScosSchemasAndManifestAndCleansTheCourse) {
  StagedCourse::AddLinearSCOs(2);
  EXPECT_EQ(Publish(), 0);
  EXPECT_FALSE(GetCourseModel()->GetIsDirty());
  EXPECT_THAT(Packed(),
              ElementsAre("Linear/", "Linear/sco1/", "Linear/sco1/index.htm", "Linear/sco2/",
                          "Linear/sco2/index.htm", "common/", "common/anyElement.xsd", "imsmanifest.xml",
                          "lom.xsd", "unlisted.txt", "vocab/", "vocab/deep/", "vocab/deep/er.xsd"));
  EXPECT_THAT(session.BoxTexts(), IsEmpty());
}

TEST_F(PlexoPublisherTest, PublishingAgainGivesTheSamePackage) {
  PlexoSCOManifest sco = StagedCourse::Manifest("intro");
  sco.metadataLocation = "meta.xml";
  StagedCourse::AddLinear(sco, {"meta.xml", "readme.txt"});
  for (const char* version : {"1.2", "2004"}) {
    GetCourseModel()->SetScormVersion(version);
    ASSERT_EQ(Publish(), 0);
    const std::string first = ReadFile(target.Path() / "course.zip");
    ASSERT_EQ(Publish(), 0);
    EXPECT_EQ(ReadFile(target.Path() / "course.zip"), first) << version;
  }
  EXPECT_THAT(session.BoxTexts(), IsEmpty());
}

TEST_F(PlexoPublisherTest, AMissingSchemaOf12StopsTheCopyAtItsNameAndNotThePackage) {
  GetCourseModel()->SetScormVersion("1.2");
  StagedCourse::AddLinearSCOs(1);
  TzFileUtil::DeleteFile(GetSchemaInstallFolder() / "1_2" / "static" / "imscp_rootv1p1p2.xsd");
  EXPECT_EQ(Publish(), 0);
  EXPECT_THAT(session.BoxTexts(), ElementsAre("kPlexoErrorCopyingXSDs"));
  EXPECT_THAT(Packed(), Contains("ims_xml.xsd"));
  EXPECT_THAT(Packed(), Not(Contains("imsmd_rootv1p2p1.xsd")));
}

TEST_F(PlexoPublisherTest, AReadOnlySchemaOfAnEarlierPublishIsReplaced) {
  StagedCourse::AddLinearSCOs(1);
  const TzPath copy = Working() / "common" / "anyElement.xsd";
  WriteFile(copy, "old");
  TzFile(copy).SetAttribute(TzFileAttribute::ReadOnly, true);
  EXPECT_EQ(Publish(), 0);
  EXPECT_EQ(ReadFile(copy), "common/anyElement.xsd");
  EXPECT_FALSE(TzFile(copy).GetAttribute(TzFileAttribute::ReadOnly));
}

TEST_F(PlexoPublisherTest, AStrayFileDoesNotStandInTheWayOfASchemaDocumentOrFolder) {
  StagedCourse::AddLinear(StagedCourse::Manifest("intro"), {"common", "lom.xsd"});
  WriteFile(Working() / "Linear/intro/lom.xsd", "the SCO's own");
  EXPECT_EQ(Publish(), 0);
  EXPECT_THAT(Packed(), Contains("common/anyElement.xsd"));
  EXPECT_EQ(ReadFile(Working() / "lom.xsd"), "lom.xsd");
}

TEST_F(PlexoPublisherTest, AFailedPackingShowsABoxAndKeepsTheCourseDirty) {
  StagedCourse::AddLinearSCOs(1);
  GetCourseModel()->SetPublishFolder(target.Path() / "missing");
  EXPECT_EQ(Publish(), kTzMachineFailure);
  EXPECT_TRUE(GetCourseModel()->GetIsDirty());
  EXPECT_THAT(session.BoxTexts(), ElementsAre("kPlexoErrorZipping"));
}

TEST_F(PlexoPublisherTest, ADiskThatFillsUnderTheManifestKeepsTheEarlierPackageAndSaysWhy) {
  StagedCourse::AddLinearSCOs(1);
  ASSERT_EQ(Publish(), 0);
  const std::string earlier = ReadFile(target.Path() / "course.zip");
  StagedCourse::AddLinear(StagedCourse::Manifest("later"));
  for (const auto failing : {FaultyFileSystem::Operation::OpenWrite, FaultyFileSystem::Operation::Write}) {
    session.problems.clear();
    {
      const FaultyFileSystem disk(failing, 1, ENOSPC);
      EXPECT_EQ(Publish(), 1);
    }
    ASSERT_EQ(session.problems.size(), 1U);
    EXPECT_EQ(session.problems[0].code, kTzMachineFailure);
    EXPECT_THAT(session.problems[0].GetText(), testing::EndsWith("can't write: No space left on device"));
  }
  EXPECT_EQ(ReadFile(target.Path() / "course.zip"), earlier);
  EXPECT_THAT(ListTree(target.Path()), ElementsAre("course.zip"));
}

TEST_F(PlexoPublisherTest, ADiskThatFillsWhileFilesAreSortedOrSchemasCopiedKeepsTheEarlierPackage) {
  StagedCourse::AddLinearSCOs(1);
  ASSERT_EQ(Publish(), 0);
  const std::string earlier = ReadFile(target.Path() / "course.zip");
  for (const int failing : {1, 2, 4}) {
    const std::string name = "later" + std::to_string(failing);
    StagedCourse::AddLinear(StagedCourse::Manifest(name), {"stray.txt"});
    const FaultyFileSystem disk(FaultyFileSystem::Operation::Copy, failing, ENOSPC);
    EXPECT_EQ(Publish(), kTzMachineFailure) << failing;
    EXPECT_EQ(ReadFile(target.Path() / "course.zip"), earlier) << failing;
    // Of the first two runs, the last copy of a stray file is the one that fails: it must not be lost.
    const bool staysInScoFolder = TzFile(Working() / "Linear" / name / "stray.txt").Exists();
    EXPECT_EQ(staysInScoFolder, failing != 4) << failing;
  }
  EXPECT_THAT(session.BoxTexts(), testing::Each("kPlexoErrorZipping"));
  EXPECT_TRUE(GetCourseModel()->GetIsDirty());
}

TEST_F(PlexoPublisherTest, AnExcludedFolderAtTheTopStaysOutOfThePackage) {
  StagedCourse::AddLinearSCOs(1);
  PlexoSCOManifest excluded = StagedCourse::Manifest("odd");
  excluded.keepFolderEntry = false;
  excluded.folderPath = (Working() / "odd").GetString();
  WriteFile(Working() / "odd/index.htm", "x");
  GetCourseModel()->AddSCOManifest(excluded);
  EXPECT_EQ(Publish(), 0);
  EXPECT_THAT(Packed(), Not(Contains("odd/")));
}

TEST_F(PlexoPublisherTest, WithoutADictionaryNothingIsPublished) {
  StagedCourse::AddLinearSCOs(1);
  TzSession::Install({});
  for (const auto type : {PlexoCourseType::LINEAR, PlexoCourseType::CONTENT_POST}) {
    GetCourseModel()->SetCourseType(type);
    EXPECT_EQ(Publish(), 1);
  }
  EXPECT_THAT(ListTree(target.Path()), IsEmpty());
  EXPECT_THAT(ListTree(Working()), Not(Contains("imsmanifest.xml")));
}

TEST_F(PlexoPublisherTest, FilesThatAManifestDoesNotListMoveToTheTopAndTheLaterReplacesTheEarlier) {
  PlexoSCOManifest first = StagedCourse::Manifest("first");
  first.files = {".\\index.htm", "kept.txt"};
  StagedCourse::AddLinear(first, {"readme.txt", "sub/readme.txt"});
  StagedCourse::AddLinear(StagedCourse::Manifest("second"), {"readme.txt", "imsmanifest.xml"});
  WriteFile(Working() / "Linear/second/readme.txt", "the later");

  ASSERT_EQ(PlexoPublisher::GetPublisher()->WriteManifest(), 0);

  EXPECT_THAT(ListTree(Working()),
              ElementsAre("Linear/", "Linear/first/", "Linear/first/index.htm", "Linear/first/kept.txt",
                          "Linear/first/sub/", "Linear/first/sub/readme.txt", "Linear/second/",
                          "Linear/second/index.htm", "imsmanifest.xml", "readme.txt"));
  EXPECT_EQ(ReadFile(Working() / "readme.txt"), "the later");
  EXPECT_THAT(ReadFile(Working() / "imsmanifest.xml"), testing::StartsWith("<?xml"));
}

TEST_F(PlexoPublisherTest, MetadataOfAScoIsCopiedUnderAFlatNameAndNeverFromOutsideItsFolder) {
  const TestFolder outside;
  outside.Write("secret.xml", "secret");
  const std::string climb = "../../../" + outside.Path().GetFileName().GetUTF8String() + "/secret.xml";
  const struct {
    std::string location;
    std::string copiedTo;
  } cases[] = {
      {"meta.xml", "Linear_intro_meta.xml"},
      {"data/meta.xml", "Linear_intro_data/meta.xml"},
      {climb, ""},
      {"../other.xml", ""},
      {"missing.xml", ""},
      {".", ""},
      {"data", ""},
      {"data/missing.xml", ""},
      {std::string(250, 'm'), ""},
  };
  for (const auto& [location, copiedTo] : cases) {
    GetCourseModel()->ResetManifestDetails();
    GetLinearCourseModel()->Clear();
    PlexoSCOManifest sco = StagedCourse::Manifest("intro");
    sco.metadataLocation = location;
    sco.files = {"index.htm", "data/meta.xml"};
    StagedCourse::AddLinear(sco, {"meta.xml"});
    WriteFile(Working() / "Linear/other.xml", "other");
    const std::size_t before = ListTree(Working()).size();
    ASSERT_EQ(PlexoPublisher::GetPublisher()->WriteManifest(), 0);
    if (copiedTo.empty()) {
      EXPECT_EQ(ListTree(Working()).size(), before + 1) << location;
    } else {
      EXPECT_THAT(ListTree(Working()), Contains(copiedTo)) << location;
    }
    EXPECT_THAT(session.problems, IsEmpty()) << location;
    EXPECT_THAT(ReadFile(Working() / "imsmanifest.xml"),
                testing::HasSubstr("<adlcp:location>Linear_intro_" + location + "</adlcp:location>"));
  }
}

TEST_F(PlexoPublisherTest, AnEmptyCourseStillHasItsFrame) {
  ASSERT_EQ(PlexoPublisher::GetPublisher()->WriteManifest(), 0);
  const std::string manifest = ReadFile(Working() / "imsmanifest.xml");
  EXPECT_THAT(manifest, testing::HasSubstr("<title>Course Title</title>"));
  EXPECT_THAT(manifest, testing::HasSubstr("<resources />"));
}

TEST_F(PlexoPublisherTest, ALongTextIsWrittenWholeWhereverItsCharactersFall) {
  std::string title;
  while (title.size() < 200000) title += "\U0001F525";
  for (const char* before : {"", "-"}) {
    GetCourseModel()->SetCourseTitle(before + title);
    ASSERT_EQ(PlexoPublisher::GetPublisher()->WriteManifest(), 0);
    const std::string manifest = ReadFile(Working() / "imsmanifest.xml");
    EXPECT_TRUE(manifest.find("<title>" + (before + title) + "</title>") != std::string::npos) << before;
  }
}
