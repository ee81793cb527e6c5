// SPDX-License-Identifier: Apache-2.0
#include "panel/PlexoCourseTree.h"

using kelpui::controls::UI_DrawContext;
using kelpui::controls::UI_MultiColumnTreeRow;
using kelpui::controls::UI_RowPtr;

PlexoCourseTree::PlexoCourseTree() : UI_MultiColumnTree(1, GetDefaultRowHeight()) {
  Init();
  SetNumberOfColumns(1);
  SetAllowRowDragging(false);
  SetSupportMultipleSelections(true);
  SetDrawCellOfRowCallback([this](UI_MultiColumnTreeRow& row, std::size_t /*column*/, const TzRect& cell,
                                  UI_DrawContext& context) {
    const TzString text = GetDrawnText(row);
    if (!text.IsEmpty()) DrawCellString(context, text, cell, GetDefaultTextColor());
  });
  SetRowsSelectionChangedCallback([this] {
    selectedRows = GetSelectedRowsSortByRowIndex();
    SelectionChanged();
  });
}

void PlexoCourseTree::UI_SizeChanged() {
  UI_MultiColumnTree::UI_SizeChanged();
  SetColumnWidth(0, GetWidth());
}

std::vector<int> PlexoCourseTree::GetSelectedIndices() const {
  std::vector<int> indices;
  indices.reserve(selectedRows.size());
  for (const UI_RowPtr& row : selectedRows) indices.push_back(static_cast<int>(GetRowIndex(*row)));
  return indices;
}

void PlexoCourseTree::MoveSelection(bool up) {
  if (selectedRows.size() != 1) return;
  const UI_RowPtr row = selectedRows.front();
  const auto index = static_cast<std::int32_t>(GetRowIndex(*row));
  const std::int32_t target = up ? index - 1 : index + 1;
  if (target < 0 || static_cast<std::size_t>(target) >= CountRows()) return;
  RemoveRow(row);
  // The row that then stands in front of the target; null at the top, where the row becomes the first.
  InsertRow(row, nullptr, GetRow(target - 1));
  // The callback of the removal has counted the rows without this one.
  ClearSelection();
  RowMoved(index, target);
}
