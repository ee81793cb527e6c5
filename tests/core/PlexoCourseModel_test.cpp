// SPDX-License-Identifier: Apache-2.0
#include "core/PlexoCourseModel.h"

#include <gtest/gtest.h>

#include "core/PlexoInstallFolder.h"
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
  course.SetEnableCourseVersion(false);
  course.SetEnableCourseDuration(true);
  course.SetEnableCourseSubject(true);
  course.SetManifestDetailsEdited(true);
  course.AddSCOManifest({});
  EXPECT_TRUE(course.GetIsDirty());

  course.ResetManifestDetails();

  EXPECT_EQ(ListTree(course.GetWorkingFolder()), std::vector<std::string>{});
  EXPECT_EQ(course.GetCourseIdentifier(), "My_Course");
  EXPECT_EQ(course.GetScormVersion(), "2004");
  EXPECT_EQ(course.GetCourseVersion(), "");
  EXPECT_TRUE(course.GetEnableCourseVersion());
  EXPECT_FALSE(course.GetEnableCourseDuration());
  EXPECT_FALSE(course.GetEnableCourseSubject());
  EXPECT_FALSE(course.GetManifestDetailsEdited());
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
  // Of one folder the first goes first, and what is added comes last, also between reads by index.
  PlexoSCOManifest manifest;
  manifest.folderPath = "folder";
  manifest.title = "fourth";
  course.AddSCOManifest(manifest);
  EXPECT_EQ(course.GetSCOManifest(2).title, "fourth");
  course.RemoveSCOManifest("folder");
  course.RemoveSCOManifest("other");
  ASSERT_EQ(course.GetSCOManifestCount(), 1U);
  EXPECT_EQ(course.GetSCOManifest(0).title, "fourth");
  EXPECT_EQ(course.GetSCOManifest(1), PlexoSCOManifest());
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
