// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

#include "host/kelpui/UI_RowList.h"
#include "host/kelpui/UI_SubView.h"

namespace kelpui::controls {

class UI_MultiColumnTree;
class UI_MultiColumnTreeRow;
using UI_RowPtr = boost::intrusive_ptr<UI_MultiColumnTreeRow>;

/// A row of a tree, to derive rows with a content from. A row that leaves its tree keeps the rows below it.
class UI_MultiColumnTreeRow : public UI_RefCounted {
 public:
  UI_MultiColumnTreeRow() = default;

  /// Null while the row is in none.
  [[nodiscard]] UI_MultiColumnTree* GetTree() const { return tree; }
  /// Null at the top level.
  [[nodiscard]] UI_MultiColumnTreeRow* GetParentRow() const { return parentRow; }
  [[nodiscard]] std::size_t CountChildRows() const { return children.CountRows(); }
  /// Null past the end.
  [[nodiscard]] UI_RowPtr GetChildRow(std::size_t index) const { return children.GetRow(index); }

  /// A row that isn't selectable is passed over by every selection. To be set before it is selected.
  void SetSelectable(bool selectable) { isSelectable = selectable; }
  [[nodiscard]] bool IsSelectable() const { return isSelectable; }
  [[nodiscard]] bool IsSelected() const { return isSelected; }

  /// Whether the rows below show; true at first.
  [[nodiscard]] bool IsExpanded() const { return isExpanded; }
  void SetExpanded(bool expanded);

  /// The container for the controls of one cell, made by the first call. It has the size of the cell while
  /// the row can be seen.
  boost::intrusive_ptr<UI_SubView> GetCellView(std::size_t column);
  /// Whether a cell view has been asked for.
  [[nodiscard]] bool HasCellViews() const { return !cellViews.empty(); }

 protected:
  ~UI_MultiColumnTreeRow() override;

 private:
  friend class UI_MultiColumnTree;
  friend class UI_RowList;

  /// The row and what is shown below it.
  [[nodiscard]] std::size_t CountShown() const { return 1 + (isExpanded ? children.CountShown() : 0); }

  UI_RowList::Link link;
  UI_RowList children;
  UI_MultiColumnTree* tree = nullptr;
  UI_MultiColumnTreeRow* parentRow = nullptr;
  bool isSelectable = true;
  bool isSelected = false;
  bool isExpanded = true;
  bool isInView = false;
  std::vector<boost::intrusive_ptr<UI_SubView>> cellViews;
};

}  // namespace kelpui::controls
