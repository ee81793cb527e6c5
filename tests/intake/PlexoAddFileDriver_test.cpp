// SPDX-License-Identifier: Apache-2.0
#include "intake/PlexoAddFileDriver.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>

#include "core/PlexoModuleCourseModel.h"
#include "panel/PlexoStrings.h"
#include "support/FaultyFileSystem.h"
#include "support/RawZip.h"
#include "support/ScoZip.h"
#include "support/TestSession.h"

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr const char* kAddedAlready = "This file has already been added. Rename the file and retry adding.";

std::string Nested(int depth) {
  std::string xml;
  for (int level = 0; level < depth; ++level) xml += "<a>";
  for (int level = 0; level < depth; ++level) xml += "</a>";
  return xml;
}

class PlexoAddFileDriverTest : public testing::Test {
 protected:
  PlexoAddFileDriverTest() { RegisterDefaultStrings(); }

  TzPath Package(const std::string& name, const std::string& subFolder = "") const {
    return ScoZip(name)
        .Scorm2004()
        .Item("Title of " + name, "index.htm")
        .File("index.htm", "x")
        .Save(MakeFolder(subFolder));
  }

  TzPath MakeFolder(const std::string& subFolder) const {
    if (!subFolder.empty()) chosen.Write(subFolder + "/placeholder", "");
    return chosen.Path() / subFolder;
  }

  std::vector<TzString> AddLinear(const std::vector<TzPath>& files) {
    session.ui.AnswerNextChooser(files);
    return PlexoAddFileDriver::AddFilesToLinearCourse(GetLinearCourseModel());
  }

  std::vector<TzString> AddToModule(PlexoSCOKind kind, const std::vector<TzPath>& files) {
    session.ui.AnswerNextChooser(files);
    return PlexoAddFileDriver::AddFilesToModule("4", kind);
  }

  static std::vector<std::string> Staged() { return ListTree(GetCourseModel()->GetWorkingFolder()); }

  TestSession session;
  TestFolder chosen;
};

}  // namespace

TEST_F(PlexoAddFileDriverTest, APackageIsUnpackedReadRecordedAndPlaced) {
  const TzPath package = ScoZip("intro")
                             .Scorm2004()
                             .Item("Doors &amp; exits", "index.htm")
                             .File("index.htm", "x")
                             .File("common/own.xsd", "x")
                             .File("lom.xsd", "x")
                             .File("media/a.png", "x")
                             .Save(chosen.Path());
  EXPECT_THAT(AddLinear({package}), ElementsAre("intro"));

  // Its manifest and schemas went: the package that is published has its own.
  EXPECT_THAT(Staged(), ElementsAre("Linear/", "Linear/intro/", "Linear/intro/index.htm",
                                    "Linear/intro/media/", "Linear/intro/media/a.png"));
  const PlexoSCOModel sco = GetLinearCourseModel()->GetSCO(0);
  EXPECT_EQ(sco.scoName, "intro");
  EXPECT_EQ(sco.sourcePath, package.GetString());
  EXPECT_EQ(sco.folderPath, (GetCourseModel()->GetWorkingFolder() / "Linear/intro").GetString());
  EXPECT_EQ(sco.launchFile, "");
  EXPECT_EQ(sco.manifest.title, "Doors & exits");
  EXPECT_EQ(sco.manifest.masteryScore, "");
  EXPECT_EQ(sco.manifest.files.size(), 4U);
  EXPECT_EQ(sco.manifest, GetCourseModel()->GetSCOManifest(0));
  EXPECT_TRUE(GetCourseModel()->GetIsDirty());
  EXPECT_EQ(GetCourseModel()->GetLastBrowseFolder(), chosen.Path());
  EXPECT_THAT(session.BoxTexts(), IsEmpty());
}

TEST_F(PlexoAddFileDriverTest, EveryRefusalHasItsWordsAndLeavesNothingBehind) {
  const auto manifest = [](const std::string& attributes, const std::string& inside = "") {
    return "<manifest " + attributes + "><organizations>" + inside + "</organizations></manifest>";
  };
  const auto withManifest = [&](const char* name, const std::string& text) {
    return ScoZip(name).Manifest(text).File("index.htm", "x").Save(chosen.Path());
  };
  const std::string kVersion = "SCO selected is of incompatible SCORM version!";
  const std::string kParse = "There was an error parsing the XML manifest file!";
  const struct {
    const char* fault;
    TzPath file;
    std::string box;
  } cases[] = {
      {"no archive", chosen.Write("broken.zip", "PK, or not"), "Error extracting the ZIP contents!"},
      {"an escaping name",
       chosen.Write("escape.zip", RawZip{{{.name = "../../evil", .content = "x"}}}.Build()),
       "Error extracting the ZIP contents!"},
      {"no manifest", ScoZip("bare").WithoutManifest().File("index.htm", "x").Save(chosen.Path()),
       "Invalid SCORM package!"},
      {"a manifest one folder down",
       ScoZip("deep").InFolder("sco").File("index.htm", "x").Save(chosen.Path()), "Invalid SCORM package!"},
      {"another version",
       ScoZip("old").Scorm12().Item("t", "index.htm").File("index.htm", "x").Save(chosen.Path()), kVersion},
      {"no version", withManifest("none", manifest("")), kVersion},
      {"an unknown version", withManifest("odd", manifest("version='1.1'")), kVersion},
      {"mastery score in 2004", withManifest("score", manifest("version='1.3'", "<adlcp:masteryscore/>")),
       kVersion},
      {"an item without identifier", withManifest("item", manifest("version='1.3'", "<item/>")), kParse},
      {"no XML", withManifest("text", "hello"), kVersion},
      {"a document type", withManifest("doctype", "<!DOCTYPE manifest><manifest version='1.3'/>"), kParse},
      {"elements without end", withManifest("nested", manifest("version='1.3'", Nested(300))), kParse},
      {"a manifest without end",
       withManifest("long", "<manifest version='1.3'>" + std::string(17 << 20U, ' ')), kParse},
      // These are refused without a word.
      {"another extension", chosen.Write("notes.txt", "x"), ""},
      {"a missing file", chosen.Path() / "missing.zip", ""},
  };
  for (const auto& [fault, file, box] : cases) {
    const std::size_t shown = session.BoxTexts().size();
    EXPECT_THAT(AddLinear({file}), IsEmpty()) << fault;
    const auto boxes = session.BoxTexts();
    const std::vector<std::string> newBoxes(boxes.begin() + static_cast<std::ptrdiff_t>(shown), boxes.end());
    EXPECT_EQ(newBoxes, box.empty() ? std::vector<std::string>{} : std::vector{box}) << fault;
    for (const std::string& left : Staged()) EXPECT_EQ(left, "Linear/") << fault;
  }
  for (const TzShownBox& box : session.ui.GetShownBoxes()) EXPECT_EQ(box.title, "Plexo Error");
  EXPECT_EQ(GetCourseModel()->GetSCOManifestCount(), 0U);
  EXPECT_FALSE(GetCourseModel()->GetIsDirty());
}

TEST_F(PlexoAddFileDriverTest, ANameThatLeadsElsewhereTouchesNothing) {
  const TestFolder outside;
  outside.Write("victim/precious.txt", "x");
  AddLinear({Package("intro")});
  const auto before = Staged();
  const std::string climb = "..\\..\\..\\..\\" + outside.Path().GetFileName().GetUTF8String() + "\\victim";
  const std::string names[] = {"...txt",           "...zip",       "..zip",
                               "..\\..\\evil.zip", climb + ".txt", climb + ".zip"};
  for (const std::string& name : names) {
    const TzPath file = TzPath::FromNative(chosen.Path().GetNative() + "/" + name);
    WriteFile(file, "x");
    EXPECT_THAT(AddLinear({file}), IsEmpty()) << name;
    EXPECT_EQ(Staged(), before) << name;
  }
  EXPECT_THAT(ListTree(outside.Path()), ElementsAre("victim/", "victim/precious.txt"));
}

TEST_F(PlexoAddFileDriverTest, APackageOf12LosesItsOwnSchemasAndKeepsFoldersOf2004) {
  GetCourseModel()->SetScormVersion("1.2");
  ScoZip sco("old");
  sco.Scorm12().Item("Old", "index.htm").File("index.htm", "x").File("ims_xml.xsd", "x");
  const TzPath package = sco.File("lom.xsd", "x").File("common/own.js", "x").Save(chosen.Path());
  EXPECT_THAT(AddLinear({package}), ElementsAre("old"));
  EXPECT_THAT(Staged(),
              ElementsAre("Linear/", "Linear/old/", "Linear/old/common/", "Linear/old/common/own.js",
                          "Linear/old/index.htm", "Linear/old/lom.xsd"));
}

TEST_F(PlexoAddFileDriverTest, TheFirstRefusalEndsASelectionAndKeepsWhatWasPlaced) {
  const TzPath bad = chosen.Write("bad.zip", "no archive");
  EXPECT_THAT(AddLinear({Package("one"), bad, Package("three")}), ElementsAre("one"));
  EXPECT_EQ(GetLinearCourseModel()->GetSCOs().size(), 1U);
  EXPECT_THAT(Staged(), ElementsAre("Linear/", "Linear/one/", "Linear/one/index.htm"));
}

TEST_F(PlexoAddFileDriverTest, ARefusedFileTakesTheFolderOfItsBaseNameWithItWhoeverMadeIt) {
  for (const char* name : {"one.txt", "one.pdf"}) {
    EXPECT_THAT(AddLinear({Package("one"), Package("two")}), ElementsAre("one", testing::_)) << name;
    EXPECT_THAT(AddLinear({chosen.Write(name, "x")}), IsEmpty()) << name;
    EXPECT_THAT(Staged(), ElementsAre("Linear/", "Linear/two/", "Linear/two/index.htm")) << name;
  }
}

TEST_F(PlexoAddFileDriverTest, AFileAddedAgainPlacesWhatTheSelectionHoldsByThen) {
  const TzPath intro = Package("intro");
  const TzPath other = Package("other");
  AddLinear({intro});
  // First in its selection there is nothing to place but an empty record, later on it is the file before.
  EXPECT_THAT(AddLinear({intro}), ElementsAre(""));
  EXPECT_THAT(AddLinear({other, Package("intro", "elsewhere")}), ElementsAre("other", "other"));
  EXPECT_EQ(GetCourseModel()->GetLastBrowseFolder(), chosen.Path());
  EXPECT_THAT(session.BoxTexts(), ElementsAre(kAddedAlready, kAddedAlready));
  EXPECT_TRUE(GetLinearCourseModel()->GetSCO(1).IsEmpty());
  EXPECT_EQ(GetLinearCourseModel()->GetSCO(3).scoName, "other");
  EXPECT_EQ(GetCourseModel()->GetSCOManifestCount(), 2U);
  EXPECT_THAT(Staged(), Contains("Linear/intro/index.htm"));
}

TEST_F(PlexoAddFileDriverTest, ModulesKeepTheirTestsAndContentsApart) {
  GetModuleCourseModel()->AddModule("4", "Module");
  const TzPath intro = Package("intro");
  EXPECT_THAT(AddToModule(PlexoSCOKind::PRE_TEST, {intro}), ElementsAre("intro"));
  EXPECT_THAT(AddToModule(PlexoSCOKind::POST_TEST, {intro}), ElementsAre("intro"));
  EXPECT_THAT(AddToModule(PlexoSCOKind::CONTENT, {intro, Package("more")}), ElementsAre("intro", "more"));
  EXPECT_THAT(session.BoxTexts(), IsEmpty());

  const PlexoModuleModel module = GetModuleCourseModel()->GetModule("4");
  EXPECT_EQ(module.preTest.folderPath,
            (GetCourseModel()->GetWorkingFolder() / "4/Pre_Test/intro").GetString());
  EXPECT_EQ(module.postTest.scoName, "intro");
  ASSERT_EQ(module.contents.size(), 2U);
  EXPECT_THAT(Staged(), testing::IsSupersetOf({"4/Pre_Test/intro/index.htm", "4/Post_Test/intro/index.htm",
                                               "4/Content/intro/index.htm", "4/Content/more/index.htm"}));

  // A pretest that was added already leaves its slot empty.
  AddToModule(PlexoSCOKind::PRE_TEST, {intro});
  EXPECT_TRUE(GetModuleCourseModel()->GetModule("4").preTest.IsEmpty());
  EXPECT_THAT(Staged(), Contains("4/Pre_Test/intro/index.htm"));

  const auto& requests = session.ui.GetChooserRequests();
  EXPECT_EQ(requests[0].title, "Browse for SCO files");
  EXPECT_EQ(requests[0].filters.front().extensions, (std::vector<TzString>{"zip", "pdf", "swf"}));
  EXPECT_FALSE(requests[0].multiple);
  EXPECT_FALSE(requests[1].multiple);
  EXPECT_TRUE(requests[2].multiple);
  EXPECT_EQ(requests[1].startFolder, chosen.Path());
}

TEST_F(PlexoAddFileDriverTest, NothingHappensWithoutAChoiceACourseOrADictionary) {
  const TzPath before = GetCourseModel()->GetLastBrowseFolder();
  EXPECT_THAT(AddLinear({}), IsEmpty());
  EXPECT_EQ(GetCourseModel()->GetLastBrowseFolder(), before);

  const TzPath intro = Package("intro");
  session.ui.AnswerNextChooser({intro});
  EXPECT_THAT(PlexoAddFileDriver::AddFilesToLinearCourse(nullptr), IsEmpty());

  PlexoSCOModel sco;
  EXPECT_EQ(PlexoAddFileDriver::AddFileToCourse(intro, sco, PlexoSCOKind::CONTENT, ""), 1);
  TzSession::Install({});
  EXPECT_EQ(PlexoAddFileDriver::AddFileToCourse(intro, sco, PlexoSCOKind::LINEAR, ""), 1);
  EXPECT_THAT(Staged(), IsEmpty());
}

TEST_F(PlexoAddFileDriverTest, AnObjectiveThatAnotherScoHasTooIsAccepted) {
  GetModuleCourseModel()->AddModule("4", "Module");
  const auto package = [&](const char* name) {
    return ScoZip(name)
        .Item("t", "index.htm")
        .File("index.htm", "x")
        .ItemContent("<imsss:primaryObjective objectiveID='same'/>")
        .Save(chosen.Path());
  };
  EXPECT_EQ(AddToModule(PlexoSCOKind::CONTENT, {package("a"), package("b")}).size(), 2U);
  EXPECT_EQ(GetCourseModel()->GetSCOManifest(1).objectiveId, "same");
  EXPECT_THAT(session.BoxTexts(), IsEmpty());
}

TEST_F(PlexoAddFileDriverTest, ADiskThatFillsWhileUnpackingLeavesNothingAndSaysWhy) {
  const TzPath package = Package("intro");
  {
    const FaultyFileSystem disk(FaultyFileSystem::Operation::MakeFolder, 1, ENOSPC);
    EXPECT_THAT(AddLinear({package}), IsEmpty());
  }
  EXPECT_THAT(session.BoxTexts(), ElementsAre("Error extracting the ZIP contents!"));
  ASSERT_EQ(session.problems.size(), 1U);
  EXPECT_EQ(session.problems[0].code, kTzMachineFailure);
  EXPECT_THAT(Staged(), testing::Each("Linear/"));
}
