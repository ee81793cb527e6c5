// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QAbstractItemModel>
#include <memory>
#include <unordered_map>
#include <vector>

#include "host/kelpui/UI_MultiColumnTree.h"

/// The rows of a tree as Qt wants them. A tree only tells that its rows changed, so the model keeps a record
/// of the rows as Qt knows them and, at `Update`, tells the difference as insertions, removals and moves:
/// what Qt holds on a row that stays (selection, expansion) stays with it.
///
/// Between a change of the tree and the next `Update` the model goes on showing the record, whose rows it
/// keeps alive. An update takes about as many steps as the tree has rows, however many changed.
class TzQtTreeModel : public QAbstractItemModel {
 public:
  using Row = kelpui::controls::UI_MultiColumnTreeRow;

  explicit TzQtTreeModel(kelpui::controls::UI_MultiColumnTree& shownTree);
  ~TzQtTreeModel() override;

  void Update();
  /// All rows are of this height.
  void SetRowHeight(int height) { rowHeight = height; }

  /// Null for an index of no row.
  [[nodiscard]] kelpui::controls::UI_RowPtr GetRow(const QModelIndex& index) const;
  /// Invalid for a row that isn't in the record.
  [[nodiscard]] QModelIndex GetIndex(const Row& row, int column = 0) const;
  /// The rows that have rows below them.
  [[nodiscard]] std::vector<QModelIndex> ListParents() const;

  [[nodiscard]] QModelIndex index(int row, int column, const QModelIndex& parent) const override;
  [[nodiscard]] QModelIndex parent(const QModelIndex& child) const override;
  [[nodiscard]] int rowCount(const QModelIndex& parent) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;

 private:
  /// A row as Qt knows it.
  struct Entry {
    kelpui::controls::UI_RowPtr row;
    Entry* parent = nullptr;
    int place = 0;
    std::vector<std::unique_ptr<Entry>> children;
  };
  using Rows = std::vector<kelpui::controls::UI_RowPtr>;

  [[nodiscard]] Entry* EntryOf(const QModelIndex& index) const;
  [[nodiscard]] QModelIndex IndexOf(const Entry& entry, int column) const;
  [[nodiscard]] Rows ListChildren(const Entry& entry) const;

  void UpdateChildren(Entry& parent);
  void RemoveGone(Entry& parent, const Rows& wanted);
  void Reorder(Entry& parent, const Rows& wanted);
  void InsertMissing(Entry& parent, const Rows& wanted);
  std::unique_ptr<Entry> MakeEntry(Entry& parent, const kelpui::controls::UI_RowPtr& row);
  void Forget(const Entry& entry);
  static void NumberFrom(Entry& parent, std::size_t first);

  kelpui::controls::UI_MultiColumnTree& tree;
  Entry root;
  std::unordered_map<const Row*, Entry*> entries;
  int columns = 0;
  int rowHeight = 0;
};
