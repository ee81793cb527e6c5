// SPDX-License-Identifier: Apache-2.0
#include "host/kelpui/UI_MultiColumnTree.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

using namespace kelpui::controls;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class NamedRow : public UI_MultiColumnTreeRow {
 public:
  explicit NamedRow(std::string rowName) : name(std::move(rowName)) {}
  std::string name;
};

std::string NameOf(const UI_RowPtr& row) {
  return row != nullptr ? static_cast<const NamedRow&>(*row).name : "none";
}

/// A tree that keeps what its callbacks say, with room for four rows.
class TreeTest : public testing::Test {
 protected:
  TreeTest() : tree(new UI_MultiColumnTree(1, 20.0)) {
    tree->Init();
    tree->SetSupportMultipleSelections(true);
    tree->SetFrame({0, 0, 300, 80});
    tree->SetColumnWidth(0, 300);
    tree->SetRowsSelectionChangedCallback([this] { ++selectionChanges; });
    tree->SetRowVisibilityChangedCallback([this](UI_MultiColumnTreeRow& row, bool visible) {
      sights.push_back((visible ? "+" : "-") + NameOf(&row));
    });
  }

  UI_RowPtr Add(const std::string& name, const UI_RowPtr& parent = nullptr) {
    UI_RowPtr row(new NamedRow(name));
    tree->AppendRow(row, parent);
    return row;
  }

  [[nodiscard]] std::vector<std::string> Names() const {
    std::vector<std::string> names;
    for (std::size_t index = 0; index < tree->CountRows(); ++index) {
      names.push_back(NameOf(tree->GetRow(static_cast<std::int64_t>(index))));
    }
    return names;
  }
  [[nodiscard]] std::vector<std::string> SelectedNames() const {
    std::vector<std::string> names;
    for (const UI_RowPtr& row : tree->GetSelectedRowsSortByRowIndex()) names.push_back(NameOf(row));
    return names;
  }

  boost::intrusive_ptr<UI_MultiColumnTree> tree;
  int selectionChanges = 0;
  std::vector<std::string> sights;
};

}  // namespace

TEST_F(TreeTest, KeepsRowsWhereTheyArePut) {
  const UI_RowPtr b = Add("b");
  Add("d");
  tree->InsertRow(new NamedRow("a"), nullptr, nullptr);
  tree->InsertRow(new NamedRow("c"), nullptr, b);
  EXPECT_THAT(Names(), ElementsAre("a", "b", "c", "d"));
  EXPECT_EQ(tree->GetRowIndex(*b), 1U);
  EXPECT_EQ(tree->GetRow(-1), nullptr);
  EXPECT_EQ(tree->GetRow(4), nullptr);
}

TEST_F(TreeTest, ARowThatIsMovedKeepsTheRowsBelowIt) {
  const UI_RowPtr first = Add("first");
  const UI_RowPtr second = Add("second");
  Add("content", first);
  Add("test", first);
  tree->RemoveRow(first);
  EXPECT_EQ(tree->CountShownRows(), 1U);
  tree->InsertRow(first, nullptr, second);
  EXPECT_THAT(Names(), ElementsAre("second", "first"));
  EXPECT_EQ(NameOf(first->GetChildRow(1)), "test");
  EXPECT_EQ(tree->GetRowIndex(*first->GetChildRow(1)), 1U);
  EXPECT_EQ(tree->GetShownIndex(*first->GetChildRow(1)), 3U);
  first->SetExpanded(false);
  EXPECT_EQ(tree->CountShownRows(), 2U);
}

TEST_F(TreeTest, RefusesRowsThatAreNotWhereTheyHaveToBe) {
  const UI_RowPtr inside = Add("inside");
  const UI_RowPtr child = Add("child", inside);
  const UI_RowPtr stray(new NamedRow("stray"));
  EXPECT_THROW(tree->AppendRow(inside), std::logic_error);
  EXPECT_THROW(tree->AppendRow(stray, UI_RowPtr(new NamedRow("other"))), std::logic_error);
  EXPECT_THROW(tree->InsertRow(stray, nullptr, child), std::logic_error);
  EXPECT_THROW(tree->RemoveRow(stray), std::logic_error);
  EXPECT_THROW(tree->SelectRows({stray}), std::logic_error);
  EXPECT_THROW(static_cast<void>(tree->GetRowIndex(*stray)), std::logic_error);
  EXPECT_THAT(Names(), ElementsAre("inside"));
}

TEST_F(TreeTest, ASelectionCallsBackOnceForEachChangeOfIt) {
  const UI_RowPtr a = Add("a");
  const UI_RowPtr b = Add("b");
  const UI_RowPtr header = Add("header", a);
  header->SetSelectable(false);
  tree->SelectRows({b, header, a});
  EXPECT_THAT(SelectedNames(), ElementsAre("a", "b"));
  EXPECT_EQ(selectionChanges, 1);
  tree->SelectRows({a, b});
  EXPECT_EQ(selectionChanges, 1) << "the same rows in another order";
  tree->RemoveRows(tree->GetSelectedRowsSortByRowIndex());
  EXPECT_EQ(selectionChanges, 2) << "both rows went with one operation";
  EXPECT_FALSE(a->IsSelected());
  tree->RemoveRows({});
  Add("c");
  EXPECT_EQ(selectionChanges, 2);
  tree->ClearSelection();
  EXPECT_EQ(selectionChanges, 3) << "an owner is told even where nothing was selected";
}

TEST_F(TreeTest, WithoutMultipleSelectionOnlyTheFirstRowIsTaken) {
  const UI_RowPtr a = Add("a");
  const UI_RowPtr b = Add("b");
  tree->SetSupportMultipleSelections(false);
  tree->SelectRows({b, a});
  EXPECT_THAT(SelectedNames(), ElementsAre("b"));
}

TEST_F(TreeTest, ARemovedListMayBeTheOwnersOwnRecordOfTheSelection) {
  std::vector<UI_RowPtr> record;
  tree->SetRowsSelectionChangedCallback([&] { record = tree->GetSelectedRowsSortByRowIndex(); });
  const UI_RowPtr a = Add("a");
  const UI_RowPtr b = Add("b");
  Add("c");
  tree->SelectRows({a, b});
  tree->RemoveRows(record);
  EXPECT_THAT(Names(), ElementsAre("c"));
  EXPECT_THAT(record, IsEmpty());
}

TEST_F(TreeTest, RowsAreSeenAsTheyComeIntoTheFrameAndMissedAsTheyLeaveIt) {
  for (const char* name : {"a", "b", "c", "d", "e", "f"}) Add(name);
  EXPECT_THAT(sights, ElementsAre("+a", "+b", "+c", "+d"));
  sights.clear();
  tree->InsertRow(new NamedRow("new"), nullptr, tree->GetRow(0));
  EXPECT_THAT(sights, ElementsAre("-d", "+new"));
  sights.clear();
  tree->ScrollTo(2);
  EXPECT_THAT(sights, ElementsAre("-a", "-new", "+d", "+e"));
  sights.clear();
  tree->RemoveAllRows();
  EXPECT_THAT(sights, ElementsAre("-b", "-c", "-d", "-e"));
}

TEST_F(TreeTest, CellViewsMadeOnFirstSightHaveTheSizeOfTheirCell) {
  int made = 0;
  tree->SetRowVisibilityChangedCallback([&](UI_MultiColumnTreeRow& row, bool visible) {
    if (!visible || row.HasCellViews()) return;
    ++made;
    EXPECT_EQ(row.GetCellView(0)->GetWidth(), tree->GetColumnWidth(0));
  });
  for (int count = 0; count < 10; ++count) Add("row");
  EXPECT_EQ(made, 4);
  EXPECT_FALSE(tree->GetRow(4)->HasCellViews());
  int laidOut = 0;
  const auto cell = tree->GetRow(1)->GetCellView(0);
  cell->InstallSizeChangedNotification(&laidOut, [&](UI_Node&) { ++laidOut; });
  tree->SetColumnWidth(0, 500);
  EXPECT_EQ(cell->GetWidth(), 500.0);
  EXPECT_EQ(cell->GetFrame().top, 20.0);
  tree->ScrollTo(1);
  EXPECT_EQ(laidOut, 1) << "another place is no other size";
}

TEST(UI_MultiColumnTree, MayBeSetUpByItsOwnConstructorAndFollowsItsSize) {
  class OwnTree : public UI_MultiColumnTree {
   public:
    OwnTree() : UI_MultiColumnTree(1, GetDefaultRowHeight()) {
      Init();
      SetNumberOfColumns(1);
      AppendRow(UI_RowPtr(new NamedRow("first")));
      ClearSelection();
    }

   protected:
    void UI_SizeChanged() override {
      UI_MultiColumnTree::UI_SizeChanged();
      SetColumnWidth(0, GetWidth());
    }
  };
  const boost::intrusive_ptr<OwnTree> tree(new OwnTree);
  tree->SetFrame({0, 0, 600, 340});
  EXPECT_EQ(tree->GetColumnWidth(0), 600.0);
  EXPECT_EQ(tree->GetCellRect(*tree->GetRow(0), 0).right, 600.0);
}

TEST_F(TreeTest, ARowOutlivesItsTree) {
  const UI_RowPtr row = Add("row");
  const auto cell = row->GetCellView(0);
  const UI_RowPtr child = Add("child", row);
  tree.reset();
  EXPECT_EQ(row->GetTree(), nullptr);
  EXPECT_EQ(child->GetTree(), nullptr);
  EXPECT_EQ(cell->GetParent(), nullptr);
}

TEST_F(TreeTest, AgreesWithAPlainListThroughManyRandomChanges) {
  std::mt19937 random(7);
  std::vector<UI_RowPtr> list;
  for (int step = 0; step < 3000; ++step) {
    const std::size_t place = list.empty() ? 0 : random() % list.size();
    if (list.empty() || random() % 3 != 0) {
      const UI_RowPtr row(new NamedRow(std::to_string(step)));
      const auto at = static_cast<std::ptrdiff_t>(random() % (list.size() + 1));
      tree->InsertRow(row, nullptr, at > 0 ? list[static_cast<std::size_t>(at) - 1] : nullptr);
      list.insert(list.begin() + at, row);
      if (random() % 4 == 0) Add("below", row);
    } else if (random() % 2 == 0) {
      tree->RemoveRow(list[place]);
      list.erase(list.begin() + static_cast<std::ptrdiff_t>(place));
    } else {
      list[place]->SetExpanded(!list[place]->IsExpanded());
    }
  }
  ASSERT_EQ(tree->CountRows(), list.size());
  std::size_t shown = 0;
  for (std::size_t index = 0; index < list.size(); ++index) {
    ASSERT_EQ(tree->GetRow(static_cast<std::int64_t>(index)), list[index]);
    ASSERT_EQ(tree->GetRowIndex(*list[index]), index);
    ASSERT_EQ(tree->GetShownIndex(*list[index]), shown);
    shown += 1 + (list[index]->IsExpanded() ? list[index]->CountChildRows() : 0);
  }
  EXPECT_EQ(tree->CountShownRows(), shown);
}

namespace {

/// Counts how often the changes of a tree are passed on.
class CountingRoot : public UI_Node {
 public:
  CountingRoot() : UI_Node(UI_NodeKind::Canvas) {}
  int changes = 0;

 protected:
  void DescendantChanged(UI_Node& /*node*/, UI_Change /*change*/) override { ++changes; }
};

}  // namespace

// A look-up follows the links from a row to the root, and every other operation does a fixed number of these.
TEST_F(TreeTest, TenThousandRowsCostAFewStepsEachHoweverTheyWerePut) {
  constexpr int kRows = 10'000;
  constexpr std::size_t kMostSteps = 48;
  const boost::intrusive_ptr<CountingRoot> root(new CountingRoot);
  root->AddChild(tree);
  const auto deepest = [this] {
    std::size_t depth = 0;
    for (std::size_t index = 0; index < tree->CountRows(); ++index) {
      depth = std::max(depth, tree->GetLookUpDepth(*tree->GetRow(static_cast<std::int64_t>(index))));
    }
    return depth;
  };
  for (int count = 0; count < kRows / 2; ++count) Add("appended");
  for (int count = 0; count < kRows / 2; ++count) {
    tree->InsertRow(new NamedRow("in front"), nullptr, nullptr);
  }
  EXPECT_LT(deepest(), kMostSteps);
  EXPECT_LE(sights.size(), 2U * kRows) << "at most one row comes and one goes with each";
  for (int count = 0; count < kRows; ++count) {
    const UI_RowPtr last = tree->GetRow(kRows - 1);
    tree->RemoveRow(last);
    tree->InsertRow(last, nullptr, tree->GetRow(count % 100));
  }
  EXPECT_LT(deepest(), kMostSteps);

  sights.clear();
  root->changes = 0;
  std::vector<UI_RowPtr> everyOther;
  for (int index = 0; index < kRows; index += 2) everyOther.push_back(tree->GetRow(index));
  tree->SelectRows(everyOther);
  tree->RemoveRows(everyOther);
  EXPECT_EQ(selectionChanges, 2);
  EXPECT_LE(sights.size(), 8U) << "only rows in view come and go";
  EXPECT_LE(root->changes, 4) << "one operation is drawn once, not once a row";
  EXPECT_EQ(tree->CountRows(), static_cast<std::size_t>(kRows / 2));
}
