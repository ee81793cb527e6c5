// SPDX-License-Identifier: Apache-2.0
#include "host/kelpui/UI_MultiColumnTreeRow.h"

#include "host/kelpui/UI_MultiColumnTree.h"

namespace kelpui::controls {

UI_MultiColumnTreeRow::~UI_MultiColumnTreeRow() {
  for (std::size_t index = 0; index < children.CountRows(); ++index) {
    children.GetRow(index)->parentRow = nullptr;
  }
}

void UI_MultiColumnTreeRow::SetExpanded(bool expanded) {
  if (isExpanded == expanded) return;
  isExpanded = expanded;
  if (tree != nullptr) {
    tree->ShownRowsChanged(this);
    tree->RowsChanged();
  }
}

boost::intrusive_ptr<UI_SubView> UI_MultiColumnTreeRow::GetCellView(std::size_t column) {
  while (cellViews.size() <= column) {
    cellViews.emplace_back(new UI_SubView);
    if (tree != nullptr) tree->AdoptCell(*this, cellViews.size() - 1);
  }
  return cellViews[column];
}

}  // namespace kelpui::controls
