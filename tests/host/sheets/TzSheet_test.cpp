// SPDX-License-Identifier: Apache-2.0
#include "host/sheets/TzSheet.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/headless/TzHeadlessDriver.h"
#include "host/kelpui/UI_MultiColumnTree.h"
#include "host/kelpui/UI_PictureButton.h"
#include "host/sheets/TzPaletteUtils.h"
#include "host/sheets/TzSheetDialog.h"
#include "support/SheetPair.h"
#include "support/TestSession.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr const char* kCells = R"(
sheet: cells
interface:
  - {cell: useTitle, default: false}
  - {cell: title, default: "", unlink: 'useTitle ? title : ""'}
  - {cell: score, default: 10}
  - {cell: limits, default: {min_value: 0, max_value: 100}}
  - {cell: versions, default: [{name: "1.2", value: 0}, {name: "2004", value: 1}]}
  - {cell: version, default: 1}
  - {cell: mode, default: "simple"}
invariants:
  - canDelete <== score == 100
)";

constexpr const char* kViews = R"(
layout: views
tree:
  column:
  children:
    - row:
      children:
        - checkbox: {bind: '@useTitle'}
        - edit_text: {name: "Title:", bind: '@title'}
    - inline_edit_number: {name: "Score:", bind: '@score', min_max_filter: '@limits', label: " points"}
    - popup: {name: "Version:", items: '@versions', bind: '@version'}
    - optional: {bind: '@mode', value: "expert"}
      children:
        - static_text: {name: '@mode'}
        - subview: {identifier: "list", horizontal: '@align_fill', width: 600, height: 340}
    - button: {identifier: "deleteButton", image: "delete.png", action: '@delete', bind: '@canDelete'}
    - button: {name: "OK", action: '@ok'}
    - button: {name: "Cancel", action: '@cancel', cancel: true}
)";

std::string_view LoadImage(const TzString& file) {
  if (file == "delete.png") return "small";
  return file == "delete_AT_2X.png" ? "large" : "";
}

/// Keeps what a sheet tells its handler.
class RecordingHandler : public TzSheetHandler {
 public:
  bool OnOkButton(const TzVariant& /*value*/, TzSheet* /*sheet*/) override { return Note("ok"); }
  bool OnButton(const TzString& action, const TzVariant& value, TzSheet* sheet) override {
    if (!value.IsNull()) Note("value " + std::string(value.GetBool() ? "true" : "false"));
    return TzSheetHandler::OnButton(action, value, sheet) || Note("button " + action.GetUTF8String());
  }
  bool OnChange(const TzString& cell, const TzVariant& /*value*/, TzSheet* /*sheet*/) override {
    return Note("change " + cell.GetUTF8String());
  }
  bool IsBlockChangeMonitors() override { return isBlocked; }
  void OnEveCanvasResize(const TzRect& size, TzSheet* /*sheet*/) override {
    Note("size " + std::to_string(static_cast<int>(size.right)));
  }
  bool Note(const std::string& what) {
    heard.push_back(what);
    return true;
  }

  std::vector<std::string> heard;
  bool isBlocked = false;
};

class SheetTest : public testing::Test {
 protected:
  SheetTest() { canvas = sheet.CreateDlgCanvasOnView(nullptr); }

  TestSession session;
  SheetPair sheets{kCells, kViews};
  RecordingHandler handler;
  TzSheet sheet{&handler, sheets.Info(), LoadImage, 1, 2};
  TzCanvas* canvas = nullptr;
  TzHeadlessDriver ui{session.ui};
};

}  // namespace

TEST_F(SheetTest, ShowsWhatTheCellsHold) {
  sheet.SetCellValue("score", 42, true);
  EXPECT_EQ(ui.See(),
            "checkbox \"Title:\" off\n"
            "edit_text \"Title:\" = \"\" disabled\n"
            "edit_number \"Score:\" = 42\n"
            "popup \"Version:\" = \"2004\"\n"
            "button \"delete.png\" disabled\n"
            "button \"OK\"\n"
            "button \"Cancel\"\n");
}

TEST_F(SheetTest, AHostFindsCellsByTheCanvasAndButtonsByTheirActions) {
  EXPECT_EQ(canvas->GetDataModel(), &sheet.GetDataModel());
  EXPECT_EQ(canvas->FindChildRecursive("ok")->GetName(), "OK");
  EXPECT_EQ(canvas->FindChildRecursive("delete"), nullptr) << "the sheet names it otherwise";
  const TzCanvasPtr held(canvas);
  sheet.CloseCanvas();
  EXPECT_EQ(held->GetDataModel(), nullptr);
}

TEST_F(SheetTest, WhatAPersonEntersReachesTheCellAndThenTheWatchersAndTheHandler) {
  sheet.GetDataModel().MonitorCellValue("title", [this](const TzVariant& value) {
    handler.Note("watcher " + value.GetString().GetUTF8String());
  });
  ui.Check("Title:");
  ui.Type("Title:", "Fire");
  ui.Type("Score:", "100");
  ui.Choose("Version:", "1.2");
  EXPECT_THAT(handler.heard, ElementsAre("change useTitle", "watcher Fire", "change title", "change score",
                                         "change version"));
  EXPECT_EQ(sheet.GetString("title"), "Fire");
  EXPECT_EQ(sheet.GetInteger("score"), 100);
  EXPECT_EQ(sheet.GetInteger("version"), 0);
  EXPECT_TRUE(ui.IsEnabled("delete.png"));
  ui.Uncheck("Title:");
  EXPECT_EQ(ui.Read("Title"), "");
  ui.Check("Title:");
  EXPECT_EQ(ui.Read("Title"), "Fire");
}

TEST_F(SheetTest, ViewsAndWatchersLearnOfACellWithTheUpdateAndReadersAtOnce) {
  int calls = 0;
  sheet.GetDataModel().MonitorCellValue("score", [&](const TzVariant&) { ++calls; });
  sheet.SetCellValue("score", 50, false);
  EXPECT_EQ(sheet.GetInteger("score"), 50);
  EXPECT_EQ(ui.Read("Score:"), "10");
  EXPECT_EQ(calls, 0);
  sheet.SetCellValue("version", 0, true);
  EXPECT_EQ(ui.Read("Score:"), "50");
  EXPECT_EQ(calls, 1);
}

TEST_F(SheetTest, AnOptionalViewShowsOnlyWhileItsCellHasItsValue) {
  const auto subview = canvas->FindChildRecursive("list");
  ASSERT_NE(subview, nullptr) << "found while it is hidden";
  EXPECT_FALSE(subview->IsShown());
  sheet.SetCellValue("mode", "expert", true);
  EXPECT_TRUE(subview->IsShown());
  EXPECT_TRUE(ui.Sees("expert")) << "a text bound to the cell";
  sheet.SetCellValue("mode", "other", true);
  EXPECT_FALSE(subview->IsShown());
}

TEST_F(SheetTest, ButtonsReachTheHandlerWithTheirActionAndTheValueOfTheirCell) {
  sheet.SetCellValue("score", 100, true);
  ui.Press("delete.png");
  ui.Press("OK");
  ui.Press("Cancel");
  EXPECT_THAT(handler.heard, ElementsAre("value true", "button delete", "ok", "button cancel"));
}

TEST_F(SheetTest, WatchersAreSilentWhileTheHandlerBlocksThem) {
  sheet.GetDataModel().MonitorCellValue("score", [this](const TzVariant&) { handler.Note("watcher"); });
  handler.isBlocked = true;
  ui.Type("Score:", "5");
  EXPECT_THAT(handler.heard, ElementsAre("change score"));
}

TEST_F(SheetTest, AnImageIsLoadedByItsFileNameTogetherWithItsTwin) {
  const auto node = canvas->FindChildRecursive("deleteButton");
  const auto image = dynamic_cast<kelpui::controls::UI_PictureButton&>(*node).GetImage();
  EXPECT_EQ(image.bytes, "small");
  EXPECT_EQ(image.doubleSizeBytes, "large");
}

TEST_F(SheetTest, ANewSizeReachesTheSubViewsThenTheHandler) {
  const auto subview = canvas->FindChildRecursive("list");
  canvas->SetSize({0, 0, 800, 500});
  EXPECT_EQ(subview->GetWidth(), 800.0) << "fills the width";
  EXPECT_EQ(subview->GetHeight(), 340.0) << "as the sheet says";
  EXPECT_THAT(handler.heard, ElementsAre("size 800"));
}

TEST_F(SheetTest, ClearingTheCanvassSelectionReachesEveryTree) {
  using kelpui::controls::UI_MultiColumnTree;
  const boost::intrusive_ptr<UI_MultiColumnTree> tree(new UI_MultiColumnTree(1, 20.0));
  canvas->FindChildRecursive("list")->AddChild(tree);
  int calls = 0;
  tree->SetRowsSelectionChangedCallback([&] { ++calls; });
  canvas->ClearSelection();
  EXPECT_EQ(calls, 1);
}

TEST_F(SheetTest, ReadingWhatTheSheetLacksIsAFault) {
  EXPECT_THROW(static_cast<void>(sheet.GetString("Title")), std::logic_error);
  EXPECT_THROW(static_cast<void>(sheet.GetString("score")), std::logic_error);
  EXPECT_THROW(TzSheet(nullptr, sheets.Info(), nullptr, 1, 3), std::logic_error);
}

TEST_F(SheetTest, AControlThatOutlivesItsSheetReachesNobody) {
  const TzCanvasPtr held = canvas;
  sheet.CloseCanvas();
  ui.Type("Score:", "5");
  ui.Press("OK");
  EXPECT_EQ(sheet.GetInteger("score"), 10);
  EXPECT_THAT(handler.heard, IsEmpty());
}

namespace {

/// Refuses OK while the title is empty, and keeps the order of its operations.
class TitleDialog : public TzSheetDialog {
 public:
  TitleDialog(const SheetPair& sheets, std::vector<std::string>& record)
      : TzSheetDialog({300, 300, 1000, 1000}, sheets.Info(), nullptr, 1, 2, "kTitle", nullptr, kPlain, true),
        order(record) {}

  bool PreActivate() override { return Note("pre-activate"); }
  bool PostActivate() override {
    GetSheet()->SetCellValue("useTitle", true, true);
    return Note("post-activate");
  }
  bool PreDeactivate() override { return Note("pre-deactivate"); }
  bool OnOkButton(const TzVariant& value, TzSheet* pressed) override {
    Note("ok");
    return pressed->GetString("title").IsEmpty() || TzSheetDialog::OnOkButton(value, pressed);
  }

 private:
  bool Note(const char* what) {
    order.emplace_back(what);
    return true;
  }
  std::vector<std::string>& order;
};

}  // namespace

TEST(TzSheetDialog, StaysOpenAfterARefusedOkAndClosesAfterOneThatReachesTheBase) {
  TestSession session;
  session.dictionary.RegisterDefault("kTitle", "Details");
  const SheetPair sheets(kCells, kViews);
  std::vector<std::string> order;
  TzHeadlessDriver ui(session.ui);
  ui.OnNextDialog([&](TzHeadlessDriver& dialog) {
    EXPECT_TRUE(dialog.IsEnabled("Title:")) << "filled before it shows";
    dialog.Press("OK");
    order.emplace_back("still open");
    dialog.Type("Title:", "Fire");
    dialog.Press("OK");
  });
  EXPECT_EQ(TitleDialog(sheets, order).DoModal(), kTzDialogOk);
  EXPECT_THAT(order,
              ElementsAre("pre-activate", "post-activate", "ok", "still open", "ok", "pre-deactivate"));
  EXPECT_THAT(ui.GetTranscript(), testing::StartsWith("dialog \"Details\"\n"));
}

TEST(TzSheetDialog, TheUserInterfaceCanReadADialogThatClosed) {
  class Reader : public TzHeadlessUI {
   public:
    void DialogClosed(TzCanvas& dialog, int result) override {
      const TzVariant title = dialog.GetDataModel()->GetCellValue("title");
      read.push_back(title.GetString().GetUTF8String() + " " + std::to_string(result));
    }
    std::vector<std::string> read;
  };
  TestSession session;
  Reader reader;
  TzSession::Install({.dictionary = &session.dictionary, .userInterface = &reader});
  const SheetPair sheets(kCells, kViews);
  std::vector<std::string> order;
  TzHeadlessDriver ui(reader);
  ui.OnNextDialog([&](TzHeadlessDriver& dialog) {
    dialog.Type("Title:", "Fire");
    dialog.Press("Cancel");
  });
  static_cast<void>(TitleDialog(sheets, order).DoModal());
  EXPECT_THAT(reader.read, ElementsAre("Fire " + std::to_string(kTzDialogCancel)));
}

TEST(TzSheetDialog, CancelsByItsButtonAndWithoutAUserInterface) {
  TestSession session;
  const SheetPair sheets(kCells, kViews);
  std::vector<std::string> order;
  TzHeadlessDriver ui(session.ui);
  ui.OnNextDialog([](TzHeadlessDriver& dialog) { dialog.Press("Cancel"); });
  EXPECT_EQ(TitleDialog(sheets, order).DoModal(), kTzDialogCancel);
  TzSession::Install({});
  order.clear();
  EXPECT_EQ(TitleDialog(sheets, order).DoModal(), kTzDialogCancel);
  EXPECT_THAT(order, IsEmpty());
}

TEST(TzPaletteUtils, MakesABarOutOfItsTwoSheetsAndNothingOutOfNone) {
  TestSession session;
  const SheetPair sheets(kCells, kViews);
  std::vector<std::string> actions;
  const auto model = TzPaletteUtils::CreateAdamSheet(&sheets.Properties());
  const TzCanvasPtr bar = TzPaletteUtils::CreateCanvas(
      &sheets.Layout(), *model,
      [&](const TzString& action, const TzVariant&) { actions.push_back(action.GetUTF8String()); }, nullptr);
  TzHeadlessDriver(session.ui).Press("OK");
  EXPECT_THAT(actions, ElementsAre("ok"));
  EXPECT_EQ(TzPaletteUtils::CreateAdamSheet(nullptr), nullptr);
  EXPECT_EQ(TzPaletteUtils::CreateCanvas(nullptr, *model, nullptr, nullptr), nullptr);
}
