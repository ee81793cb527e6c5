// SPDX-License-Identifier: Apache-2.0
#include "host/qt/TzQtTreeModel.h"

#include <QColor>
#include <QSize>
#include <algorithm>
#include <unordered_set>

#include "host/qt/TzQtText.h"

using kelpui::controls::UI_Color;
using kelpui::controls::UI_DrawContext;
using kelpui::controls::UI_MultiColumnTree;
using kelpui::controls::UI_MultiColumnTreeRow;
using kelpui::controls::UI_RowPtr;

namespace {

/// What a row draws into one of its cells.
class CellText : public UI_DrawContext {
 public:
  CellText(TzReal cellLeft, TzReal cellRight) : left(cellLeft), right(cellRight) {}

  void DrawLine(const TzString& line, const TzRect& area, UI_Color lineColor) override {
    if (area.left < left || (area.left >= right && area.left > left)) return;
    if (!text.isEmpty()) text += QLatin1Char(' ');
    text += ToQtText(line);
    color = lineColor;
  }

  QString text;
  UI_Color color = UI_MultiColumnTree::GetDefaultTextColor();

 private:
  TzReal left;
  TzReal right;
};

}  // namespace

TzQtTreeModel::TzQtTreeModel(UI_MultiColumnTree& shownTree) : tree(shownTree) { Update(); }

TzQtTreeModel::~TzQtTreeModel() = default;

void TzQtTreeModel::Update() {
  const int wanted = std::max(static_cast<int>(tree.GetNumberOfColumns()), 1);
  if (wanted != columns) {
    beginResetModel();
    columns = wanted;
    root.children.clear();
    entries.clear();
    endResetModel();
  }
  UpdateChildren(root);
}

void TzQtTreeModel::UpdateChildren(Entry& parent) {  // NOLINT(misc-no-recursion)
  const Rows wanted = ListChildren(parent);
  const bool isSame = std::ranges::equal(
      wanted, parent.children, [](const UI_RowPtr& row, const auto& entry) { return row == entry->row; });
  if (!isSame) {
    RemoveGone(parent, wanted);
    Reorder(parent, wanted);
    InsertMissing(parent, wanted);
  }
  for (const auto& child : parent.children) UpdateChildren(*child);
}

TzQtTreeModel::Rows TzQtTreeModel::ListChildren(const Entry& entry) const {
  Rows rows;
  const std::size_t count = entry.row != nullptr ? entry.row->CountChildRows() : tree.CountRows();
  rows.reserve(count);
  for (std::size_t index = 0; index < count; ++index) {
    rows.push_back(entry.row != nullptr ? entry.row->GetChildRow(index)
                                        : tree.GetRow(static_cast<std::int64_t>(index)));
  }
  return rows;
}

void TzQtTreeModel::RemoveGone(Entry& parent, const Rows& wanted) {
  const std::unordered_set<const Row*> staying = [&] {
    std::unordered_set<const Row*> rows;
    for (const UI_RowPtr& row : wanted) rows.insert(row.get());
    return rows;
  }();
  // From the end, a run of neighbours at a time.
  for (std::size_t end = parent.children.size(); end > 0;) {
    const auto isGone = [&](std::size_t place) {
      return !staying.contains(parent.children[place]->row.get());
    };
    if (!isGone(end - 1)) {
      --end;
      continue;
    }
    std::size_t first = end - 1;
    while (first > 0 && isGone(first - 1)) --first;
    beginRemoveRows(IndexOf(parent, 0), static_cast<int>(first), static_cast<int>(end) - 1);
    const auto begin = parent.children.begin();
    for (std::size_t place = first; place < end; ++place) Forget(*parent.children[place]);
    parent.children.erase(begin + static_cast<std::ptrdiff_t>(first),
                          begin + static_cast<std::ptrdiff_t>(end));
    NumberFrom(parent, first);
    endRemoveRows();
    end = first;
  }
}

void TzQtTreeModel::Reorder(Entry& parent, const Rows& wanted) {
  std::unordered_map<const Row*, std::size_t> places;
  for (const UI_RowPtr& row : wanted) places.emplace(row.get(), places.size());
  const auto isBefore = [&](const auto& one, const auto& other) {
    return places.at(one->row.get()) < places.at(other->row.get());
  };
  if (std::ranges::is_sorted(parent.children, isBefore)) return;
  emit layoutAboutToBeChanged();
  const QModelIndexList before = persistentIndexList();
  std::ranges::sort(parent.children, isBefore);
  NumberFrom(parent, 0);
  QModelIndexList after;
  for (const QModelIndex& index : before) after.push_back(IndexOf(*EntryOf(index), index.column()));
  changePersistentIndexList(before, after);
  emit layoutChanged();
}

void TzQtTreeModel::InsertMissing(Entry& parent, const Rows& wanted) {
  for (std::size_t place = 0; place < wanted.size(); ++place) {
    const auto isMissing = [&](std::size_t at, std::size_t known) {
      return known >= parent.children.size() || parent.children[known]->row != wanted[at];
    };
    if (!isMissing(place, place)) continue;
    std::size_t end = place + 1;
    while (end < wanted.size() && isMissing(end, place)) ++end;
    beginInsertRows(IndexOf(parent, 0), static_cast<int>(place), static_cast<int>(end) - 1);
    std::vector<std::unique_ptr<Entry>> made;
    for (std::size_t at = place; at < end; ++at) made.push_back(MakeEntry(parent, wanted[at]));
    parent.children.insert(parent.children.begin() + static_cast<std::ptrdiff_t>(place),
                           std::make_move_iterator(made.begin()), std::make_move_iterator(made.end()));
    NumberFrom(parent, place);
    endInsertRows();
    place = end - 1;
  }
}

// A row comes with all that is below it: Qt looks there when it hears of the row.
std::unique_ptr<TzQtTreeModel::Entry> TzQtTreeModel::MakeEntry(  // NOLINT(misc-no-recursion)
    Entry& parent, const UI_RowPtr& row) {
  auto entry = std::make_unique<Entry>();
  entry->row = row;
  entry->parent = &parent;
  entries[row.get()] = entry.get();
  for (const UI_RowPtr& child : ListChildren(*entry)) entry->children.push_back(MakeEntry(*entry, child));
  NumberFrom(*entry, 0);
  return entry;
}

void TzQtTreeModel::Forget(const Entry& entry) {  // NOLINT(misc-no-recursion)
  for (const auto& child : entry.children) Forget(*child);
  // A row that went to another parent has a new entry already.
  const auto known = entries.find(entry.row.get());
  if (known != entries.end() && known->second == &entry) entries.erase(known);
}

void TzQtTreeModel::NumberFrom(Entry& parent, std::size_t first) {
  for (std::size_t place = first; place < parent.children.size(); ++place) {
    parent.children[place]->place = static_cast<int>(place);
  }
}

std::vector<QModelIndex> TzQtTreeModel::ListParents() const {
  std::vector<QModelIndex> parents;
  for (const auto& [row, entry] : entries) {
    if (!entry->children.empty()) parents.push_back(IndexOf(*entry, 0));
  }
  return parents;
}

TzQtTreeModel::Entry* TzQtTreeModel::EntryOf(const QModelIndex& index) const {
  return static_cast<Entry*>(index.internalPointer());
}

QModelIndex TzQtTreeModel::IndexOf(const Entry& entry, int column) const {
  return entry.parent != nullptr ? createIndex(entry.place, column, &entry) : QModelIndex();
}

UI_RowPtr TzQtTreeModel::GetRow(const QModelIndex& index) const {
  return index.isValid() ? EntryOf(index)->row : nullptr;
}

QModelIndex TzQtTreeModel::GetIndex(const Row& row, int column) const {
  const auto known = entries.find(&row);
  return known != entries.end() ? IndexOf(*known->second, column) : QModelIndex();
}

QModelIndex TzQtTreeModel::index(int row, int column, const QModelIndex& parent) const {
  const Entry& above = parent.isValid() ? *EntryOf(parent) : root;
  const bool exists = row >= 0 && column >= 0 && column < columnCount(parent) &&
                      static_cast<std::size_t>(row) < above.children.size() && parent.column() <= 0;
  return exists ? createIndex(row, column, above.children[static_cast<std::size_t>(row)].get())
                : QModelIndex();
}

QModelIndex TzQtTreeModel::parent(const QModelIndex& child) const {
  return child.isValid() ? IndexOf(*EntryOf(child)->parent, 0) : QModelIndex();
}

int TzQtTreeModel::rowCount(const QModelIndex& parent) const {
  if (parent.column() > 0) return 0;
  return static_cast<int>((parent.isValid() ? *EntryOf(parent) : root).children.size());
}

int TzQtTreeModel::columnCount(const QModelIndex& /*parent*/) const { return columns; }

QVariant TzQtTreeModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  if (role == Qt::SizeHintRole) return QSize(0, rowHeight);
  if (role != Qt::DisplayRole && role != Qt::ForegroundRole) return {};
  // A row that has left the tree since the last update has no cells to draw.
  Row& row = *EntryOf(index)->row;
  const auto column = static_cast<std::size_t>(index.column());
  if (row.GetTree() != &tree || column >= tree.GetNumberOfColumns()) return {};
  const TzRect cell = tree.GetCellRect(row, column);
  CellText drawn(cell.left, cell.right);
  tree.DrawRow(row, drawn);
  if (role == Qt::DisplayRole) return drawn.text;
  // The usual colour is the palette's, which is light on a dark one and differs in selected rows.
  const bool isUsual = drawn.color == UI_MultiColumnTree::GetDefaultTextColor();
  return isUsual ? QVariant() : QVariant(QColor::fromRgb(QRgb(drawn.color)));
}

Qt::ItemFlags TzQtTreeModel::flags(const QModelIndex& index) const {
  if (!index.isValid()) return Qt::NoItemFlags;
  const bool isSelectable = EntryOf(index)->row->IsSelectable();
  return isSelectable ? Qt::ItemIsEnabled | Qt::ItemIsSelectable : Qt::ItemIsEnabled;
}
