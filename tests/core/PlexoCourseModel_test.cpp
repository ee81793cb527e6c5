// SPDX-License-Identifier: Apache-2.0
#include "core/PlexoCourseModel.h"

#include <gtest/gtest.h>

#include "core/PlexoCourseLoss.h"
#include "core/PlexoInstallFolder.h"
#include "core/PlexoLinearCourseModel.h"
#include "core/PlexoModuleCourseModel.h"
#include "core/PlexoTreeId.h"
#include "host/files/TzFileUtil.h"
#include "support/TestSession.h"

TEST(PlexoCourseModel, StartsOnAnEmptyWorkingFolderWithTheTitleOfTheDictionary) {
  TestSession session;
  session.dictionary.RegisterDefault("kDefaultCourseTitle", "A course");
  const PlexoCourseModel course;
  EXPECT_EQ(course.GetCourseType(), PlexoCourseType::LINEAR);
  EXPECT_EQ(course.GetScormVersion(), "2004");
  EXPECT_EQ(course.GetCourseTitle(), "A course");
  EXPECT_FALSE(course.GetIsDirty());
  EXPECT_TRUE(course.GetAllowWrappedContent());
  EXPECT_TRUE(course.GetEnableCourseVersion());
  EXPECT_EQ(ListTree(course.GetWorkingFolder()), std::vector<std::string>{});
  EXPECT_EQ(course.GetPublishFolder().GetFileName(), "My Ostrand Vantrel Projects");
  EXPECT_EQ(course.GetScorm12SchemaFileCount(), 4U);
  EXPECT_EQ(course.GetScorm2004SchemaFileCount(), 25U);
  EXPECT_EQ(course.GetScorm2004SchemaFile(24), "xml.xsd");
  EXPECT_EQ(course.GetScorm2004SchemaFile(25), "");
  EXPECT_EQ(course.GetScorm2004SchemaFolder(3), "vocab");
}

TEST(PlexoCourseModel, ResettingEmptiesTheFolderAndKeepsWhatTheAuthorNamed) {
  TestSession session;
  PlexoCourseModel course;
  WriteFile(course.GetWorkingFolder() / "Linear/intro/index.htm", "x");
  course.SetCourseIdentifier("My_Course");
  course.SetScormVersion("1.2");
  course.SetCourseVersion("3");
  course.SetEnableCourseSubject(true);
  course.AddSCOManifest({});
  EXPECT_TRUE(course.GetIsDirty());

  course.ResetManifestDetails();

  EXPECT_EQ(ListTree(course.GetWorkingFolder()), std::vector<std::string>{});
  EXPECT_EQ(course.GetCourseIdentifier(), "My_Course");
  EXPECT_EQ(course.GetScormVersion(), "2004");
  EXPECT_EQ(course.GetCourseVersion(), "");
  EXPECT_FALSE(course.GetEnableCourseSubject());
  EXPECT_EQ(course.GetSCOManifestCount(), 0U);
  EXPECT_FALSE(course.GetIsDirty());
}

TEST(PlexoCourseModel, AnUnknownManifestIsADefaultRecord) {
  TestSession session;
  const PlexoSCOManifest manifest = PlexoCourseModel().GetSCOManifest(0);
  EXPECT_TRUE(manifest.keepFolderEntry);
  EXPECT_EQ(manifest.masteryScore, "0");
  EXPECT_EQ(manifest.maxTimeAllowed, "00:00:00");
  EXPECT_EQ(manifest.timeLimitAction, "Exit with message");
}

TEST(PlexoCourseModel, RemovingAManifestTakesTheFirstOfItsFolderOnly) {
  TestSession session;
  PlexoCourseModel course;
  for (const char* title : {"first", "second", "third"}) {
    PlexoSCOManifest manifest;
    manifest.folderPath = title == std::string("third") ? "other" : "folder";
    manifest.title = title;
    course.AddSCOManifest(manifest);
  }
  course.RemoveSCOManifest("nowhere");
  EXPECT_EQ(course.GetSCOManifestCount(), 3U);
  course.RemoveSCOManifest("folder");
  ASSERT_EQ(course.GetSCOManifestCount(), 2U);
  EXPECT_EQ(course.GetSCOManifest(0).title, "second");
}

TEST(PlexoCourseModel, ADurationBecomesAPeriodWithoutSeconds) {
  TestSession session;
  const struct {
    const char* duration;
    const char* period;
  } cases[] = {{"01:30:20", "PT1H30M"},
               {"00:05:00", "PT0H5M"},
               {"99x59y00", "PT99H59M"},
               {"", "PT0H0M"},
               {"1:30:20", "PT0H0M"}};
  for (const auto& [duration, period] : cases) {
    PlexoCourseModel course;
    course.SetCourseDuration(duration);
    EXPECT_EQ(course.GetDurationPeriod(), period) << duration;
  }
}

TEST(PlexoCourseModel, ATrackingScriptIsReadOnceAndAMissingOneIsTriedAgain) {
  TestSession session;
  PlexoCourseModel course;
  EXPECT_EQ(course.GetTrackingScript(PlexoTrackingScript::FirstPage), nullptr);

  const TzPath file = course.GetPdfTrackingFolder() / "FirstPage.js";
  WriteFile(file, "var a;");
  const std::string* script = course.GetTrackingScript(PlexoTrackingScript::FirstPage);
  ASSERT_NE(script, nullptr);
  EXPECT_EQ(*script, "var a;");
  TzFileUtil::DeleteDirectory(GetPlexoInstallFolder(), true);
  EXPECT_EQ(course.GetTrackingScript(PlexoTrackingScript::FirstPage), script);
}

namespace {

std::vector<std::string> NamesOf(const std::vector<PlexoSCOModel>& scos) {
  std::vector<std::string> names;
  for (const PlexoSCOModel& sco : scos) names.push_back(sco.scoName.GetUTF8String());
  return names;
}

PlexoSCOModel Sco(const std::string& name) {
  PlexoSCOModel sco;
  sco.scoName = name;
  sco.sourcePath = "/chosen/" + name + ".zip";
  return sco;
}

}  // namespace

TEST(PlexoLinearCourseModel, RemovesByTheIndicesFromBeforeTheRemoval) {
  const struct {
    std::vector<int> indices;
    std::vector<std::string> left;
  } cases[] = {
      {{}, {"0", "1", "2", "3", "4"}},
      {{1, 3}, {"0", "2", "4"}},
      {{0, 1, 2, 3, 4}, {}},
      {{-1, 9}, {"0", "1", "2", "3", "4"}},
      // What is out of range is skipped and still shifts what follows.
      {{-1, 1}, {"1", "2", "3", "4"}},
  };
  for (const auto& [indices, left] : cases) {
    PlexoLinearCourseModel course;
    for (const char* name : {"0", "1", "2", "3", "4"}) course.AddSCO(Sco(name));
    course.RemoveSCOs(indices);
    EXPECT_EQ(NamesOf(course.GetSCOs()), left);
  }
}

TEST(PlexoLinearCourseModel, SwapsWithinRangeAndAnswersAnEmptyRecordOutsideIt) {
  PlexoLinearCourseModel course;
  course.AddSCO(Sco("a"));
  course.AddSCO(Sco("b"));
  course.SwapSCOs(0, 1);
  course.SwapSCOs(0, 2);
  course.SwapSCOs(-1, 0);
  EXPECT_EQ(NamesOf(course.GetSCOs()), (std::vector<std::string>{"b", "a"}));
  EXPECT_TRUE(course.GetSCO(2).IsEmpty());
  EXPECT_TRUE(course.GetSCO(-1).IsEmpty());
  course.SetForcedSequence(true);
  course.Clear();
  EXPECT_FALSE(course.GetForcedSequence());
}

TEST(PlexoModuleCourseModel, KeepsModulesAndTheirOrderAlike) {
  PlexoModuleCourseModel course;
  course.AddModule("1", "One");
  course.AddModule("10", "Ten");
  course.AddModule("2", "Two");
  course.SwapModules(2, 0);
  EXPECT_EQ(course.GetModuleOrder(), (std::vector<TzString>{"2", "10", "1"}));
  course.RemoveModule("10");
  EXPECT_EQ(course.GetModuleOrder(), (std::vector<TzString>{"2", "1"}));
  EXPECT_EQ(course.GetModules().size(), 2U);
}

TEST(PlexoModuleCourseModel, AnUnknownModuleIsInsertedOutsideTheOrder) {
  PlexoModuleCourseModel course;
  EXPECT_EQ(course.GetModule("7"), PlexoModuleModel());
  EXPECT_EQ(course.GetModules().count("7"), 1U);
  EXPECT_TRUE(course.GetModuleOrder().empty());
  // It has no key, so it has no share of the course either.
  EXPECT_FALSE(course.HasValidTotalWeightage());
}

TEST(PlexoModuleCourseModel, WeightagesMustAddUpToExactlyOne) {
  const struct {
    std::vector<const char*> weightages;
    bool valid;
  } cases[] = {
      {{"1.0"}, true},
      {{"0.500000", "0.5"}, true},
      {{"0.1", "0.1", "0.1", "0.1", "0.1", "0.1", "0.1", "0.1", "0.1", "0.1"}, false},
      {{"0.333333", "0.333333", "0.333334"}, true},
      {{"0.9999999"}, false},
      {{}, false},
  };
  for (const auto& [weightages, valid] : cases) {
    PlexoModuleCourseModel course;
    for (const char* weightage : weightages) {
      const TzString key = TzString::FromNumber(GetNextTreeId());
      course.AddModule(key, "Module");
      course.SetWeightage(key, weightage);
    }
    EXPECT_EQ(course.HasValidTotalWeightage(), valid) << weightages.size();
  }
}

TEST(PlexoModuleCourseModel, RemovingAScoDeletesItsFolder) {
  const TestFolder folder;
  const auto staged = [&](const std::string& name) {
    folder.Write(name + "/index.htm", "x");
    PlexoSCOModel sco = Sco(name);
    sco.folderPath = (folder.Path() / name).GetString();
    return sco;
  };
  PlexoModuleCourseModel course;
  course.AddModule("1", "One");
  course.SetPreTest("1", staged("pre"));
  course.SetPostTest("1", staged("post"));
  for (const char* name : {"a", "b", "c"}) course.AddContentSCO("1", staged(name));

  course.SwapContentSCOs("1", 0, 2);
  course.RemoveContentSCOs("1", {0, 1});
  course.RemovePreTest("1");
  course.RemovePreTest("1");

  EXPECT_EQ(NamesOf(course.GetModule("1").contents), std::vector<std::string>{"a"});
  EXPECT_TRUE(course.GetModule("1").preTest.IsEmpty());
  EXPECT_EQ(ListTree(folder.Path()),
            (std::vector<std::string>{"a/", "a/index.htm", "post/", "post/index.htm"}));
}

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
  const auto preTest = [] { GetModuleCourseModel()->SetPreTest("1", Sco("pre")); };
  const auto postTest = [] { GetModuleCourseModel()->SetPostTest("1", Sco("post")); };
  EXPECT_FALSE(isDirtyAfter(LINEAR, nothing));
  EXPECT_TRUE(isDirtyAfter(LINEAR, [] { GetLinearCourseModel()->AddSCO(Sco("a")); }));
  EXPECT_FALSE(isDirtyAfter(CONTENT_POST, nothing));
  EXPECT_FALSE(isDirtyAfter(CONTENT_POST, preTest));
  EXPECT_TRUE(isDirtyAfter(CONTENT_POST, postTest));
  EXPECT_TRUE(isDirtyAfter(PRE_CONTENT_POST, preTest));
}
