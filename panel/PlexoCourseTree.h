// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <vector>

#include "host/kelpui/UI_MultiColumnTree.h"

/// What the lists of all course types have in common: one column as wide as the list, any number of selected
/// rows, and an order that the author changes with the panel's two buttons, not by dragging.
///
/// Costs are those of the tree: about the logarithm of the number of rows for a move, and that many steps for
/// each selected row where the selection counts.
class PlexoCourseTree : public kelpui::controls::UI_MultiColumnTree {
 public:
  /// Moves the only selected row by one place, towards the top or the bottom; a row that stands there
  /// already, and any other number of rows, stay. Nothing is selected afterwards.
  void MoveSelection(bool up);
  /// Tells the handler what is about to go and then removes the selected rows; also where none is selected.
  virtual void RemoveSelection() = 0;
  /// Indices of the selected rows, which ascend.
  [[nodiscard]] std::vector<int> GetSelectedIndices() const;

 protected:
  PlexoCourseTree();

  /// As they were at the last selection callback, from top to bottom.
  [[nodiscard]] const std::vector<kelpui::controls::UI_RowPtr>& GetSelectedRows() const {
    return selectedRows;
  }
  /// The selection has changed, or was cleared.
  virtual void SelectionChanged() = 0;
  /// The row at the first index now stands at the second.
  virtual void RowMoved(std::int32_t from, std::int32_t to) = 0;
  /// What a row without controls shows; empty where there is nothing to draw.
  [[nodiscard]] virtual TzString GetDrawnText(const kelpui::controls::UI_MultiColumnTreeRow& row) const = 0;
  void UI_SizeChanged() override;

 private:
  std::vector<kelpui::controls::UI_RowPtr> selectedRows;
};
