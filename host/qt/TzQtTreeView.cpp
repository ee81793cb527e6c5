// SPDX-License-Identifier: Apache-2.0
#include "host/qt/TzQtTreeView.h"

#include <QEvent>
#include <QHash>
#include <QItemSelection>
#include <algorithm>

void TzQtTreeView::selectAll() {
  if (selectionMode() != ExtendedSelection) return QTreeView::selectAll();
  LayOutNow();
  SelectRun(model()->index(0, 0), {}, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

void TzQtTreeView::setSelection(const QRect& area, QItemSelectionModel::SelectionFlags command) {
  LayOutNow();
  const QModelIndex first = indexAt({area.center().x(), std::min(area.top(), area.bottom())});
  const QModelIndex last = indexAt({area.center().x(), std::max(area.top(), area.bottom())});
  if (!first.isValid() || !last.isValid()) return QTreeView::setSelection(area, command);
  SelectRun(first, last, command);
}

void TzQtTreeView::SelectRun(const QModelIndex& first, const QModelIndex& last,
                             QItemSelectionModel::SelectionFlags command) {
  QItemSelection run;
  QHash<QModelIndex, qsizetype> rangeOfParent;
  for (QModelIndex row = first.siblingAtColumn(0); row.isValid(); row = indexBelow(row)) {
    if (row.flags() & Qt::ItemIsSelectable) {
      const auto known = rangeOfParent.constFind(row.parent());
      if (known != rangeOfParent.constEnd() && run[*known].bottom() + 1 == row.row()) {
        run[*known] = QItemSelectionRange(run[*known].topLeft(), row);
      } else {
        rangeOfParent[row.parent()] = run.size();
        run.append(QItemSelectionRange(row));
      }
    }
    if (row == last.siblingAtColumn(0)) break;
  }
  selectionModel()->select(run, command);
}

void TzQtTreeView::resizeEvent(QResizeEvent* event) {
  QTreeView::resizeEvent(event);
  if (viewportChanged) viewportChanged();
}

bool TzQtTreeView::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::MouseButtonPress && watched != viewport() && pressedInCell) {
    pressedInCell(*watched);
  }
  return QTreeView::eventFilter(watched, event);
}
