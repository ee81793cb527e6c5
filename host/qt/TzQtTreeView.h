// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QTreeView>
#include <functional>

/// Tells what Qt tells nobody but those who derive, and selects runs of rows as few ranges: Qt would make one
/// for the children of each row between them, though nobody can select those, and takes the square of that.
class TzQtTreeView : public QTreeView {
 public:
  explicit TzQtTreeView(QWidget* parent) : QTreeView(parent) {}

  std::function<void()> viewportChanged;
  /// Called where this is an event filter of the widget.
  std::function<void(const QObject& widget)> pressedInCell;

  /// The next expansions are laid out all at once.
  void HoldLayout() { scheduleDelayedItemsLayout(); }
  void LayOutNow() { executeDelayedItemsLayout(); }

  void selectAll() override;

 protected:
  // Where Shift is held, or the mouse drawn over rows.
  void setSelection(const QRect& area, QItemSelectionModel::SelectionFlags command) override;
  void resizeEvent(QResizeEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  /// An invalid last one stands for the end.
  void SelectRun(const QModelIndex& first, const QModelIndex& last,
                 QItemSelectionModel::SelectionFlags command);
};
