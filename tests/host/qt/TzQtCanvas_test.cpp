// SPDX-License-Identifier: Apache-2.0
#include "host/qt/TzQtCanvas.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QToolButton>
#include <QTreeView>
#include <set>

#include "QtSession.h"
#include "host/kelpui/UI_MultiColumnTree.h"
#include "host/sheets/TzSheet.h"
#include "host/sheets/TzSheetDialog.h"
#include "host/text/TzTranslation.h"
#include "panel/PlexoStrings.h"
#include "resources/PlexoResources.h"
#include "support/SheetPair.h"

using kelpui::controls::UI_MultiColumnTree;

namespace {

class CanvasTest : public testing::Test {
 protected:
  CanvasTest() {
    RegisterDefaultStrings();
    session.windows.ShowWindow(session.mainWindow);
  }

  /// The component's sheets of these numbers in the main window.
  QWidget& Show(TzSheet& sheet, int width, int height) {
    TzCanvas* canvas = sheet.CreateDlgCanvasOnView(session.windows.GetDocumentDock(session.mainWindow));
    canvas->SetSize({0, 0, TzReal(width), TzReal(height)});
    return *static_cast<TzQtCanvas&>(*canvas).GetWidget();
  }

  /// On the whole surface, whatever it lies in.
  static QRect Place(const QWidget& surface, const QWidget& widget) {
    return {widget.mapTo(&surface, QPoint()), widget.size()};
  }

  QtSession session;
};

TzSheetResourceLoader NoImages() {
  return [](const TzString& /*name*/) { return std::string_view(); };
}

/// What can be seen of controls and texts: nothing lies outside of the sheet, on another, or is cut off.
void ExpectTidy(const QWidget& surface, const std::string& what) {
  std::vector<QWidget*> seen;
  for (QWidget* each : surface.findChildren<QWidget*>()) {
    const bool isSight =
        qobject_cast<QAbstractButton*>(each) != nullptr || qobject_cast<QLineEdit*>(each) != nullptr ||
        qobject_cast<QComboBox*>(each) != nullptr || qobject_cast<QLabel*>(each) != nullptr ||
        qobject_cast<QAbstractSpinBox*>(each) != nullptr;
    const bool isPartOfOther = qobject_cast<QAbstractSpinBox*>(each->parentWidget()) != nullptr;
    if (isSight && !isPartOfOther && each->isVisibleTo(&surface)) seen.push_back(each);
  }
  EXPECT_FALSE(seen.empty()) << what;
  for (const QWidget* one : seen) {
    const QRect place(one->mapTo(&surface, QPoint()), one->size());
    const std::string name = what + ": " + one->property("text").toString().toStdString();
    EXPECT_TRUE(surface.rect().contains(place)) << name;
    const auto* label = qobject_cast<const QLabel*>(one);
    EXPECT_GE(place.width(), label != nullptr ? label->sizeHint().width() : 0) << name;
    for (const QWidget* other : seen) {
      const QRect taken(other->mapTo(&surface, QPoint()), other->size());
      EXPECT_FALSE(one < other && place.intersects(taken))
          << name << " / " << other->property("text").toString().toStdString();
    }
  }
}

}  // namespace

TEST_F(CanvasTest, EverySheetIsTidyInItsLeastSizeAndInALargeOne) {
  const struct {
    int properties;
    int layout;
    std::vector<const char*> states;
  } cases[] = {
      {111, 112, {nullptr}},
      {113, 114, {"showOnlySCORM2004", "enableCourseDuration"}},
      {115, 116, {nullptr}},
      {117, 118, {"enableSCOMasteryScore"}},
      {121,
       122,
       {"default_view", "course_type_linear", "course_type_content_post", "course_type_pre_content_post"}},
  };
  for (const Qt::LayoutDirection direction : {Qt::LeftToRight, Qt::RightToLeft}) {
    QApplication::setLayoutDirection(direction);
    for (const auto& [properties, layout, states] : cases) {
      for (const char* state : states) {
        TzSheet sheet(nullptr, GetPlexoResources(), NoImages(), properties, layout);
        if (properties == 121) sheet.SetCellValue("default_view", false, false);
        if (state != nullptr) sheet.SetCellValue(state, true, true);
        QWidget& surface = Show(sheet, 0, 0);
        const QSize least = surface.minimumSizeHint();
        EXPECT_TRUE(QRect(0, 0, 580, 430).contains(QRect(QPoint(), least))) << layout;
        for (const QSize& size : {least, surface.sizeHint(), QSize(1280, 800)}) {
          sheet.GetCanvas()->SetSize({0, 0, TzReal(size.width()), TzReal(size.height())});
          ExpectTidy(surface, std::to_string(layout) + (state != nullptr ? state : ""));
        }
      }
    }
  }
  QApplication::setLayoutDirection(Qt::LeftToRight);
}

TEST_F(CanvasTest, WhatAPersonEntersReachesTheCellsAndWhatTheProgramSetsIsShown) {
  TzSheet sheet(nullptr, GetPlexoResources(), NoImages(), 113, 114);
  QWidget& surface = Show(sheet, 500, 420);

  QTest::keyClicks(FindShown<QLineEdit>(surface, "Identifier:"), "My Course 1");
  EXPECT_EQ(sheet.GetString("courseIdentifier"), "My Course 1");
  auto* description = FindShown<QPlainTextEdit>(surface, "Description:");
  QTest::keyClicks(description, "two");
  QTest::keyClick(description, Qt::Key_Return);
  QTest::keyClicks(description, "lines");
  EXPECT_EQ(sheet.GetString("courseDescription"), "two\nlines");

  auto* hours = FindShown<QDoubleSpinBox>(surface, "Duration: hours");
  EXPECT_FALSE(hours->isEnabled());
  QTest::mouseClick(FindShown<QCheckBox>(surface, "Duration:"), Qt::LeftButton, {}, QPoint(8, 8));
  EXPECT_TRUE(sheet.GetBool("enableCourseDuration"));
  ASSERT_TRUE(hours->isEnabled());
  hours->selectAll();
  QTest::keyClicks(hours, "120");
  EXPECT_EQ(sheet.GetInteger("courseDurationHours"), 12) << "the field takes no more than 99";
  QTest::keyClick(hours, Qt::Key_Up);
  EXPECT_EQ(sheet.GetInteger("courseDurationHours"), 13);

  auto* versions = FindShown<QComboBox>(surface, "Version:");
  QTest::keyClick(versions, Qt::Key_Up);
  EXPECT_EQ(sheet.GetInteger("SCORMVersion"), 0);

  sheet.SetCellValue("courseIdentifier", "set", false);
  sheet.SetCellValue("courseDescription", "anew", false);
  sheet.SetCellValue("courseDurationHours", 7, false);
  sheet.SetCellValue("enableCourseDuration", false, false);
  sheet.SetCellValue("SCORMVersion", 1, true);
  EXPECT_EQ(FindShown<QLineEdit>(surface, "Identifier:")->text(), "set");
  EXPECT_EQ(description->toPlainText(), "anew");
  EXPECT_EQ(hours->value(), 0);
  EXPECT_EQ(versions->currentText(), "2004");
}

TEST_F(CanvasTest, FieldsOfAGroupStandInOneColumn) {
  TzSheet sheet(nullptr, GetPlexoResources(), NoImages(), 117, 118);
  const QWidget& surface = Show(sheet, 600, 300);
  std::set<int> starts;
  for (const char* name : {"Title:", "Launch Data:"})
    starts.insert(Place(surface, *FindShown<QLineEdit>(surface, name)).left());
  starts.insert(Place(surface, *FindShown<QComboBox>(surface, "Time Limit Action:")).left());
  starts.insert(Place(surface, *FindShown<QDoubleSpinBox>(surface, "Mastery Score:")).left());
  starts.insert(Place(surface, *FindShown<QDoubleSpinBox>(surface, "Time Allowed: hours")).left());
  EXPECT_EQ(starts.size(), 1);
}

TEST_F(CanvasTest, NodesHaveTheirFramesBeforeAnythingIsDrawn) {
  TzSheet sheet(nullptr, GetPlexoResources(), NoImages(), 121, 122);
  TzCanvas* canvas = sheet.CreateDlgCanvasOnView(nullptr);
  canvas->SetSize({0, 0, 650, 460});
  sheet.SetCellValue("default_view", false, false);
  sheet.SetCellValue("course_type_linear", true, true);
  const auto place = canvas->FindChildRecursive("linear_course_view");
  EXPECT_GT(place->GetWidth(), 600);
  EXPECT_GT(place->GetHeight(), 340);

  int sizes = 0;
  place->InstallSizeChangedNotification(this, [&](kelpui::controls::UI_Node&) { ++sizes; });
  canvas->SetSize({0, 0, 800, 460});
  EXPECT_EQ(sizes, 1);
  // Boxes keep their place where nothing is to be seen.
  EXPECT_EQ(canvas->FindChildRecursive("content_post_course_view")->GetWidth(), 0);
}

TEST_F(CanvasTest, OptionalViewsAndMnemonicsFollowTheScreen) {
  TzSheet sheet(nullptr, GetPlexoResources(), NoImages(), 121, 122);
  const QWidget& surface = Show(sheet, 640, 440);
  EXPECT_NE(FindShown<QPushButton>(surface, "Multiple SCOs"), nullptr);
  EXPECT_EQ(FindShown<QPushButton>(surface, "+ Module"), nullptr);
  sheet.SetCellValue("default_view", false, false);
  sheet.SetCellValue("course_type_content_post", true, true);
  EXPECT_EQ(FindShown<QPushButton>(surface, "Multiple SCOs"), nullptr);
  EXPECT_EQ(FindShown<QPushButton>(surface, "+ Module")->text(), "+ &Module");
  EXPECT_EQ(FindShown<QCheckBox>(surface, "Force Module Sequence")->text(), "&Force Module Sequence");
}

TEST_F(CanvasTest, WhatHasNoCaptionIsNamedByTheProgramForThoseWhoDontSeeIt) {
  session.ui.SetTooltipKeys({{"move_up", "kPlexoUIMoveSelectionUpToolTip"},
                             {"course_title", "kTzPlexoEditCrsTitle"},
                             {"linear_course_view", "kPlexoUITemplate1ShortDesc"}});
  TzSheet sheet(nullptr, GetPlexoResources(), NoImages(), 121, 122);
  const QWidget& surface = Show(sheet, 640, 440);
  sheet.SetCellValue("default_view", false, false);
  sheet.SetCellValue("course_type_linear", true, true);
  sheet.GetCanvas()->FindChildRecursive("linear_course_view")->AddChild(new UI_MultiColumnTree(1, 20.0));
  const auto* up = FindShown<QToolButton>(surface, "Move Selection Up");
  ASSERT_NE(up, nullptr);
  EXPECT_EQ(up->toolTip(), "Move Selection Up");
  EXPECT_NE(FindShown<QLineEdit>(surface, "Edit Course Title"), nullptr);
  QApplication::processEvents();
  const auto* list = FindShown<QTreeView>(surface, "Multiple SCOs");
  ASSERT_NE(list, nullptr);
  EXPECT_EQ(list->toolTip(), "");
}

TEST_F(CanvasTest, TextsOfSheetsAreShownInTheSessionsLanguageAndTheAuthorsAsTheyAre) {
  TzTranslation german;
  german.texts["+ File"] = {"+ Datei", 1};
  german.words["kPlexoUIContentText"] = {"Inhalt", 2};
  session.words.SetTranslation(german);
  TzSheet sheet(nullptr, GetPlexoResources(), NoImages(), 121, 122);
  const QWidget& surface = Show(sheet, 640, 440);
  sheet.SetCellValue("default_view", false, false);
  sheet.SetCellValue("course_title", "Content", false);
  sheet.SetCellValue("course_type_linear", true, true);
  EXPECT_NE(FindShown<QPushButton>(surface, "+ Datei"), nullptr);
  EXPECT_EQ(surface.findChild<QLineEdit*>()->text(), "Content");
}

TEST_F(CanvasTest, ACaptionThatIsTooLongForAHighButtonTakesMoreLines) {
  TzTranslation wordy;
  wordy.texts["Pre-test or Post-test rollup"] = {"A template for whoever tests before or afterwards", 1};
  session.words.SetTranslation(wordy);
  TzSheet sheet(nullptr, GetPlexoResources(), NoImages(), 121, 122);
  const QWidget& surface = Show(sheet, 580, 400);
  const auto* wide = FindShown<QPushButton>(surface, "A template for whoever tests before or afterwards");
  ASSERT_NE(wide, nullptr);
  EXPECT_NEAR(wide->width(), FindShown<QPushButton>(surface, "Multiple SCOs")->width(), 2);
  EXPECT_LE(wide->fontMetrics().size(Qt::TextShowMnemonic, wide->text()).width(), wide->width());
  EXPECT_EQ(wide->text().remove('&').replace('\n', ' '), wide->accessibleName());
}

namespace {

class AskingDialog : public TzSheetDialog {
 public:
  using TzSheetDialog::TzSheetDialog;
  bool OnButton(const TzString& action, const TzVariant& value, TzSheet* pressed) override {
    actions.push_back(action.GetUTF8String());
    return TzSheetDialog::OnButton(action, value, pressed);
  }
  std::vector<std::string> actions;
};

}  // namespace

TEST_F(CanvasTest, ADialogEndsByItsButtonsWhateverIsUsedToReachThem) {
  const struct {
    const char* way;
    std::function<void(QWidget& window)> person;
    int result;
  } cases[] = {
      {"ok", [](QWidget& window) { QTest::mouseClick(FindShown<QPushButton>(window, "OK"), Qt::LeftButton); },
       kTzDialogOk},
      {"ok",
       [](QWidget& window) { QTest::keyClick(FindShown<QLineEdit>(window, "Identifier:"), Qt::Key_Return); },
       kTzDialogOk},
      {"ok", [](QWidget& window) { QTest::keyClick(&window, Qt::Key_O, Qt::AltModifier); }, kTzDialogOk},
      {"cancel", [](QWidget& window) { QTest::keyClick(&window, Qt::Key_Escape); }, kTzDialogCancel},
      {"cancel", [](QWidget& window) { window.close(); }, kTzDialogCancel},
  };
  for (const auto& [action, person, result] : cases) {
    AskingDialog dialog({0, 0, 700, 700}, GetPlexoResources(), NoImages(), 113, 114,
                        "kPlexoManifestDialogTitle", session.mainWindow, TzSheetDialog::kPlain, true);
    OnNextWindow([&](QWidget& window) {
      EXPECT_EQ(window.windowTitle(), "Course Manifest Details");
      EXPECT_LT(window.width(), 600) << "a dialog has the size of its content";
      EXPECT_TRUE(session.windows.GetMainWidget()->geometry().contains(window.geometry().center()));
      ASSERT_TRUE(QTest::qWaitForWindowActive(&window) && window.focusWidget() != nullptr);
      EXPECT_EQ(window.focusWidget()->accessibleName(), "Version:") << "the first field";
      person(window);
    });
    EXPECT_EQ(dialog.DoModal(), result);
    EXPECT_EQ(dialog.actions, std::vector<std::string>{action});
  }
}

TEST_F(CanvasTest, ADialogWithoutACancelButtonCanBeClosed) {
  const SheetPair pair(
      "sheet: s\ninterface:\n  - {cell: a, default: \"\"}\n",
      "layout: l\ntree:\n  view: {name: \"v\"}\n  children:\n    - edit_text: {bind: '@a'}\n");
  TzSheetDialog dialog({}, pair.Info(), NoImages(), 1, 2, "Title", nullptr, TzSheetDialog::kPlain, false);
  OnNextWindow([](QWidget& window) { window.close(); });
  EXPECT_EQ(dialog.DoModal(), kTzDialogCancel);
}

TEST_F(CanvasTest, ADialogLargerThanTheScreenScrollsToWhatHasTheFocus) {
  std::string layout = "layout: l\ntree:\n  view: {name: \"v\"}\n  children:\n";
  for (int field = 0; field < 60; ++field) layout += "    - edit_text: {name: \"Field\", bind: '@a'}\n";
  layout += "    - button: {name: \"OK\", action: '@ok', button_theme: '@tzdialog'}\n";
  const SheetPair pair("sheet: s\ninterface:\n  - {cell: a, default: \"\"}\n", layout);
  AskingDialog dialog({}, pair.Info(), NoImages(), 1, 2, "Title", nullptr, TzSheetDialog::kPlain, false);
  OnNextWindow([](QWidget& window) {
    EXPECT_TRUE(window.screen()->availableGeometry().contains(window.geometry()));
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    auto* ok = FindShown<QPushButton>(window, "OK");
    EXPECT_TRUE(ok->visibleRegion().isEmpty());
    QTest::keyClick(window.focusWidget(), Qt::Key_Tab, Qt::ShiftModifier);
    EXPECT_TRUE(ok->hasFocus());
    EXPECT_EQ(ok->visibleRegion().boundingRect(), ok->rect());
    QTest::mouseClick(ok, Qt::LeftButton);
  });
  EXPECT_EQ(dialog.DoModal(), kTzDialogOk);
}

TEST_F(CanvasTest, ACanvasOutlivesItsWindowAndItsUserInterface) {
  TzSheet sheet(nullptr, GetPlexoResources(), NoImages(), 121, 122);
  Show(sheet, 600, 400);
  session.windows.CreateTopLevelWindow({"TEST", "another", 0, 0, 0, 100, 100});
  sheet.SetCellValue("default_view", false, true);
  sheet.GetCanvas()->SetSize({0, 0, 700, 500});
  EXPECT_EQ(static_cast<TzQtCanvas*>(sheet.GetCanvas())->GetWidget(), nullptr);

  TzCanvasPtr orphan;
  {
    TzQtUserInterface other(session.windows);
    orphan = other.CreateCanvas({.parent = session.windows.GetDocumentDock(session.mainWindow)});
  }
  orphan->SetSize({0, 0, 10, 10});
}
