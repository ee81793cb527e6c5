// SPDX-License-Identifier: Apache-2.0
#include "host/qt/TzQtTree.h"

#include <QLineEdit>
#include <QScrollBar>
#include <QToolButton>
#include <QTreeView>

#include "QtSession.h"
#include "host/kelpui/UI_PictureButton.h"
#include "host/kelpui/UI_SubView.h"
#include "host/kelpui/UI_TextEdit.h"

using namespace kelpui::controls;  // NOLINT(google-build-using-namespace)

namespace {

class NamedRow : public UI_MultiColumnTreeRow {
 public:
  explicit NamedRow(TzString text) : name(std::move(text)) {}
  TzString name;
};

/// A tree whose rows have a field and a button, made when they come into view.
class Fixture : public testing::Test {
 protected:
  Fixture()
      : canvas(session.ui.CreateCanvas({.parent = session.windows.GetDocumentDock(session.mainWindow)})) {
    tree->Init();
    tree->SetSupportMultipleSelections(true);
    tree->SetDrawCellOfRowCallback(
        [](UI_MultiColumnTreeRow& row, std::size_t, const TzRect& cell, UI_DrawContext& drawn) {
          UI_MultiColumnTree::DrawCellString(drawn, static_cast<NamedRow&>(row).name, cell, 0);
        });
    tree->SetRowVisibilityChangedCallback(
        [this](UI_MultiColumnTreeRow& row, bool /*visible*/) { MakeControls(row); });
    const UI_NodePtr place(new UI_SubView);
    canvas->AddChild(place);
    canvas->SetSize({0, 0, 600, 400});
    session.windows.ShowWindow(session.mainWindow);
    place->SetFrame({0, 0, 600, 400});
    place->AddChild(tree);
    tree->SetFrame({0, 0, 600, 400});
  }

  void MakeControls(UI_MultiColumnTreeRow& row) {
    if (!hasControls || row.HasCellViews()) return;
    const auto cell = row.GetCellView(0);
    auto* edit = new UI_TextEdit;
    edit->SetText(static_cast<NamedRow&>(row).name);
    cell->AddChild(edit);
    edit->SetFrame({0, 0, 100, 20});
    auto* button = new UI_PictureButton([] { return UI_ImageData{}; });
    button->SetTooltip("Add to " + static_cast<NamedRow&>(row).name);
    cell->AddChild(button);
    button->SetFrame({200, 0, 216, 16});
  }

  void Append(int count) {
    for (int index = 0; index < count; ++index) {
      tree->AppendRow(new NamedRow("row " + TzString::FromNumber(tree->CountRows())));
    }
    QApplication::processEvents();
  }

  [[nodiscard]] QTreeView& View() const { return *session.windows.GetMainWidget()->findChild<QTreeView*>(); }
  [[nodiscard]] std::vector<std::size_t> Selected() const {
    std::vector<std::size_t> rows;
    for (const UI_RowPtr& row : tree->GetSelectedRowsSortByRowIndex())
      rows.push_back(tree->GetRowIndex(*row));
    return rows;
  }
  void Click(int row, Qt::KeyboardModifiers keys = {}) const {
    const QRect area = View().visualRect(View().model()->index(row, 0));
    QTest::mouseClick(View().viewport(), Qt::LeftButton, keys, QPoint(area.left() + 150, area.center().y()));
  }

  QtSession session;
  bool hasControls = true;
  TzCanvasPtr canvas;
  boost::intrusive_ptr<UI_MultiColumnTree> tree{new UI_MultiColumnTree(1, 20.0)};
};

}  // namespace

using TzQtTreeTest = Fixture;

TEST_F(TzQtTreeTest, SelectionsGoBothWays) {
  hasControls = false;
  Append(8);
  tree->GetRow(4)->SetSelectable(false);
  using Rows = std::vector<std::size_t>;

  Click(2);
  EXPECT_EQ(Selected(), Rows({2}));
  Click(5, Qt::ShiftModifier);
  EXPECT_EQ(Selected(), Rows({2, 3, 5})) << "a row that isn't selectable is passed over";
  Click(3, Qt::ControlModifier);
  EXPECT_EQ(Selected(), Rows({2, 5}));

  tree->SelectRows({tree->GetRow(0), tree->GetRow(1), tree->GetRow(7)});
  QApplication::processEvents();
  EXPECT_EQ(View().selectionModel()->selectedRows().size(), 3);
  tree->RemoveRow(tree->GetRow(1));
  tree->ClearSelection();
  QApplication::processEvents();
  EXPECT_TRUE(View().selectionModel()->selectedRows().empty());
}

TEST_F(TzQtTreeTest, ARunOfRowsIsOneRangeWhateverLiesBetweenThem) {
  hasControls = false;
  Append(50);
  for (std::int64_t row = 0; row < 50; ++row) {
    const UI_RowPtr below(new NamedRow("below"));
    below->SetSelectable(false);
    tree->AppendRow(below, tree->GetRow(row));
  }
  QApplication::processEvents();
  const auto countRanges = [this] { return View().selectionModel()->selection().size(); };
  QTest::keyClick(&View(), Qt::Key_A, Qt::ControlModifier);
  EXPECT_EQ(Selected().size(), 50);
  EXPECT_EQ(countRanges(), 1) << "Qt takes the square of the ranges";

  Click(1);
  QTest::keyClick(&View(), Qt::Key_End, Qt::ShiftModifier);
  EXPECT_EQ(Selected().size(), 49);
  EXPECT_EQ(countRanges(), 1);
}

TEST_F(TzQtTreeTest, OnlyRowsInViewHaveWidgets) {
  Append(10'000);
  const auto countFields = [this] { return View().findChildren<QLineEdit*>().size(); };
  const qsizetype fitting = View().viewport()->height() / View().sizeHintForRow(0) + 1;
  EXPECT_GE(countFields(), fitting - 1);
  EXPECT_LE(countFields(), fitting + 1);

  View().verticalScrollBar()->setValue(9'000);
  QApplication::processEvents();
  QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_EQ(tree->GetScrollPosition(), 9'000);
  EXPECT_LE(countFields(), fitting + 1);
  const QLineEdit* first = FindShown<QLineEdit>(View(), "row 9000");
  ASSERT_NE(first, nullptr);
  EXPECT_EQ(first->mapTo(View().viewport(), QPoint()).y(),
            View().visualRect(View().model()->index(9'000, 0)).top());

  tree->ScrollTo(42);
  QApplication::processEvents();
  EXPECT_EQ(View().verticalScrollBar()->value(), 42);
}

TEST_F(TzQtTreeTest, ControlsInCellsActOnTheirRow) {
  Append(3);
  auto& edit = static_cast<UI_TextEdit&>(*tree->GetRow(1)->GetCellView(0)->GetChildren()[0]);
  auto& button = static_cast<UI_PictureButton&>(*tree->GetRow(1)->GetCellView(0)->GetChildren()[1]);
  // Pressing it takes its own row away, and with it the button that is pressed.
  button.InstallChangeNotification([this] { tree->RemoveRow(tree->GetRow(1)); });

  auto* field = FindShown<QLineEdit>(View(), "row 1");
  ASSERT_NE(field, nullptr);
  QTest::mouseClick(field, Qt::LeftButton);
  EXPECT_TRUE(tree->GetRow(1)->IsSelected()) << "whoever works in a row has it selected";
  QTest::keyClicks(field, "!");
  EXPECT_EQ(edit.GetText(), "row 1!");
  edit.SetText("renamed");
  EXPECT_EQ(field->text(), "renamed");

  auto* shown = FindShown<QToolButton>(View(), "Add to row 1");
  ASSERT_NE(shown, nullptr);
  QTest::mouseClick(shown, Qt::LeftButton);
  QApplication::processEvents();
  EXPECT_EQ(tree->CountRows(), 2);
  EXPECT_EQ(FindShown<QToolButton>(View(), "Add to row 1"), nullptr);
}

TEST_F(TzQtTreeTest, ExpansionGoesBothWays) {
  Append(2);
  tree->AppendRow(new NamedRow("below"), tree->GetRow(0));
  QApplication::processEvents();
  const QModelIndex top = View().model()->index(0, 0);
  EXPECT_TRUE(View().isExpanded(top));

  View().collapse(top);
  EXPECT_FALSE(tree->GetRow(0)->IsExpanded());
  tree->GetRow(0)->SetExpanded(true);
  QApplication::processEvents();
  EXPECT_TRUE(View().isExpanded(top));
  // The cell's node knows how much of the line is left beside the indentation.
  const auto cell = tree->GetRow(0)->GetChildRow(0)->GetCellView(0);
  EXPECT_EQ(cell->GetWidth(), View().visualRect(View().model()->index(0, 0, top)).width());
  EXPECT_LT(cell->GetWidth(), tree->GetRow(0)->GetCellView(0)->GetWidth());
}
