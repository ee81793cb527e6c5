// SPDX-License-Identifier: Apache-2.0
#include "panel/PlexoStrobeCommands.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "core/PlexoCourseModel.h"
#include "host/files/TzFileUtil.h"
#include "support/PanelSession.h"
#include "support/ScoZip.h"
#include "support/StagedCourse.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

PlexoLinearCourseModel& Flat() { return *GetLinearCourseModel(); }
PlexoModuleCourseModel& Modules() { return *GetModuleCourseModel(); }
std::vector<std::string> FlatNames() { return NamesOf(Flat().GetSCOs()); }
std::vector<std::string> ContentNames(const TzString& key) {
  return NamesOf(Modules().GetModule(key).contents);
}

/// A player in front of a course with both models filled: three SCOs in the flat list, and two modules "3"
/// and "4" of three contents, a pretest and a post-test each.
class StrobeCommands : public testing::Test {
 protected:
  void Fill() {
    Flat().Clear();
    Modules().Clear();
    course.ResetManifestDetails();
    course.SetCourseType(PlexoCourseType::PRE_CONTENT_POST);
    Modules().SetModuleForcedSequence(false);
    StagedCourse::AddLinearSCOs(3);
    StagedCourse::AddModule("3", "Three", 3);
    StagedCourse::AddModule("4", "Four", 3);
    course.SetIsDirty(false);
  }

  std::string Call(const char* name, std::vector<TzVariant> arguments = {}) {
    TzString reply;
    EXPECT_TRUE(panel.view.HandleStrobeCall({name, std::move(arguments)}, reply)) << name;
    return reply.GetUTF8String();
  }

  PanelSession panel;
  PlexoCourseModel& course = *GetCourseModel();
};

/// Everything that a command could change, but the dirty mark.
std::string Picture() {
  std::string text = std::to_string(static_cast<int>(GetCourseModel()->GetCourseType())) +
                     std::to_string(static_cast<int>(Modules().GetCourseType())) +
                     std::to_string(Flat().GetForcedSequence()) +
                     std::to_string(Modules().GetModuleForcedSequence()) + ";";
  for (const std::string& name : FlatNames()) text += name + " ";
  for (const TzString& key : Modules().GetModuleOrder()) {
    const PlexoModuleModel module = Modules().GetModule(key);
    text += "; " + key.GetUTF8String() + " " + module.title.GetUTF8String() + " " +
            module.attempts.GetUTF8String() + " " + module.weightage.GetUTF8String() +
            std::to_string(module.contentForcedSequence) + " " + module.preTest.scoName.GetUTF8String() + ":";
    for (const PlexoSCOModel& sco : module.contents) text += sco.scoName.GetUTF8String() + " ";
    text += ":" + module.postTest.scoName.GetUTF8String();
  }
  for (const std::string& name : ListTree(GetCourseModel()->GetWorkingFolder())) text += "\n" + name;
  return text + "\n" + std::to_string(GetCourseModel()->GetSCOManifestCount());
}

}  // namespace

TEST_F(StrobeCommands, ChangeTheCourseAsTheirNamesSay) {
  const struct {
    const char* name;
    std::vector<TzVariant> arguments;
    std::function<bool()> holds;
  } cases[] = {
      {"CreateModuleModel", {"a.b.9", "Nine"}, [] { return Modules().GetModule("9").title == "Nine"; }},
      {"SetModuleTitle", {"a.b.3", "New"}, [] { return Modules().GetModule("3").title == "New"; }},
      {"SetAttempts", {"3", "5"}, [] { return Modules().GetModule("3").attempts == "5"; }},
      {"SetContentForcedSequence",
       {"3", "true"},
       [] { return Modules().GetModule("3").contentForcedSequence; }},
      {"SetContentForcedSequence",
       {"3", "TRUE"},
       [] { return !Modules().GetModule("3").contentForcedSequence; }},
      {"SetForcedSequence", {"true"}, [] { return Modules().GetModuleForcedSequence(); }},
      {"SwapModules", {1.9, 0.2, ""}, [] { return Modules().GetModuleOrder().front() == "4"; }},
      {"SwapModules", {0.0, 2.0, ""}, [] { return Modules().GetModuleOrder().front() == "3"; }},
      {"SwapModules", {-1.0, 1.0, ""}, [] { return Modules().GetModuleOrder().front() == "3"; }},
      {"SwapContentSCOs", {"4", 2.0, 0.0, ""}, [] { return ContentNames("4").front() == "content3"; }},
      {"SwapContentSCOs", {"4", 3.0, 0.0, ""}, [] { return ContentNames("4").front() == "content1"; }},
      {"SwapLinearSCOs", {0.0, 2.0}, [] { return FlatNames().front() == "sco3"; }},
      {"SwapLinearSCOs", {0.0, 1e300}, [] { return FlatNames().front() == "sco1"; }},
  };
  for (const auto& [name, arguments, holds] : cases) {
    Fill();
    EXPECT_EQ(Call(name, arguments), "") << name;
    EXPECT_TRUE(holds()) << name << "\n" << Picture();
    EXPECT_TRUE(course.GetIsDirty()) << name;
  }
  course.SetCourseType(PlexoCourseType::LINEAR);
  Call("SetForcedSequence", {"true"});
  EXPECT_TRUE(Flat().GetForcedSequence());
}

TEST_F(StrobeCommands, RemoveSCOsByTheIndicesOfAText) {
  const struct {
    const char* name;
    std::vector<TzVariant> arguments;
    std::vector<std::string> left;
    std::size_t manifests;
    bool isDirty;
  } cases[] = {
      {"RemoveSCOsFromLinearList", {"0,2"}, {"sco2"}, 11, true},
      {"RemoveSCOsFromLinearList", {""}, {"sco2", "sco3"}, 12, true},
      {"RemoveSCOsFromLinearList", {"1x,7"}, {"sco1", "sco3"}, 12, true},
      {"RemoveSCOsFromLinearList", {"99999999999"}, {"sco1", "sco2", "sco3"}, 13, true},
      {"RemoveSCOsFromLinearList", {"0,1,2"}, {}, 10, false},
      {"RemoveContentSCOs", {"x.3", "0,2"}, {"content2"}, 11, true},
      {"RemoveContentSCOs", {"3", ""}, {"content2", "content3"}, 12, true},
      {"RemoveContentSCOs", {"3", "2,0,7,-1"}, {"content2"}, 11, true},
      {"RemoveContentSCOs", {"3", "0,1,2"}, {}, 10, true},
  };
  for (const auto& [name, arguments, left, manifests, isDirty] : cases) {
    Fill();
    ASSERT_EQ(course.GetSCOManifestCount(), 13U);
    EXPECT_EQ(Call(name, arguments), "");
    const bool isFlat = arguments.size() == 1;
    EXPECT_EQ(isFlat ? FlatNames() : ContentNames("3"), left) << name << arguments.back().GetString();
    EXPECT_EQ(course.GetSCOManifestCount(), manifests) << name << arguments.back().GetString();
    EXPECT_EQ(course.GetIsDirty(), isDirty) << name << arguments.back().GetString();
    const auto folders = ListTree(course.GetWorkingFolder() / (isFlat ? "Linear" : "3/Content"));
    EXPECT_EQ(folders.size(), 2 * left.size()) << "each with its page";
  }
}

TEST_F(StrobeCommands, RemoveTestsAndModulesWithTheirFolders) {
  Fill();
  Call("RemovePreTest", {"3"});
  EXPECT_TRUE(Modules().GetModule("3").preTest.IsEmpty());
  EXPECT_THAT(ListTree(course.GetWorkingFolder() / "3/Pre_Test"), IsEmpty());
  EXPECT_TRUE(course.GetIsDirty());
  course.SetIsDirty(false);
  Call("RemovePostTest", {"3"});
  EXPECT_TRUE(Modules().GetModule("3").postTest.IsEmpty());
  EXPECT_THAT(ListTree(course.GetWorkingFolder() / "3/Post_Test"), IsEmpty());
  EXPECT_TRUE(course.GetIsDirty());
  EXPECT_EQ(course.GetSCOManifestCount(), 11U);
  Call("RemoveModule", {"3"});
  EXPECT_THAT(Modules().GetModuleOrder(), ElementsAre("4"));
  EXPECT_EQ(course.GetSCOManifestCount(), 8U);
  EXPECT_TRUE(course.GetIsDirty());
  Call("RemoveModule", {"4"});
  EXPECT_EQ(course.GetSCOManifestCount(), 3U) << "those of the flat list";
  EXPECT_FALSE(course.GetIsDirty());
}

TEST_F(StrobeCommands, AddTheFilesThatTheAuthorChoosesAndReplyTheirNames) {
  const TestFolder desk;
  const auto file = [&](const std::string& name) {
    return ScoZip(name).File("index.htm", name).Save(desk.Path());
  };
  const struct {
    const char* name;
    std::vector<TzVariant> arguments;
    std::vector<TzPath> chosen;
    const char* reply;
  } cases[] = {
      {"AddPreTestSCO", {"x.3"}, {file("pre")}, "<string>pre</string>"},
      {"AddPostTestSCO", {"3"}, {file("post")}, "<string>post</string>"},
      {"AddContentSCO", {"3"}, {file("one"), file("two")}, "<string>one,two</string>"},
      {"AddContentSCO", {"3"}, {}, ""},
      {"AddSCOToLinearList", {}, {file("one"), file("two")}, "<string>one,two</string>"},
      {"AddSCOToLinearList", {}, {}, ""},
  };
  Call("CreateModuleModel", {"3", "Three"});
  Call("SetCourseType", {"LINEAR"});
  for (const auto& [name, arguments, chosen, reply] : cases) {
    course.SetIsDirty(false);
    panel.ui.AnswerNextChooser(chosen);
    EXPECT_EQ(Call(name, arguments), reply);
    EXPECT_EQ(course.GetIsDirty(), !chosen.empty()) << name;
  }
  EXPECT_THAT(FlatNames(), ElementsAre("one", "two"));
  EXPECT_THAT(ContentNames("3"), ElementsAre("one", "two"));
  EXPECT_EQ(Modules().GetModule("3").preTest.scoName, "pre");
  EXPECT_EQ(Modules().GetModule("3").postTest.scoName, "post");
}

TEST_F(StrobeCommands, ThatAreEmptyOrUnknownChangeNothing) {
  Fill();
  const std::string before = Picture();
  for (const char* name :
       {"CreateCourseModel", "ASCall_GetLocale", "DeleteSelectionsFromModel", "CheckPublishStatus",
        "invokeSetResourceStrings", "", "testEI", "removemodule", "RemoveModule "}) {
    EXPECT_EQ(Call(name, {"3", "4"}), "") << name;
  }
  Call("SetCourseType", {"linear"});
  EXPECT_EQ(Picture(), before);
  EXPECT_FALSE(course.GetIsDirty());
  Call("SetWeightage", {"3", "0.5"});
  EXPECT_EQ(Picture(), before) << "a weightage that a player sends only makes the course dirty";
  EXPECT_TRUE(course.GetIsDirty());
}

TEST_F(StrobeCommands, TellAndAskWithoutMakingTheCourseDirty) {
  course.SetCourseTitle("a < b & c");
  TzString reply = "before";
  panel.view.HandleStrobeCall({"GetCourseTitle", {}}, reply);
  EXPECT_EQ(reply, "before<string>a < b & c</string>");
  course.SetScormVersion("1.2");
  EXPECT_EQ(Call("GetSCORMVersion"), "<string>1.2</string>");

  panel.ui.AnswerNextBox("Error extracting the ZIP contents!", kTzButtonOk);
  Call("ShowMessageDialog", {"kPlexoErrorUnzip"});
  EXPECT_EQ(panel.session.ui.GetShownBoxes().back().title, "Plexo Error");
  panel.ui.OnNextDialog([](TzHeadlessDriver& dialog) { dialog.Press("Cancel"); });
  Call("ShowCourseManifestDialog");

  for (const bool disabled : {false, true}) {
    Call("DisableNewManifestButtonOnAppBar", {disabled});
    Call("DisablePublishButton", {!disabled});
    EXPECT_EQ(panel.ui.IsEnabled("New"), !disabled);
    EXPECT_EQ(panel.ui.IsEnabled("Publish"), disabled);
  }
  Call("DisablePublishButton", {true});

  const std::pair<const char*, PlexoCourseType> types[] = {
      {"PRE_CONTENT_POST", PlexoCourseType::PRE_CONTENT_POST},
      {"CONTENT_POST", PlexoCourseType::CONTENT_POST},
      {"LINEAR", PlexoCourseType::LINEAR}};
  for (const auto& [name, type] : types) {
    Call("SetCourseType", {name});
    EXPECT_EQ(course.GetCourseType(), type);
    EXPECT_EQ(Modules().GetCourseType(), type);
  }
  EXPECT_FALSE(course.GetIsDirty());
  EXPECT_NO_THROW(panel.ui.CheckFinished());
}
