// SPDX-License-Identifier: Apache-2.0
#include "core/PlexoModuleCourseModel.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "core/PlexoTreeId.h"
#include "support/StagedCourse.h"
#include "support/TestSession.h"

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
  course.AddModule("10", "Ten again");
  course.SwapModules(1, 2);
  EXPECT_EQ(course.GetModuleOrder(), (std::vector<TzString>{"2", "10", "1"}));
  course.SwapModules(1, 1);
  course.RemoveModule("2");
  EXPECT_EQ(course.GetModuleOrder(), (std::vector<TzString>{"10", "1"}));
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
    PlexoSCOModel sco = MakeSCO(name);
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

TEST(PlexoModuleCourseModel, AnIndexThatDoesNotExistIsAFaultAndChangesNothing) {
  const TestFolder folder;
  PlexoModuleCourseModel course;
  course.AddModule("1", "One");
  PlexoSCOModel sco = MakeSCO("a");
  sco.folderPath = (folder.Write("a/index.htm", "x").GetParentTzPath()).GetString();
  course.AddContentSCO("1", sco);
  EXPECT_THROW(course.SwapModules(0, 1), std::logic_error);
  EXPECT_THROW(course.SwapContentSCOs("1", 1, 0), std::logic_error);
  for (const std::vector<int>& indices : {std::vector{0, 1}, std::vector{-1}, std::vector{0, 0}}) {
    EXPECT_THROW(course.RemoveContentSCOs("1", indices), std::logic_error);
  }
  EXPECT_EQ(course.GetModule("1").contents.size(), 1U);
  EXPECT_EQ(ListTree(folder.Path()), (std::vector<std::string>{"a/", "a/index.htm"}));
}
