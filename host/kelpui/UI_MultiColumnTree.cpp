// SPDX-License-Identifier: Apache-2.0
#include "host/kelpui/UI_MultiColumnTree.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <utility>

namespace kelpui::controls {

namespace {

using Row = UI_MultiColumnTreeRow;

/// The row's index at each level, from the top level down: sorts rows as they stand in the tree.
std::vector<std::size_t> GetIndexPath(const UI_MultiColumnTree& tree, const Row& row) {
  std::vector<std::size_t> path;
  for (const Row* each = &row; each != nullptr; each = each->GetParentRow()) {
    path.push_back(tree.GetRowIndex(*each));
  }
  std::ranges::reverse(path);
  return path;
}

/// Set for its own lifetime.
class UpdateMark {
 public:
  explicit UpdateMark(bool& marked) : flag(marked) { flag = true; }
  ~UpdateMark() { flag = false; }
  UpdateMark(const UpdateMark&) = delete;
  UpdateMark& operator=(const UpdateMark&) = delete;

 private:
  bool& flag;
};

}  // namespace

UI_MultiColumnTree::UI_MultiColumnTree(std::size_t columns, TzReal heightOfRows)
    : UI_Node(UI_NodeKind::Tree), initialColumns(columns), rowHeight(heightOfRows) {
  if (!(heightOfRows > 0.0)) throw std::logic_error("tree: its rows have no height");
}

UI_MultiColumnTree::~UI_MultiColumnTree() {
  for (std::size_t index = 0; index < topRows.CountRows(); ++index) {
    Enrol(*topRows.GetRow(index), Membership::Leaves);
  }
}

void UI_MultiColumnTree::Init() { SetNumberOfColumns(initialColumns); }

void UI_MultiColumnTree::SetNumberOfColumns(std::size_t columns) {
  columnWidths.resize(columns, 0.0);
  RowsChanged();
}

void UI_MultiColumnTree::SetColumnWidth(std::size_t column, TzReal width) {
  if (column >= columnWidths.size()) throw std::logic_error("tree: it has no such column");
  if (columnWidths[column] == width) return;
  columnWidths[column] = width;
  RowsChanged();
}

UI_RowList& UI_MultiColumnTree::ListOf(UI_MultiColumnTreeRow* parent) {
  return parent != nullptr ? parent->children : topRows;
}

const UI_RowList& UI_MultiColumnTree::ListHolding(const UI_MultiColumnTreeRow& row) const {
  RequireMember(&row, "the row");
  return row.parentRow != nullptr ? row.parentRow->children : topRows;
}

void UI_MultiColumnTree::RequireMember(const UI_MultiColumnTreeRow* row, const char* what) const {
  if (row->tree != this) throw std::logic_error(std::string("tree: ") + what + " isn't in it");
}

void UI_MultiColumnTree::AppendRow(const UI_RowPtr& row, const UI_RowPtr& parent) {
  if (parent != nullptr) RequireMember(parent.get(), "the parent");
  InsertAt(row, parent.get(), ListOf(parent.get()).CountRows());
}

void UI_MultiColumnTree::InsertRow(const UI_RowPtr& row, const UI_RowPtr& parent, const UI_RowPtr& after) {
  if (parent != nullptr) RequireMember(parent.get(), "the parent");
  std::size_t index = 0;
  if (after != nullptr) {
    RequireMember(after.get(), "the row to insert after");
    if (after->parentRow != parent.get())
      throw std::logic_error("tree: the row to insert after has another parent");
    index = GetRowIndex(*after) + 1;
  }
  InsertAt(row, parent.get(), index);
}

void UI_MultiColumnTree::InsertAt(const UI_RowPtr& row, UI_MultiColumnTreeRow* parent, std::size_t index) {
  if (row->tree != nullptr || row->parentRow != nullptr)
    throw std::logic_error("tree: the row is in a tree already");
  const UI_KeepAlive held(*this);
  ListOf(parent).Insert(*row, index);
  row->parentRow = parent;
  Enrol(*row, Membership::Enters);
  ShownRowsChanged(parent);
  RowsChanged();
}

void UI_MultiColumnTree::RemoveRow(const UI_RowPtr& row) { RemoveRows({row}); }

void UI_MultiColumnTree::RemoveRows(const std::vector<UI_RowPtr>& rows) {
  const UI_KeepAlive held(*this);
  // A copy: the list may be the caller's own record of the selection, which the callback rewrites.
  const std::vector<UI_RowPtr> going(rows.begin(), rows.end());
  for (const UI_RowPtr& row : going) RequireMember(row.get(), "the row to remove");
  bool selectionShrank = false;
  for (const UI_RowPtr& row : going) {
    if (row->tree == this) selectionShrank |= TakeOut(*row);
  }
  if (going.empty()) return;
  RowsChanged();
  if (selectionShrank) NoteSelection();
}

void UI_MultiColumnTree::RemoveAllRows() {
  std::vector<UI_RowPtr> rows;
  rows.reserve(topRows.CountRows());
  for (std::size_t index = 0; index < topRows.CountRows(); ++index) rows.emplace_back(topRows.GetRow(index));
  RemoveRows(rows);
}

bool UI_MultiColumnTree::TakeOut(UI_MultiColumnTreeRow& row) {
  const UI_RowPtr held(&row);
  Row* parent = row.parentRow;
  ListOf(parent).Remove(row);
  row.parentRow = nullptr;
  ShownRowsChanged(parent);
  const std::size_t selectedBefore = selected.size();
  Enrol(row, Membership::Leaves);
  return selected.size() != selectedBefore;
}

void UI_MultiColumnTree::Enrol(UI_MultiColumnTreeRow& row,
                               Membership membership) {  // NOLINT(misc-no-recursion)
  if (membership == Membership::Leaves) Deselect(row);
  row.isInView = false;
  row.tree = membership == Membership::Enters ? this : nullptr;
  for (std::size_t column = 0; column < row.cellViews.size(); ++column) {
    if (membership == Membership::Enters) {
      AdoptCell(row, column);
    } else {
      Disown(*row.cellViews[column]);
    }
  }
  for (std::size_t index = 0; index < row.children.CountRows(); ++index) {
    Enrol(*row.children.GetRow(index), membership);
  }
}

void UI_MultiColumnTree::ShownRowsChanged(UI_MultiColumnTreeRow* parent) {
  for (; parent != nullptr; parent = parent->parentRow) ListOf(parent->parentRow).ShownChanged(*parent);
}

UI_RowPtr UI_MultiColumnTree::GetRow(std::int64_t index) const {
  return index >= 0 ? topRows.GetRow(static_cast<std::size_t>(index)) : nullptr;
}

std::size_t UI_MultiColumnTree::GetRowIndex(const UI_MultiColumnTreeRow& row) const {
  return ListHolding(row).GetIndex(row);
}

std::size_t UI_MultiColumnTree::GetLookUpDepth(const UI_MultiColumnTreeRow& row) const {
  return ListHolding(row).GetDepth(row);
}

void UI_MultiColumnTree::SelectRows(const std::vector<UI_RowPtr>& rows) {
  const UI_KeepAlive held(*this);
  std::unordered_set<Row*> wanted;
  for (const UI_RowPtr& row : rows) {
    RequireMember(row.get(), "the row to select");
    if (row->isSelectable && (supportsMultipleSelections || wanted.empty())) wanted.insert(row.get());
  }
  if (wanted == selected) return;
  for (Row* row : selected) row->isSelected = false;
  for (Row* row : wanted) row->isSelected = true;
  selected = std::move(wanted);
  NoteSelection();
}

void UI_MultiColumnTree::ClearSelection() {
  const UI_KeepAlive held(*this);
  for (Row* row : selected) row->isSelected = false;
  selected.clear();
  NoteSelection();
}

void UI_MultiColumnTree::Deselect(UI_MultiColumnTreeRow& row) {
  row.isSelected = false;
  selected.erase(&row);
}

void UI_MultiColumnTree::NoteSelection() {
  NoteChange(UI_Change::Rows);
  const RowsSelectionChanged callback = selectionChanged;
  if (callback) callback();
}

std::vector<UI_RowPtr> UI_MultiColumnTree::GetSelectedRowsSortByRowIndex() const {
  std::vector<std::pair<std::vector<std::size_t>, Row*>> paths;
  paths.reserve(selected.size());
  for (Row* row : selected) paths.emplace_back(GetIndexPath(*this, *row), row);
  std::ranges::sort(paths);
  std::vector<UI_RowPtr> rows;
  rows.reserve(paths.size());
  for (const auto& [path, row] : paths) rows.emplace_back(row);
  return rows;
}

std::size_t UI_MultiColumnTree::GetShownIndex(const UI_MultiColumnTreeRow& row) const {
  std::size_t shown = ListHolding(row).CountShownBefore(row);
  for (const auto* parent = row.parentRow; parent != nullptr; parent = parent->parentRow) {
    shown += 1 + ListHolding(*parent).CountShownBefore(*parent);
  }
  return shown;
}

UI_MultiColumnTreeRow* UI_MultiColumnTree::GetShownRow(std::size_t shownIndex) const {
  const UI_RowList* list = &topRows;
  while (auto* row = list->FindShown(shownIndex)) {
    if (shownIndex == 0) return row;
    --shownIndex;
    list = &row->children;
  }
  return nullptr;
}

void UI_MultiColumnTree::ScrollTo(std::size_t shownIndex) {
  const std::size_t last = std::max<std::size_t>(CountShownRows(), 1) - 1;
  scrollPosition = std::min(shownIndex, last);
  RowsChanged();
}

TzRect UI_MultiColumnTree::MakeCellRect(std::size_t shownIndex, std::size_t column) const {
  TzRect cell;
  for (std::size_t each = 0; each < std::min(column, columnWidths.size()); ++each) {
    cell.left += columnWidths[each];
  }
  cell.right = cell.left + (column < columnWidths.size() ? columnWidths[column] : 0.0);
  cell.top = (static_cast<TzReal>(shownIndex) - static_cast<TzReal>(scrollPosition)) * rowHeight;
  cell.bottom = cell.top + rowHeight;
  return cell;
}

TzRect UI_MultiColumnTree::GetCellRect(const UI_MultiColumnTreeRow& row, std::size_t column) const {
  return MakeCellRect(GetShownIndex(row), column);
}

void UI_MultiColumnTree::DrawRow(UI_MultiColumnTreeRow& row, UI_DrawContext& context) const {
  if (!drawCell) return;
  const std::size_t shownIndex = GetShownIndex(row);
  for (std::size_t column = 0; column < columnWidths.size(); ++column) {
    drawCell(row, column, MakeCellRect(shownIndex, column), context);
  }
}

void UI_MultiColumnTree::UI_SizeChanged() {
  RowsChanged();
  UI_Node::UI_SizeChanged();
}

void UI_MultiColumnTree::RowsChanged() {
  UpdateView();
  NoteChange(UI_Change::Rows);
}

std::vector<UI_RowPtr> UI_MultiColumnTree::FindRowsInView() const {
  // A frame that a fault has made endless still shows no more rows than a screen has lines.
  constexpr TzReal kMostRows = 10'000.0;
  const auto fitting =
      static_cast<std::size_t>(std::clamp(std::ceil(GetHeight() / rowHeight), 0.0, kMostRows));
  std::vector<UI_RowPtr> rows;
  for (std::size_t index = scrollPosition; rows.size() < fitting; ++index) {
    auto* row = GetShownRow(index);
    if (row == nullptr) break;
    rows.emplace_back(row);
  }
  return rows;
}

void UI_MultiColumnTree::UpdateView() {
  // A callback that makes controls comes back here; the rows are the same then.
  if (isUpdatingView) return;
  const UI_KeepAlive held(*this);
  scrollPosition = std::min(scrollPosition, std::max<std::size_t>(CountShownRows(), 1) - 1);
  const std::vector<UI_RowPtr> before = std::exchange(inView, FindRowsInView());
  for (const UI_RowPtr& row : inView) row->isInView = true;
  const UpdateMark mark(isUpdatingView);
  const std::vector<UI_RowPtr> rows = inView;
  for (std::size_t index = 0; index < rows.size(); ++index) LayOutRow(*rows[index], scrollPosition + index);
  for (const UI_RowPtr& row : before) {
    if (std::ranges::find(rows, row) != rows.end()) continue;
    row->isInView = false;
    if (visibilityChanged) visibilityChanged(*row, false);
  }
  for (const UI_RowPtr& row : rows) {
    if (visibilityChanged && std::ranges::find(before, row) == before.end()) visibilityChanged(*row, true);
  }
}

void UI_MultiColumnTree::LayOutRow(UI_MultiColumnTreeRow& row, std::size_t shownIndex) {
  for (std::size_t column = 0; column < row.cellViews.size(); ++column) {
    row.cellViews[column]->SetFrame(MakeCellRect(shownIndex, column));
  }
}

void UI_MultiColumnTree::AdoptCell(UI_MultiColumnTreeRow& row, std::size_t column) {
  UI_SubView& cell = *row.cellViews[column];
  Adopt(cell);
  if (row.isInView) cell.SetFrame(GetCellRect(row, column));
}

}  // namespace kelpui::controls
