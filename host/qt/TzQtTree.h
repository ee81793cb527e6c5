// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QModelIndex>
#include <map>

#include "host/kelpui/UI_MultiColumnTree.h"
#include "host/qt/TzQtMirrors.h"
#include "host/qt/TzQtTreeModel.h"

class TzQtTreeView;

/// A tree on the screen. Selection, expansion and the place that it is scrolled to are the tree's own: what a
/// person does goes into it, what the program does is shown at the end of the running event.
///
/// Only rows in view have widgets, for the controls of their cells. A cell is as wide as it is drawn, less
/// the indentation, and the cell's node has that size. Controls keep the place that their row gives them,
/// moved to the middle of the line; one whose text is longer than its frame grows into the room beside it.
class TzQtTree : public TzQtMirror {
 public:
  TzQtTree(kelpui::controls::UI_MultiColumnTree& shownTree, QWidget* parent);
  ~TzQtTree() override;

  void Refresh() override;
  /// Cut to what the parent has room for: whoever places the tree may give it a larger frame.
  void Place(const QRect& area) override;

  /// The tree's rows changed, or something in a row's cells.
  void NodeChanged(kelpui::controls::UI_Node& node, kelpui::controls::UI_Change change);
  /// Shows what changed now.
  void Update();

  /// The controls in view, in the order in which a person tabs through them.
  [[nodiscard]] std::vector<QWidget*> GetFocusWidgets() const;

 private:
  using UI_Node = kelpui::controls::UI_Node;
  using Tree = kelpui::controls::UI_MultiColumnTree;
  using CellPtr = boost::intrusive_ptr<kelpui::controls::UI_SubView>;
  struct Cell {
    CellPtr node;
    QWidget* widget = nullptr;
    QModelIndex index;
  };

  TzQtTree(Tree& shownTree, TzQtTreeView* widget);

  void Connect();
  /// Updates at the end of the event, however often it is called.
  void Schedule();
  void ShowColumns();
  void ShowExpansion();
  [[nodiscard]] std::vector<kelpui::controls::UI_RowPtr> ListRowsSelectedInQt() const;
  void ShowSelection();
  void ShowScrollPosition();
  void ShowCells();
  [[nodiscard]] std::vector<Cell> ListCellsInView() const;
  void ColorTexts(const Cell& cell) const;
  void PlaceControls(const Cell& cell);
  void EnterSelection();
  void EnterExpansion(const QModelIndex& index);
  void EnterScrollPosition(int position);
  /// A press into a cell's control selects the row.
  void EnterPress(const QObject& widget);

  Tree& tree;
  TzQtMirrors mirrors;
  TzQtTreeView* view;
  TzQtTreeModel model;
  std::map<const UI_Node*, Cell> cells;
  std::size_t shownScrollPosition = 0;
  bool isScheduled = false;
  bool isUpdating = false;
  /// What is connected to the widget ends here: it outlives this mirror by an event.
  QObject connections;
};
