// SPDX-License-Identifier: Apache-2.0
#include "panel/PlexoView.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <regex>

#include "core/PlexoCourseModel.h"
#include "host/files/TzFileUtil.h"
#include "host/kelpui/UI_MultiColumnTree.h"
#include "panel/PlexoSheetResources.h"
#include "support/PanelSession.h"
#include "support/ScoZip.h"
#include "support/StagedCourse.h"

using kelpui::controls::UI_MultiColumnTree;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

namespace {

constexpr const char* kFlat = "Multiple SCOs";
constexpr const char* kRemediation = "Simple Remediation";
constexpr const char* kRollup = "Pre-test or Post-test rollup";
constexpr const char* kAddPreTest = "Add a pretest SCO to this course.";
constexpr const char* kAddContent = "Add a content SCO to this course.";
constexpr const char* kAddPostTest = "Add a post-test SCO to this course.";
constexpr const char* kUp = "moveup.png";
constexpr const char* kDown = "movedown.png";
constexpr const char* kDelete = "deleteswf.png";

/// An author in front of the panel, with SCO packages on the desk.
class PlexoViewTest : public testing::Test {
 protected:
  ~PlexoViewTest() override { EXPECT_NO_THROW(ui.CheckFinished()); }

  /// A package of this name; it is made where it isn't there.
  [[nodiscard]] TzPath File(const std::string& name) const {
    return ScoZip(name).File("index.htm", name).Save(desk.Path());
  }

  void AddToRow(std::size_t row, const std::string& button, const std::vector<std::string>& names) {
    std::vector<TzPath> files;
    for (const std::string& name : names) files.push_back(File(name));
    ui.AnswerNextChooser(std::move(files));
    ui.InRow(row).Press(button);
  }

  /// A flat course of these SCOs, or a module course of as many modules.
  void Start(const std::string& templateName, const std::vector<std::string>& rows) {
    panel.Choose(templateName);
    for (std::size_t row = 0; row < rows.size(); ++row) {
      if (templateName == kFlat) {
        panel.AddFiles({File(rows[row])});
      } else if (row > 0) {
        ui.Press("+ Module");
      }
    }
  }

  [[nodiscard]] static bool Stands(const TzString& folder) { return TzFile(TzPath(folder)).Exists(); }
  [[nodiscard]] std::vector<std::string> ScoNames() const {
    return NamesOf(GetLinearCourseModel()->GetSCOs());
  }
  [[nodiscard]] static PlexoModuleModel Module(std::size_t position) {
    PlexoModuleCourseModel& course = *GetModuleCourseModel();
    return course.GetModule(course.GetModuleOrder().at(position));
  }

  PanelSession panel;
  TzHeadlessDriver& ui = panel.ui;
  PlexoCourseModel& course = *GetCourseModel();
  TestFolder desk;
};

}  // namespace

TEST_F(PlexoViewTest, TheButtonsUnderTheListFollowItsRowsAndSelection) {
  const std::vector<std::string> one = {"a"};
  const std::vector<std::string> three = {"a", "b", "c"};
  const struct {
    const char* templateName;
    std::vector<std::string> rows;
    std::vector<std::size_t> selected;
    bool canDelete;
    bool canMoveUp;
    bool canMoveDown;
  } cases[] = {
      {kFlat, {}, {}, false, false, false},
      {kFlat, one, {}, true, false, false},
      {kFlat, one, {0}, true, false, false},
      {kFlat, three, {0}, true, false, true},
      {kFlat, three, {1}, true, true, true},
      {kFlat, three, {2}, true, true, false},
      {kFlat, three, {0, 1}, true, false, false},
      {kRemediation, one, {}, false, false, false},
      {kRemediation, one, {0}, false, false, false},
      {kRollup, one, {0}, false, false, false},
      {kRollup, three, {}, true, false, false},
      {kRollup, three, {1}, true, true, true},
      {kRemediation, three, {0}, true, false, true},
      {kRemediation, three, {2}, true, true, false},
      {kRemediation, three, {0, 2}, true, false, false},
  };
  for (const auto& each : cases) {
    panel.view.ReturnToTemplateChoice();
    Start(each.templateName, each.rows);
    if (!each.selected.empty()) ui.SelectRows(each.selected);
    EXPECT_EQ(ui.IsEnabled(kDelete), each.canDelete) << ui.See();
    EXPECT_EQ(ui.IsEnabled(kUp), each.canMoveUp) << ui.See();
    EXPECT_EQ(ui.IsEnabled(kDown), each.canMoveDown) << ui.See();
  }
}

TEST_F(PlexoViewTest, ATemplateLeadsToItsScreenAndNewBackAgainAndTheListIsUsedAgain) {
  const struct {
    const char* templateName;
    PlexoCourseType type;
    const char* addButton;
    /// Without indentation.
    const char* rows;
  } cases[] = {
      {kFlat, PlexoCourseType::LINEAR, "+ File", "tree of 1 rows\nrow 0 \"a\"\n"},
      {kRemediation, PlexoCourseType::CONTENT_POST, "+ Module", R"(edit_number "Weightage:" = 100%
row 0
static_text "Content"
checkbox "Force Content Sequence" off
button "addswf"
row 1
row 2
static_text "Post-test"
button "addswf"
row 3
static_text "SCORM Version"
)"},
      {kRollup, PlexoCourseType::PRE_CONTENT_POST, "+ Module", R"(edit_number "Weightage:" = 100%
row 0
static_text "PreTest"
button "addswf"
row 1
row 2
static_text "Content"
)"},
  };
  for (const auto& each : cases) {
    EXPECT_FALSE(ui.IsEnabled("New"));
    TzString firstKey;
    for (const bool isFirst : {true, false}) {
      Start(each.templateName, {"a"});
      EXPECT_EQ(course.GetCourseType(), each.type);
      EXPECT_EQ(GetModuleCourseModel()->GetCourseType(), each.type);
      EXPECT_TRUE(ui.Sees(each.addButton));
      EXPECT_FALSE(ui.Sees("Choose a template"));
      EXPECT_TRUE(ui.IsEnabled("New") && ui.IsEnabled("Publish"));
      EXPECT_THAT(ui.See(), HasSubstr("tree of 1 rows"));
      EXPECT_THAT(std::regex_replace(ui.See(), std::regex("\n +"), "\n"), HasSubstr(each.rows));
      if (each.type != PlexoCourseType::LINEAR) {
        ASSERT_EQ(GetModuleCourseModel()->GetModuleOrder().size(), 1U);
        EXPECT_NE(Module(0).key, firstKey) << "a key is never used twice";
        firstKey = Module(0).key;
      }
      course.SetIsDirty(false);
      ui.Press("New");
      EXPECT_TRUE(ui.Sees("Choose a template")) << isFirst;
      EXPECT_EQ(GetModuleCourseModel()->CountModules() + GetLinearCourseModel()->CountSCOs(), 0U);
    }
  }
}

TEST_F(PlexoViewTest, TheDetailsOpenOverTheNewScreenAndTheirCancelLeadsBack) {
  ui.OnNextDialog([this](TzHeadlessDriver& dialog) {
    EXPECT_EQ(GetModuleCourseModel()->CountModules(), 1U);
    dialog.Press("Cancel");
  });
  ui.Press(kRollup);
  EXPECT_TRUE(ui.Sees("Choose a template"));
  EXPECT_EQ(GetModuleCourseModel()->CountModules(), 0U);
  EXPECT_FALSE(course.GetIsDirty());
}

TEST_F(PlexoViewTest, WhatTheAuthorEntersReachesTheCourseAndOnlyAWeightageLeavesItClean) {
  panel.Choose(kRollup);
  EXPECT_EQ(ui.InRow(0).Read("Weightage"), "100");
  EXPECT_FALSE(course.GetIsDirty()) << "the details were confirmed after the first module had come";
  EXPECT_EQ(Module(0).title.GetUTF8String(), ui.InRow(0).Read("Edit Module Name"));
  EXPECT_THAT(Module(0).title.GetUTF8String(), testing::StartsWith("Module_"));
  ui.InRow(0).Type("Weightage", "50");
  EXPECT_EQ(Module(0).weightage, "0.500000");
  EXPECT_FALSE(course.GetIsDirty());

  const struct {
    const char* what;
    std::function<void()> act;
    std::function<bool()> holds;
  } cases[] = {
      {"a title of a module", [this] { ui.InRow(0).Type("Edit Module Name", ""); },
       [] { return Module(0).title.IsEmpty(); }},
      {"the order of contents", [this] { ui.InRow(0).Check("Force Content Sequence"); },
       [] { return Module(0).contentForcedSequence; }},
      {"their order given free", [this] { ui.InRow(0).Uncheck("Force Content Sequence"); },
       [] { return !Module(0).contentForcedSequence; }},
      {"the order of modules", [this] { ui.Check("Force Module Sequence"); },
       [] { return GetModuleCourseModel()->GetModuleForcedSequence(); }},
      {"their order given free", [this] { ui.Uncheck("Force Module Sequence"); },
       [] { return !GetModuleCourseModel()->GetModuleForcedSequence(); }},
      {"another module", [this] { ui.Press("+ Module"); },
       [] { return GetModuleCourseModel()->GetModuleOrder().size() == 2; }},
  };
  for (const auto& [what, act, holds] : cases) {
    course.SetIsDirty(false);
    act();
    EXPECT_TRUE(holds()) << what;
    EXPECT_TRUE(course.GetIsDirty()) << what;
  }
}

TEST_F(PlexoViewTest, TheCoursesTitleIsStoredAsItIsTyped) {
  panel.Choose(kRollup);
  course.SetIsDirty(false);
  const std::string title = ui.Read("") + " & more";
  ui.Type("", title);
  EXPECT_EQ(course.GetCourseTitle(), TzString(title));
  EXPECT_TRUE(course.GetIsDirty());
}

TEST_F(PlexoViewTest, MovingARowMovesItInTheCourseAndLeavesNothingSelected) {
  Start(kFlat, {"a", "b", "c"});
  course.SetIsDirty(false);
  ui.SelectRows({2});
  ui.Press(kUp);
  EXPECT_THAT(ScoNames(), ElementsAre("a", "c", "b"));
  EXPECT_TRUE(course.GetIsDirty());
  EXPECT_FALSE(ui.IsEnabled(kUp));
  ui.SelectRows({0});
  ui.Press(kDown);
  EXPECT_THAT(ScoNames(), ElementsAre("c", "a", "b"));
  EXPECT_THAT(ui.See(), HasSubstr("  row 0 \"c\"\n"));
  EXPECT_THAT(ui.See(), HasSubstr("  row 1 \"a\"\n"));

  panel.view.ReturnToTemplateChoice();
  Start(kRemediation, {"a", "b"});
  ui.SelectRows({0});
  ui.Press(kDown);
  EXPECT_TRUE(ui.IsEnabled(kDelete)) << "two modules, as before";
  ui.Press("+ Module");
  const std::vector<TzString> before = GetModuleCourseModel()->GetModuleOrder();
  AddToRow(1, kAddContent, {"lesson"});
  course.SetIsDirty(false);
  ui.SelectRows({1});
  ui.Press(kUp);
  EXPECT_THAT(GetModuleCourseModel()->GetModuleOrder(), ElementsAre(before[1], before[0], before[2]));
  EXPECT_TRUE(course.GetIsDirty());
  EXPECT_THAT(ui.InRow(0).See(), HasSubstr("\"lesson\"")) << "a module keeps the rows below it";
}

TEST_F(PlexoViewTest, DeletingScosTakesTheirRecordsAndFoldersAndTheLastOneLeavesACleanCourse) {
  Start(kFlat, {"a", "b", "c"});
  ui.Press(kDelete);
  EXPECT_EQ(ScoNames().size(), 3U) << "nothing is selected";
  const std::vector<PlexoSCOModel> scos = GetLinearCourseModel()->GetSCOs();
  // A folder that is gone already holds up nothing.
  ASSERT_TRUE(TzFileUtil::DeleteDirectory(TzPath(scos[2].folderPath), true));
  ui.SelectRows({0, 2});
  ui.Press(kDelete);
  EXPECT_THAT(ScoNames(), ElementsAre("b"));
  EXPECT_THAT(ui.See(), HasSubstr("tree of 1 rows\n"));
  ASSERT_EQ(course.GetSCOManifestCount(), 1U);
  EXPECT_EQ(course.GetSCOManifest(0).scoName, "b");
  EXPECT_FALSE(Stands(scos[0].folderPath));
  EXPECT_TRUE(Stands(scos[1].folderPath));
  EXPECT_TRUE(course.GetIsDirty());

  ui.SelectRows({0});
  ui.Press(kDelete);
  EXPECT_FALSE(course.GetIsDirty());
  EXPECT_FALSE(ui.IsEnabled(kDelete));
  EXPECT_THAT(ListTree(course.GetWorkingFolder()), ElementsAre("Linear/"));
}

TEST_F(PlexoViewTest, DeletingAModuleTakesAllThatIsInItAndDeletingAllLeavesACleanCourse) {
  Start(kRollup, {"a", "b"});
  AddToRow(0, kAddPreTest, {"pre"});
  AddToRow(0, kAddContent, {"one", "two"});
  AddToRow(0, kAddPostTest, {"post"});
  AddToRow(1, kAddContent, {"one"});
  ASSERT_EQ(course.GetSCOManifestCount(), 5U);
  const TzString kept = GetModuleCourseModel()->GetModuleOrder().at(1);
  ui.SelectRows({0});
  ui.Press(kDelete);
  EXPECT_THAT(GetModuleCourseModel()->GetModuleOrder(), ElementsAre(kept));
  ASSERT_EQ(course.GetSCOManifestCount(), 1U);
  EXPECT_TRUE(Stands(course.GetSCOManifest(0).folderPath));
  for (const std::string& name : ListTree(course.GetWorkingFolder())) {
    EXPECT_THAT(name, Not(HasSubstr("pre"))) << "of the deleted module only empty folders may stay";
    EXPECT_THAT(name, Not(HasSubstr("two")));
    EXPECT_THAT(name, Not(HasSubstr("post")));
  }
  EXPECT_TRUE(course.GetIsDirty());

  ui.Press("+ Module");
  ui.SelectRows({0, 1});
  ui.Press(kDelete);
  EXPECT_EQ(GetModuleCourseModel()->CountModules(), 0U);
  EXPECT_EQ(course.GetSCOManifestCount(), 0U);
  EXPECT_FALSE(course.GetIsDirty());
}

TEST_F(PlexoViewTest, TheNamesOfWhatWasAddedLastStandUnderTheirHeader) {
  Start(kRollup, {"a", "b"});
  AddToRow(1, kAddContent, {"one", "two"});
  EXPECT_THAT(ui.InRow(1).See(), HasSubstr("row 3 \"one,two\"\n"));
  AddToRow(1, kAddContent, {"three"});
  EXPECT_THAT(ui.InRow(1).See(), HasSubstr("row 3 \"three\"\n"));
  EXPECT_THAT(NamesOf(Module(1).contents), ElementsAre("one", "two", "three"));
  AddToRow(1, kAddPreTest, {"pre"});
  AddToRow(1, kAddPostTest, {"post"});
  EXPECT_THAT(ui.InRow(1).See(), HasSubstr("row 1 \"pre\"\n"));
  EXPECT_THAT(ui.InRow(1).See(), HasSubstr("row 5 \"post\"\n"));
  EXPECT_THAT(ui.InRow(0).See(), Not(HasSubstr("three")));

  course.SetIsDirty(false);
  AddToRow(1, kAddPostTest, {});
  EXPECT_THAT(ui.InRow(1).See(), HasSubstr("row 5 \"post\"\n")) << "a cancelled chooser changes nothing";
  EXPECT_FALSE(course.GetIsDirty());
}

TEST_F(PlexoViewTest, ActionsWithoutAListOrOfOtherScreensDoNothingAndOnlyUnknownOnesAreRefused) {
  for (const char* action : {"move_up", "move_down", "delete", "add_module"}) {
    course.SetCourseType(PlexoCourseType::LINEAR);
    EXPECT_TRUE(panel.view.OnButton(action, {}, nullptr)) << action;
  }
  EXPECT_EQ(GetModuleCourseModel()->CountModules(), 0U);
  EXPECT_FALSE(course.GetIsDirty());
  for (const char* action : {"", "new", "Delete", "addfile"}) {
    EXPECT_FALSE(panel.view.OnButton(action, {}, nullptr)) << action;
  }
  panel.Choose(kFlat);
  panel.AddFiles({});
  EXPECT_THAT(ui.See(), HasSubstr("tree of 0 rows")) << "the list comes with the first press, files or not";
}

TEST_F(PlexoViewTest, TheListFollowsTheSizeOfTheWindow) {
  Start(kRollup, {"a"});
  for (const int width : {500, 900}) {
    panel.session.windows.GetWindows().Resize(panel.window, width, 700);
    PlexoView::ResizePanel(1.0, 1.0);
    const auto canvases = panel.session.ui.GetFrontCanvases();
    UI_MultiColumnTree* tree = nullptr;
    for (const TzCanvas* canvas : canvases) {
      const auto place = canvas->FindChildRecursive("pre_content_post_course_view");
      if (place != nullptr) tree = dynamic_cast<UI_MultiColumnTree*>(place->GetChildren().at(0).get());
    }
    ASSERT_NE(tree, nullptr);
    EXPECT_EQ(tree->GetWidth(), width);
    EXPECT_EQ(tree->GetColumnWidth(0), width);
    const auto cell = tree->GetRow(0)->GetCellView(0);
    const TzRect weightage = cell->GetChildren().at(2)->GetFrame();
    EXPECT_EQ(weightage.left, width - 60.0);
    EXPECT_EQ(weightage.right, width - 10.0);
  }
}

TEST(PlexoSheetResources, FindsFilesByNameAndTypeAndNothingForTheHostsPopupWindows) {
  const struct {
    const char* name;
    bool isFound;
  } cases[] = {
      {"121.adm", true},    {"122.EVE", true}, {"121.eve", false},
      {"121", false},       {"", false},       {"ActionPopupWindow_121.adm", false},
      {"1.121.adm", false},
  };
  for (const auto& [name, isFound] : cases) EXPECT_EQ(!LoadSheetResource(name).empty(), isFound) << name;
}
