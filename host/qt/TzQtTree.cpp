// SPDX-License-Identifier: Apache-2.0
#include "host/qt/TzQtTree.h"

#include <QApplication>
#include <QHeaderView>
#include <QItemSelection>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QTimer>
#include <algorithm>

#include "host/kelpui/UI_SubView.h"
#include "host/qt/TzQtText.h"
#include "host/qt/TzQtTreeView.h"

using kelpui::controls::UI_Change;
using kelpui::controls::UI_MultiColumnTreeRow;
using kelpui::controls::UI_Node;
using kelpui::controls::UI_NodeKind;
using kelpui::controls::UI_NodePtr;
using kelpui::controls::UI_RowPtr;

namespace {

/// In a line of this height: as the row's frame says, but wide enough to be read.
QSize GetControlSize(const TzQtMirror& mirror, int lineHeight) {
  const UI_Node& node = mirror.GetNode();
  const int framed = static_cast<int>(node.GetWidth());
  const int wanted = mirror.Measure().preferred.width();
  switch (node.GetKind()) {
    case UI_NodeKind::StaticText:
    case UI_NodeKind::Checkbox:
      return {wanted, lineHeight};
    case UI_NodeKind::NumberEdit:
      return {std::max(framed, wanted), lineHeight};
    case UI_NodeKind::TextEdit:
    case UI_NodeKind::Popup:
      return {framed, lineHeight};
    default:
      return {framed, std::min(static_cast<int>(node.GetHeight()), lineHeight)};
  }
}

}  // namespace

TzQtTree::TzQtTree(Tree& shownTree, QWidget* parent) : TzQtTree(shownTree, new TzQtTreeView(parent)) {}

TzQtTree::TzQtTree(Tree& shownTree, TzQtTreeView* widget)
    : TzQtMirror(shownTree, widget), tree(shownTree), view(widget), model(shownTree) {
  constexpr int kAroundControls = 8;
  model.SetRowHeight(
      std::max(static_cast<int>(tree.GetRowHeight()), view->fontMetrics().height() + kAroundControls));
  view->setModel(&model);
  view->setHeaderHidden(true);
  view->setUniformRowHeights(true);
  view->setAlternatingRowColors(false);
  view->setAllColumnsShowFocus(true);
  view->setSelectionBehavior(QAbstractItemView::SelectRows);
  view->setEditTriggers(QAbstractItemView::NoEditTriggers);
  view->setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
  view->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  view->setTabKeyNavigation(false);
  view->setTextElideMode(Qt::ElideRight);
  view->header()->setStretchLastSection(true);
  view->header()->setMinimumSectionSize(1);
  Connect();
  Schedule();
}

TzQtTree::~TzQtTree() {
  if (GetWidget() == nullptr) return;
  // The widget goes later than the model that it shows.
  view->viewportChanged = nullptr;
  view->pressedInCell = nullptr;
  view->setModel(nullptr);
}

void TzQtTree::Connect() {
  QObject::connect(view->selectionModel(), &QItemSelectionModel::selectionChanged, &connections,
                   [this] { EnterSelection(); });
  QObject::connect(view, &QTreeView::expanded, &connections,
                   [this](const QModelIndex& index) { EnterExpansion(index); });
  QObject::connect(view, &QTreeView::collapsed, &connections,
                   [this](const QModelIndex& index) { EnterExpansion(index); });
  QObject::connect(view->verticalScrollBar(), &QScrollBar::valueChanged, &connections,
                   [this](int position) { EnterScrollPosition(position); });
  view->viewportChanged = [this] { Schedule(); };
  view->pressedInCell = [this](const QObject& widget) { EnterPress(widget); };
}

void TzQtTree::Refresh() {
  TzQtMirror::Refresh();
  SetAccessibleName(*view);
  // What a list is called would stand in the way of whoever points at its rows.
  view->setToolTip(ToShownText(tree.GetTooltip()));
  view->setSelectionMode(tree.AreMultipleSelectionsSupported() ? QAbstractItemView::ExtendedSelection
                                                               : QAbstractItemView::SingleSelection);
}

void TzQtTree::Place(const QRect& area) {
  const QWidget* parent = view->parentWidget();
  TzQtMirror::Place(parent != nullptr ? area.intersected(parent->rect()) : area);
}

void TzQtTree::NodeChanged(UI_Node& node, UI_Change change) {
  TzQtMirror* control = mirrors.Find(node);
  if (control != nullptr && change == UI_Change::State) {
    control->Refresh();
  } else if (&node != &tree || change != UI_Change::Frame) {
    Schedule();
  }
}

void TzQtTree::Schedule() {
  if (isScheduled || isUpdating) return;
  isScheduled = true;
  QTimer::singleShot(0, &connections, [this] {
    if (isScheduled) Update();
  });
}

void TzQtTree::Update() {
  if (isUpdating || GetWidget() == nullptr) return;
  isScheduled = false;
  const QScopedValueRollback<bool> updating(isUpdating, true);
  Refresh();
  model.Update();
  ShowColumns();
  ShowExpansion();
  ShowSelection();
  ShowScrollPosition();
  ShowCells();
  // What rows draw may differ though the rows are the same.
  view->viewport()->update();
}

void TzQtTree::ShowColumns() {
  for (std::size_t column = 0; column + 1 < tree.GetNumberOfColumns(); ++column) {
    view->setColumnWidth(static_cast<int>(column), static_cast<int>(tree.GetColumnWidth(column)));
  }
}

void TzQtTree::ShowExpansion() {
  const std::vector<QModelIndex> parents = model.ListParents();
  // A plain list needs no room for what expands rows.
  view->setRootIsDecorated(!parents.empty());
  bool isHeld = false;
  for (const QModelIndex& index : parents) {
    const bool isExpanded = model.GetRow(index)->IsExpanded();
    if (view->isExpanded(index) == isExpanded) continue;
    if (!isHeld) view->HoldLayout();
    isHeld = true;
    view->setExpanded(index, isExpanded);
  }
}

// Qt's own list of selected rows costs the square of its ranges.
std::vector<UI_RowPtr> TzQtTree::ListRowsSelectedInQt() const {
  std::vector<UI_RowPtr> rows;
  for (const QItemSelectionRange& range : view->selectionModel()->selection()) {
    for (int place = range.top(); place <= range.bottom(); ++place) {
      const UI_RowPtr row = model.GetRow(model.index(place, 0, range.parent()));
      if (row != nullptr && row->GetTree() == &tree && row->IsSelectable()) rows.push_back(row);
    }
  }
  return rows;
}

void TzQtTree::ShowSelection() {
  QItemSelectionModel* selection = view->selectionModel();
  const std::vector<UI_RowPtr> rows = tree.GetSelectedRowsSortByRowIndex();
  const std::vector<UI_RowPtr> shown = ListRowsSelectedInQt();
  if (shown.size() == rows.size() && std::ranges::all_of(shown, &UI_MultiColumnTreeRow::IsSelected)) return;
  // Neighbours are joined: Qt's selections cost by their ranges.
  QItemSelection wanted;
  for (const UI_RowPtr& row : rows) {
    const QModelIndex index = model.GetIndex(*row);
    if (!wanted.isEmpty() && wanted.back().parent() == index.parent() &&
        wanted.back().bottom() + 1 == index.row()) {
      wanted.back() = QItemSelectionRange(wanted.back().topLeft(), index);
    } else {
      wanted.append(QItemSelectionRange(index));
    }
  }
  selection->select(wanted, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
  if (rows.size() != 1) return;
  selection->setCurrentIndex(model.GetIndex(*rows.front()), QItemSelectionModel::NoUpdate);
}

void TzQtTree::ShowScrollPosition() {
  view->LayOutNow();
  // Rows that come or go leave the person's place as it is; only the program's own scrolling moves it.
  if (tree.GetScrollPosition() != shownScrollPosition) {
    view->verticalScrollBar()->setValue(static_cast<int>(tree.GetScrollPosition()));
  }
  // Qt doesn't scroll past the last full page.
  const auto shown = static_cast<std::size_t>(view->verticalScrollBar()->value());
  if (tree.GetScrollPosition() != shown) tree.ScrollTo(shown);
  shownScrollPosition = tree.GetScrollPosition();
}

std::vector<TzQtTree::Cell> TzQtTree::ListCellsInView() const {
  std::vector<Cell> list;
  const std::vector<UI_RowPtr> rows = tree.GetRowsInView();
  for (const UI_RowPtr& row : rows) {
    if (!row->HasCellViews()) continue;
    for (std::size_t column = 0; column < tree.GetNumberOfColumns(); ++column) {
      const QModelIndex index = model.GetIndex(*row, static_cast<int>(column));
      if (!view->visualRect(index).isEmpty()) list.push_back({row->GetCellView(column), nullptr, index});
    }
  }
  return list;
}

void TzQtTree::ShowCells() {
  const std::vector<Cell> wanted = ListCellsInView();
  std::map<const UI_Node*, Cell> kept;
  for (Cell cell : wanted) {
    if (const auto known = cells.find(cell.node.get()); known != cells.end()) {
      cell.widget = known->second.widget;
      cells.erase(known);
    } else {
      cell.widget = new QWidget(view->viewport());
    }
    kept[cell.node.get()] = cell;
  }
  for (const auto& [node, cell] : cells) {
    mirrors.DropBelow(*node);
    cell.widget->hide();
    cell.widget->deleteLater();
  }
  cells = std::move(kept);
  mirrors.DropStrays(tree);
  QWidget* before = view;
  for (const Cell& each : wanted) {
    const Cell& cell = cells.at(each.node.get());
    const QRect area = view->visualRect(cell.index);
    cell.widget->setGeometry(area);
    const TzReal left = area.left();
    const TzReal top = area.top();
    cell.node->SetFrame({left, top, left + area.width(), top + area.height()});
    mirrors.MakeBelow(*cell.node, *cell.widget);
    ColorTexts(cell);
    PlaceControls(cell);
    cell.widget->show();
    for (const UI_NodePtr& control : cell.node->GetChildren()) {
      TzQtMirror* mirror = mirrors.Find(*control);
      QWidget* focused = mirror != nullptr ? mirror->GetFocusWidget() : nullptr;
      if (focused == nullptr) continue;
      focused->installEventFilter(view);
      QWidget::setTabOrder(before, focused);
      before = focused;
    }
  }
}

void TzQtTree::ColorTexts(const Cell& cell) const {
  const bool isSelected = model.GetRow(cell.index)->IsSelected();
  for (const UI_NodePtr& control : cell.node->GetChildren()) {
    const TzQtMirror* mirror = mirrors.Find(*control);
    if (mirror == nullptr || control->GetKind() != UI_NodeKind::StaticText) continue;
    mirror->GetWidget()->setForegroundRole(isSelected ? QPalette::HighlightedText : QPalette::Text);
  }
}

void TzQtTree::PlaceControls(const Cell& cell) {
  constexpr int kGap = 4;
  const int textIndent = view->style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, view) + 1;
  std::vector<UI_NodePtr> controls;
  for (const UI_NodePtr& control : cell.node->GetChildren()) {
    if (mirrors.Find(*control) != nullptr) controls.push_back(control);
  }
  std::ranges::stable_sort(controls, {}, [](const UI_NodePtr& node) { return node->GetFrame().left; });
  const QRect line = cell.widget->rect();
  // From the right, so that each knows how far it may go.
  int limit = line.width() - kGap;
  for (auto each = controls.rbegin(); each != controls.rend(); ++each) {
    const UI_Node& node = **each;
    TzQtMirror& mirror = *mirrors.Find(node);
    const QSize size = GetControlSize(mirror, line.height());
    // In line with what other rows draw.
    const int indent = node.GetKind() == UI_NodeKind::StaticText ? textIndent : 0;
    const int left =
        std::max(std::min(static_cast<int>(node.GetFrame().left) + indent, limit - size.width()), 0);
    const QRect place(left, (line.height() - size.height()) / 2,
                      std::max(std::min(size.width(), limit - left), 0), size.height());
    mirror.Place(QStyle::visualRect(view->layoutDirection(), line, place));
    mirror.GetWidget()->setVisible(node.IsVisible());
    limit = left - kGap;
  }
}

std::vector<QWidget*> TzQtTree::GetFocusWidgets() const {
  std::vector<QWidget*> widgets{view};
  for (const Cell& cell : ListCellsInView()) {
    for (const UI_NodePtr& control : cell.node->GetChildren()) {
      const TzQtMirror* mirror = mirrors.Find(*control);
      QWidget* focused = mirror != nullptr ? mirror->GetFocusWidget() : nullptr;
      if (focused != nullptr) widgets.push_back(focused);
    }
  }
  return widgets;
}

void TzQtTree::EnterSelection() {
  if (isUpdating) return;
  tree.SelectRows(ListRowsSelectedInQt());
}

void TzQtTree::EnterExpansion(const QModelIndex& index) {
  if (isUpdating) return;
  const UI_RowPtr row = model.GetRow(index);
  row->SetExpanded(view->isExpanded(index));
}

void TzQtTree::EnterScrollPosition(int position) {
  if (isUpdating) return;
  {
    const QScopedValueRollback<bool> updating(isUpdating, true);
    tree.ScrollTo(static_cast<std::size_t>(std::max(position, 0)));
    shownScrollPosition = tree.GetScrollPosition();
  }
  if (isScheduled) return;
  const QScopedValueRollback<bool> updating(isUpdating, true);
  ShowCells();
}

void TzQtTree::EnterPress(const QObject& widget) {
  const auto pressed = std::ranges::find_if(cells, [&](const auto& each) {
    return each.second.widget == &widget ||
           each.second.widget->isAncestorOf(qobject_cast<const QWidget*>(&widget));
  });
  if (pressed == cells.end()) return;
  const UI_RowPtr row = model.GetRow(pressed->second.index);
  if (row == nullptr || row->GetTree() != &tree || row->IsSelected() || !row->IsSelectable()) return;
  tree.SelectRows({row});
}
