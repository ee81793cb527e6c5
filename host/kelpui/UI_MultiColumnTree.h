// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <unordered_set>
#include <vector>

#include "host/kelpui/UI_DrawContext.h"
#include "host/kelpui/UI_MultiColumnTreeRow.h"

namespace kelpui::controls {

/// A list of rows with rows below them, in columns. A row is drawn by a callback, or has controls in its cell
/// views, or both.
///
/// Costs, with n rows in the tree, k rows given or selected, and v rows in view: appending, inserting,
/// removing, finding a row's index or the row of an index take about log n + v steps; removing or selecting k
/// rows about k log n + v. A row that is removed or inserted with rows below it costs as many steps more.
///
/// The selection callback comes once for each operation that changed the selection, after it. The visibility
/// callback comes for rows that came into view or left it, after the operation that did it, with the row's
/// cells laid out; it may make controls, but not change the rows.
class UI_MultiColumnTree : public UI_Node {
 public:
  using DrawCellOfRow = std::function<void(UI_MultiColumnTreeRow& row, std::size_t column, const TzRect& cell,
                                           UI_DrawContext& context)>;
  using RowsSelectionChanged = std::function<void()>;
  using RowVisibilityChanged = std::function<void(UI_MultiColumnTreeRow& row, bool visible)>;

  UI_MultiColumnTree(std::size_t columns, TzReal heightOfRows);

  static TzReal GetDefaultRowHeight() { return 20.0; }
  static UI_Color GetDefaultTextColor() { return 0x000000; }
  static void DrawCellString(UI_DrawContext& context, const TzString& text, const TzRect& area,
                             UI_Color color) {
    context.DrawLine(text, area, color);
  }

  /// Makes the columns given at construction; before it the tree has none.
  void Init();
  void SetNumberOfColumns(std::size_t columns);
  [[nodiscard]] std::size_t GetNumberOfColumns() const { return columnWidths.size(); }
  /// A column that doesn't exist is a `std::logic_error`.
  void SetColumnWidth(std::size_t column, TzReal width);
  [[nodiscard]] TzReal GetColumnWidth(std::size_t column) const { return columnWidths.at(column); }

  void SetAllowRowDragging(bool allow) { allowsDragging = allow; }
  [[nodiscard]] bool IsRowDraggingAllowed() const { return allowsDragging; }
  /// Without it a selection keeps only the first of its rows.
  void SetSupportMultipleSelections(bool support) { supportsMultipleSelections = support; }
  [[nodiscard]] bool AreMultipleSelectionsSupported() const { return supportsMultipleSelections; }

  void SetDrawCellOfRowCallback(DrawCellOfRow callback) { drawCell = std::move(callback); }
  void SetRowsSelectionChangedCallback(RowsSelectionChanged callback) {
    selectionChanged = std::move(callback);
  }
  void SetRowVisibilityChangedCallback(RowVisibilityChanged callback) {
    visibilityChanged = std::move(callback);
  }

  // A null parent is the top level. A row that is in a tree already, and a parent or row that isn't in this
  // one where it has to be, is a `std::logic_error`.
  void AppendRow(const UI_RowPtr& row, const UI_RowPtr& parent = nullptr);
  /// Null for `after` inserts in front of all.
  void InsertRow(const UI_RowPtr& row, const UI_RowPtr& parent, const UI_RowPtr& after);
  void RemoveRow(const UI_RowPtr& row);
  /// A row below another of the list goes with that one.
  void RemoveRows(const std::vector<UI_RowPtr>& rows);
  void RemoveAllRows();

  [[nodiscard]] std::size_t CountRows() const { return topRows.CountRows(); }
  /// Of the top level; null outside.
  [[nodiscard]] UI_RowPtr GetRow(std::int64_t index) const;
  /// Among the rows of the same parent.
  [[nodiscard]] std::size_t GetRowIndex(const UI_MultiColumnTreeRow& row) const;
  /// How many links a look-up of the row follows at its level.
  [[nodiscard]] std::size_t GetLookUpDepth(const UI_MultiColumnTreeRow& row) const;

  /// These and no others become selected; rows that aren't selectable are passed over.
  void SelectRows(const std::vector<UI_RowPtr>& rows);
  /// Comes with a selection callback even where nothing was selected: an owner that adds rows and clears the
  /// selection then has its occasion to look at the rows again.
  void ClearSelection();
  [[nodiscard]] std::size_t CountSelectedRows() const { return selected.size(); }
  /// From top to bottom, a row before those below it.
  [[nodiscard]] std::vector<UI_RowPtr> GetSelectedRowsSortByRowIndex() const;

  /// Rows that no collapsed row hides, whether they are in view or not.
  [[nodiscard]] std::size_t CountShownRows() const { return topRows.CountShown(); }
  /// How many of them lie above this row.
  [[nodiscard]] std::size_t GetShownIndex(const UI_MultiColumnTreeRow& row) const;
  /// The rows that can be seen, from top to bottom: those that at least partly lie in the frame.
  [[nodiscard]] const std::vector<UI_RowPtr>& GetRowsInView() const { return inView; }
  /// The first row to be seen, counted in shown rows; at most the last one.
  void ScrollTo(std::size_t shownIndex);
  [[nodiscard]] std::size_t GetScrollPosition() const { return scrollPosition; }
  [[nodiscard]] TzReal GetRowHeight() const { return rowHeight; }
  /// From the left top of the tree's frame.
  [[nodiscard]] TzRect GetCellRect(const UI_MultiColumnTreeRow& row, std::size_t column) const;
  /// Runs the draw callback for each of the row's cells.
  void DrawRow(UI_MultiColumnTreeRow& row, UI_DrawContext& context) const;

 protected:
  ~UI_MultiColumnTree() override;
  void UI_SizeChanged() override;

 private:
  friend class UI_MultiColumnTreeRow;

  enum class Membership { Enters, Leaves };

  UI_RowList& ListOf(UI_MultiColumnTreeRow* parent);
  [[nodiscard]] const UI_RowList& ListHolding(const UI_MultiColumnTreeRow& row) const;
  void InsertAt(const UI_RowPtr& row, UI_MultiColumnTreeRow* parent, std::size_t index);
  /// True if a selected row went.
  bool TakeOut(UI_MultiColumnTreeRow& row);
  void Enrol(UI_MultiColumnTreeRow& row, Membership membership);
  void RequireMember(const UI_MultiColumnTreeRow* row, const char* what) const;
  void ShownRowsChanged(UI_MultiColumnTreeRow* parent);
  void Deselect(UI_MultiColumnTreeRow& row);
  void NoteSelection();
  void RowsChanged();
  [[nodiscard]] UI_MultiColumnTreeRow* GetShownRow(std::size_t shownIndex) const;
  [[nodiscard]] std::vector<UI_RowPtr> FindRowsInView() const;
  void UpdateView();
  void LayOutRow(UI_MultiColumnTreeRow& row, std::size_t shownIndex);
  [[nodiscard]] TzRect MakeCellRect(std::size_t shownIndex, std::size_t column) const;
  void AdoptCell(UI_MultiColumnTreeRow& row, std::size_t column);

  std::size_t initialColumns;
  TzReal rowHeight;
  std::vector<TzReal> columnWidths;
  bool allowsDragging = true;
  bool supportsMultipleSelections = false;
  DrawCellOfRow drawCell;
  RowsSelectionChanged selectionChanged;
  RowVisibilityChanged visibilityChanged;
  UI_RowList topRows;
  std::unordered_set<UI_MultiColumnTreeRow*> selected;
  std::vector<UI_RowPtr> inView;
  std::size_t scrollPosition = 0;
  bool isUpdatingView = false;
};

}  // namespace kelpui::controls
