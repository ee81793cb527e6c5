// SPDX-License-Identifier: Apache-2.0
#include "panel/PlexoLinearCourseView.h"

#include "panel/PlexoLinearCourseViewRow.h"

using kelpui::controls::UI_MultiColumnTreeRow;

void PlexoLinearCourseView::AddRow(const TzString& scoName) {
  AppendRow(new PlexoLinearCourseViewRow(scoName));
}

void PlexoLinearCourseView::RemoveSelection() {
  handler->OnLinearSCOsRemoved(GetSelectedIndices());
  RemoveRows(GetSelectedRows());
}

void PlexoLinearCourseView::SelectionChanged() { handler->OnLinearSelectionChanged(); }

void PlexoLinearCourseView::RowMoved(std::int32_t from, std::int32_t to) {
  handler->OnLinearSCOsSwapped(from, to);
}

TzString PlexoLinearCourseView::GetDrawnText(const UI_MultiColumnTreeRow& row) const {
  const auto* sco = dynamic_cast<const PlexoLinearCourseViewRow*>(&row);
  return sco != nullptr ? sco->GetName() : TzString();
}
