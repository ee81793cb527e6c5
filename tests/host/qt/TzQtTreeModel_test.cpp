// SPDX-License-Identifier: Apache-2.0
#include "host/qt/TzQtTreeModel.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <random>

using kelpui::controls::UI_MultiColumnTree;
using kelpui::controls::UI_MultiColumnTreeRow;
using kelpui::controls::UI_RowPtr;

namespace {

using TreePtr = boost::intrusive_ptr<UI_MultiColumnTree>;

TreePtr MakeTree() {
  TreePtr tree = new UI_MultiColumnTree(1, 20.0);
  tree->Init();
  return tree;
}

/// The model tells the same rows as the tree, all the way down.
void ExpectSameRows(const TzQtTreeModel& model, const UI_MultiColumnTree& tree,
                    const QModelIndex& parent = {}) {
  const UI_RowPtr above = model.GetRow(parent);
  const std::size_t count = above != nullptr ? above->CountChildRows() : tree.CountRows();
  ASSERT_EQ(static_cast<std::size_t>(model.rowCount(parent)), count);
  for (int row = 0; row < model.rowCount(parent); ++row) {
    const QModelIndex index = model.index(row, 0, parent);
    EXPECT_EQ(model.GetRow(index),
              above != nullptr ? above->GetChildRow(static_cast<std::size_t>(row)) : tree.GetRow(row));
    EXPECT_EQ(model.parent(index), parent);
    EXPECT_EQ(model.GetIndex(*model.GetRow(index)), index);
    ExpectSameRows(model, tree, index);
  }
}

/// Changes a tree at random, as a fixed seed has it.
class RandomWalk {
 public:
  explicit RandomWalk(UI_MultiColumnTree& walked) : tree(walked) {}

  void Step() {
    switch (Pick(5)) {
      case 0:
      case 1:
        return Insert(new UI_MultiColumnTreeRow);
      case 2:
        return Remove();
      case 3:
        return Move();
      default:
        if (const UI_RowPtr row = PickRow()) tree.SelectRows({row});
    }
  }

 private:
  std::size_t Pick(std::size_t count) {
    return std::uniform_int_distribution<std::size_t>(0, count - 1)(random);
  }

  UI_RowPtr PickRow() {
    if (tree.CountRows() == 0) return nullptr;
    const UI_RowPtr row = tree.GetRow(static_cast<std::int64_t>(Pick(tree.CountRows())));
    return row->CountChildRows() > 0 && Pick(2) == 0 ? row->GetChildRow(Pick(row->CountChildRows())) : row;
  }

  void Insert(const UI_RowPtr& row) {
    UI_RowPtr after = PickRow();
    if (after == nullptr || Pick(6) == 0) return tree.InsertRow(row, nullptr, nullptr);
    // Rows of two levels, some of them with rows already when they come.
    if (Pick(2) == 0 && after->GetParentRow() == nullptr && row->CountChildRows() == 0)
      return tree.AppendRow(row, after);
    if (row->CountChildRows() > 0) {
      while (after->GetParentRow() != nullptr) after = after->GetParentRow();
    }
    tree.InsertRow(row, after->GetParentRow(), after);
  }

  void Remove() {
    std::vector<UI_RowPtr> rows;
    for (std::size_t count = Pick(3); rows.size() < count && tree.CountRows() > 0;) rows.push_back(PickRow());
    tree.RemoveRows(rows);
  }

  void Move() {
    const UI_RowPtr row = PickRow();
    if (row == nullptr) return;
    tree.RemoveRow(row);
    Insert(row);
  }

  UI_MultiColumnTree& tree;
  std::mt19937 random{20};
};

}  // namespace

TEST(TzQtTreeModelTest, QtKeepsUpWithATreeThatChangesAtRandom) {
  const TreePtr tree = MakeTree();
  TzQtTreeModel model(*tree);
  const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
  RandomWalk walk(*tree);
  for (int turn = 0; turn < 400 && !testing::Test::HasFailure(); ++turn) {
    for (int step = turn % 7; step >= 0; --step) walk.Step();
    model.Update();
    ExpectSameRows(model, *tree);
  }
}

TEST(TzQtTreeModelTest, WhatQtHoldsOnARowStaysWithItWhenItMoves) {
  const TreePtr tree = MakeTree();
  for (int count = 0; count < 5; ++count) tree->AppendRow(new UI_MultiColumnTreeRow);
  TzQtTreeModel model(*tree);
  const UI_RowPtr moved = tree->GetRow(3);
  const QPersistentModelIndex kept(model.GetIndex(*moved));

  tree->RemoveRow(moved);
  tree->InsertRow(moved, nullptr, tree->GetRow(0));
  EXPECT_EQ(kept.row(), 3) << "until the update, Qt sees the rows as they were";
  model.Update();

  EXPECT_EQ(kept.row(), 1);
  EXPECT_EQ(model.GetRow(kept), moved);
}
