// SPDX-License-Identifier: Apache-2.0
#include "host/headless/TzHeadlessDriver.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/headless/TzHeadlessFailure.h"
#include "host/kelpui/UI_NumberEdit.h"
#include "host/kelpui/UI_StaticText.h"
#include "host/kelpui/UI_TextEdit.h"
#include "host/sheets/TzDialog.h"
#include "host/sheets/TzSheet.h"
#include "support/SheetPair.h"
#include "support/TestSession.h"

using namespace kelpui::controls;
using testing::EndsWith;

namespace {

constexpr const char* kCells = R"(
sheet: cells
interface:
  - {cell: hasList, default: false}
  - {cell: locked, default: false}
  - {cell: title, default: ""}
  - {cell: code, default: ""}
  - {cell: version, default: 0}
  - {cell: versions, default: [{name: "1.2", value: 0}, {name: "2004", value: 1}]}
)";

constexpr const char* kViews = R"(
layout: views
tree:
  column:
  children:
    - edit_text: {name: "Title:", bind: '@title'}
    - static_text: {name: "Code"}
    - edit_text: {bind: '@code'}
    - checkbox: {name: "Show the list", bind: '@hasList'}
    - popup: {name: "Version:", items: '@versions', bind: '@version'}
    - button: {image: "lock.png", action: '@lock', bind: '@locked', tooltip: "Lock it"}
    - button: {name: "Twice", action: '@ask'}
    - button: {name: "Twice", action: '@ask'}
    - button: {name: "Ask", action: '@ask'}
    - optional: {bind: '@hasList'}
      children:
        - button: {name: "Add", action: '@add'}
        - subview: {identifier: "list", width: 300, height: 100}
)";

/// A row with a field, and a row below it that is drawn.
class ModuleRow : public UI_MultiColumnTreeRow {
 public:
  explicit ModuleRow(const TzString& text) : title(text) {}
  TzString title;
};

/// A small panel: its list is made by the first press of "Add".
class Panel : public TzSheetHandler {
 public:
  explicit Panel(const SheetPair& sheets) : sheet(this, sheets.Info(), nullptr, 1, 2) {
    canvas = sheet.CreateDlgCanvasOnView(nullptr);
  }

  bool OnButton(const TzString& action, const TzVariant& /*value*/, TzSheet* /*sheet*/) override {
    if (action == "add") AddRow();
    if (action == "ask") onAsk();
    return true;
  }

  void AddRow() {
    if (tree == nullptr) MakeTree();
    const UI_RowPtr row(new ModuleRow("Module " + std::to_string(tree->CountRows())));
    auto cell = row->GetCellView(0);
    cell->AddChild(new UI_TextEdit);
    cell->AddChild(new UI_StaticText("Weightage:"));
    auto* weightage = new UI_NumberEdit({0, 100, 0});
    weightage->SetInlineUnit("%");
    cell->AddChild(weightage);
    tree->AppendRow(row);
    const UI_RowPtr below(new ModuleRow("intro.zip"));
    below->SetSelectable(false);
    tree->AppendRow(below, row);
  }

  void MakeTree() {
    tree = new UI_MultiColumnTree(1, 20.0);
    tree->Init();
    tree->SetSupportMultipleSelections(true);
    tree->SetDrawCellOfRowCallback(
        [](UI_MultiColumnTreeRow& row, std::size_t, const TzRect& area, UI_DrawContext& context) {
          UI_MultiColumnTree::DrawCellString(context, static_cast<ModuleRow&>(row).title, area,
                                             UI_MultiColumnTree::GetDefaultTextColor());
        });
    const auto subview = canvas->FindChildRecursive("list");
    subview->AddChild(tree);
    tree->SetFrame(subview->GetFrame());
  }

  TzSheet sheet;
  TzCanvas* canvas = nullptr;
  boost::intrusive_ptr<UI_MultiColumnTree> tree;
  std::function<void()> onAsk = [] {};
};

class HeadlessTest : public testing::Test {
 protected:
  /// What the act fails with; empty if it doesn't.
  std::string FailureOf(const std::function<void()>& act) {
    try {
      act();
    } catch (const TzHeadlessFailure& failure) {
      const std::string text = failure.what();
      return text.substr(0, text.find('\n'));
    }
    return {};
  }

  SheetPair sheets{kCells, kViews};
  TzHeadlessUI screen{TzHeadlessUI::Script::Strict};
  TzSession previous = TzSession::Install({.userInterface = &screen});
  Panel panel{sheets};
  TzHeadlessDriver ui{screen};

  void TearDown() override { TzSession::Install(previous); }
};

}  // namespace

TEST_F(HeadlessTest, ReadsLikeWhatAPersonDoesAndTellsWhatTheySaw) {
  ui.Type("Title", "My Course 1");
  ui.Check("Show the list");
  ui.Press("Add");
  ui.Press("Add");
  ui.SelectRows({0, 1});
  EXPECT_EQ(ui.GetTranscript(), R"(  + edit_text "Title:" = ""
  + static_text "Code"
  + edit_text "Code" = ""
  + checkbox "Show the list" off
  + popup "Version:" = "1.2"
  + button "lock.png" disabled
  + button "Twice"
  + button "Twice"
  + button "Ask"
type "My Course 1" into "Title"
  - edit_text "Title:" = ""
  + edit_text "Title:" = "My Course 1"
check "Show the list"
  - checkbox "Show the list" off
  + checkbox "Show the list" on
  + button "Add"
press "Add"
  + tree of 1 rows
  +   row 0 "Module 0"
  +     edit_text = ""
  +     static_text "Weightage:"
  +     edit_number "Weightage:" = 0%
  +     row 0 "intro.zip"
press "Add"
  - tree of 1 rows
  + tree of 2 rows
  +   row 1 "Module 1"
  +     edit_text = ""
  +     static_text "Weightage:"
  +     edit_number "Weightage:" = 0%
  +     row 0 "intro.zip"
select rows 0 1
  -   row 0 "Module 0"
  -   row 1 "Module 1"
  +   row 0 "Module 0" selected
  +   row 1 "Module 1" selected
)");
}

TEST_F(HeadlessTest, LooksIntoARowAsAPersonThatScrollsToIt) {
  ui.Check("Show the list");
  for (int count = 0; count < 50; ++count) ui.Press("Add");
  TzHeadlessDriver inRow = ui.InRow(49);
  inRow.Type("Weightage", "50");
  EXPECT_EQ(inRow.See(),
            "row 49 \"Module 49\"\n"
            "  edit_text = \"\"\n"
            "  static_text \"Weightage:\"\n"
            "  edit_number \"Weightage:\" = 50%\n"
            "  row 0 \"intro.zip\"\n");
  EXPECT_EQ(ui.InRow(0).Read("Weightage"), "0");
}

TEST_F(HeadlessTest, FailsForWhatAPersonCouldNotDo) {
  const struct {
    const char* expected;
    std::function<void()> act;
  } cases[] = {
      {"button \"Add\": there is none", [this] { ui.Press("Add"); }},
      {"button \"Title\": there is none", [this] { ui.Press("Title"); }},
      {"button \"lock.png\": it is disabled", [this] { ui.Press("lock.png"); }},
      {"button \"Lock it\": it is disabled", [this] { ui.Press("Lock it"); }},
      {"button \"Twice\": there is more than one", [this] { ui.Press("Twice"); }},
      {"field \"\": there is more than one", [this] { ui.Type("", "x"); }},
      {"check box \"Show the list\": it is unchecked already", [this] { ui.Uncheck("Show the list"); }},
      {"popup \"Version\": it has no item \"3.0\"", [this] { ui.Choose("Version", "3.0"); }},
      {"tree \"\": there is none", [this] { ui.SelectRows({0}); }},
      {"row 1: there is none",
       [this] {
         ui.Check("Show the list");
         ui.Press("Add");
         ui.SelectRows({1});
       }},
      {"field \"Weightage:\": \"much\" isn't a number", [this] { ui.InRow(0).Type("Weightage:", "much"); }},
  };
  for (const auto& [expected, act] : cases) EXPECT_EQ(FailureOf(act), expected);
}

TEST_F(HeadlessTest, FailsForBoxesChoosersAndDialogsThatTheScriptDoesNotExpect) {
  const TzMessageBoxOptions box("Plexo Error", "It is damaged");
  const struct {
    const char* expected;
    std::function<void()> show;
  } cases[] = {
      {"box \"Plexo Error\": \"It is damaged\" isn't expected", [&] { TzShowOkOnlyMessageBox(box); }},
      {"box \"Plexo Error\": \"It is damaged\" doesn't offer Yes",
       [&] {
         ui.AnswerNextBox(kTzButtonYes);
         TzShowOkOnlyMessageBox(box);
       }},
      {"box \"Plexo Error\": \"It is damaged\" isn't the one expected: \"It is old\"",
       [&] {
         ui.AnswerNextBox("It is old", kTzButtonNo);
         TzShowYesNoMessageBox(box);
       }},
      {"file chooser \"Add\" isn't expected",
       [] { TzFileChooserUtils::OpenOSDialogSelectFile({}, "Add", {}, nullptr, true); }},
      {"folder chooser \"Browse\" isn't expected",
       [] { TzFileChooserUtils::BrowseForFolders("Browse", nullptr, ""); }},
      {"dialog \"Details\" isn't expected",
       [this] {
         screen.CreateCanvas({.place = TzCanvasSpec::Place::Dialog, .title = "Details"})->RunModal();
       }},
      {"dialog \"Details\" is still open at the end of its script",
       [this] {
         ui.OnNextDialog([](TzHeadlessDriver&) {});
         screen.CreateCanvas({.place = TzCanvasSpec::Place::Dialog, .title = "Details"})->RunModal();
       }},
  };
  for (const auto& [expected, show] : cases) {
    panel.onAsk = show;
    EXPECT_EQ(FailureOf([this] { ui.Press("Ask"); }), expected);
  }
  EXPECT_EQ(FailureOf([this] { ui.CheckFinished(); }), cases[0].expected) << "also where nobody saw it";
}

TEST_F(HeadlessTest, AnswersInTheOrderOfTheScriptAndMissesWhatWasNotUsed) {
  panel.onAsk = [] {
    EXPECT_EQ(TzShowYesNoCancelMessageBox({"Publish", "Now?"}), kTzButtonYes);
    EXPECT_EQ(TzFileChooserUtils::BrowseForFolders("Browse", nullptr, "/home"), "/tmp");
    EXPECT_EQ(TzFileChooserUtils::OpenOSDialogSelectFile({}, "Add", {}, nullptr, true).size(), 1U);
  };
  screen.NoteScreen();
  const std::size_t shownBefore = ui.GetTranscript().size();
  ui.AnswerNextBox("Now?", kTzButtonYes);
  ui.AnswerNextFolderChooser("/tmp");
  ui.AnswerNextChooser({TzPath("intro.zip")});
  ui.Press("Ask");
  ui.CheckFinished();
  EXPECT_EQ(ui.GetTranscript().substr(shownBefore), R"(press "Ask"
box "Publish": "Now?" -> Yes
folder chooser "Browse" -> "/tmp"
file chooser "Add" -> 1 files
)");
  ui.AnswerNextBox(kTzButtonOk);
  EXPECT_EQ(FailureOf([this] { ui.CheckFinished(); }), "script: 1 answers to boxes weren't used");
}

TEST_F(HeadlessTest, OnlyTheDialogOnTopCanBeReached) {
  TzDataModel model(TzPropertySheet::Read(sheets.Properties(), nullptr));
  const SheetPair dialogSheets(kCells, "layout: d\ntree:\n  button: {name: \"Done\", action: '@done'}\n");
  const TzLayoutSheet layout = TzLayoutSheet::Read(dialogSheets.Layout(), model.GetSheet(), nullptr);
  panel.onAsk = [&] {
    const TzCanvasPtr dialog =
        screen.CreateCanvas({.place = TzCanvasSpec::Place::Dialog, .title = "Details"});
    dialog->ShowSheet(
        layout, model, [&](const TzString&, const TzVariant&) { dialog->EndModal(kTzDialogOk); }, nullptr);
    EXPECT_EQ(dialog->RunModal(), kTzDialogOk);
    dialog->Unbind();
  };
  ui.OnNextDialog([](TzHeadlessDriver& dialog) {
    EXPECT_FALSE(dialog.Sees("Ask"));
    dialog.Press("Done");
    EXPECT_EQ(dialog.See(), "") << "a closed dialog takes no more";
  });
  ui.Press("Ask");
  EXPECT_TRUE(ui.Sees("Ask"));
  EXPECT_THAT(ui.GetTranscript(), EndsWith("press \"Ask\"\n"
                                           "dialog \"Details\"\n"
                                           "  + button \"Done\"\n"
                                           "press \"Done\"\n"
                                           "  - button \"Done\"\n"
                                           "end of dialog \"Details\"\n"));
}

TEST_F(HeadlessTest, ATimerThatIsNeverRemovedFailsInsteadOfRunningForEver) {
  panel.onAsk = [this] { panel.canvas->UI_InstallTimer(0.0, 1); };
  EXPECT_EQ(FailureOf([this] { ui.Press("Ask"); }), "a timer without a delay is never removed");
}

TEST(TzHeadlessUI, ALooseSessionTakesTheAnswersThatChangeNothing) {
  TestSession session;
  EXPECT_EQ(TzShowOkOnlyMessageBox({"", ""}), kTzButtonOk);
  EXPECT_EQ(TzShowYesNoMessageBox({"", ""}), kTzButtonNo);
  EXPECT_EQ(TzShowYesNoCancelMessageBox({"", ""}), kTzButtonCancel);
  EXPECT_EQ(TzFileChooserUtils::BrowseForFolders("", nullptr, "/home"), "");
  EXPECT_EQ(session.ui.CreateCanvas({.place = TzCanvasSpec::Place::Dialog})->RunModal(), kTzDialogCancel);
}
