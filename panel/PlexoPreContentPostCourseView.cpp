// SPDX-License-Identifier: Apache-2.0
#include "panel/PlexoPreContentPostCourseView.h"

#include "panel/PlexoContentHeaderRow.h"
#include "panel/PlexoModuleViewRow.h"
#include "panel/PlexoPostTestHeaderRow.h"
#include "panel/PlexoPreTestHeaderRow.h"

using kelpui::controls::UI_MultiColumnTreeRow;
using kelpui::controls::UI_RowPtr;
using Kind = PlexoCourseNameRow::Kind;

PlexoPreContentPostCourseView::PlexoPreContentPostCourseView(IPlexoPreContentPostCourseHandler* courseHandler,
                                                             bool withPreTest)
    : handler(courseHandler), hasPreTest(withPreTest) {
  SetRowVisibilityChangedCallback([](UI_MultiColumnTreeRow& row, bool isSeen) {
    auto* moduleRow = dynamic_cast<PlexoModuleBaseRow*>(&row);
    if (isSeen && moduleRow != nullptr) moduleRow->CreateCellViews();
  });
}

void PlexoPreContentPostCourseView::AddModuleRow(const TzString& key) {
  const auto shared = std::make_shared<const TzString>(key);
  const auto names = [&](Kind part) { return UI_RowPtr(new PlexoCourseNameRow(shared, handler, part)); };
  const boost::intrusive_ptr<PlexoModuleViewRow> moduleRow(new PlexoModuleViewRow(shared, handler));
  AppendRow(moduleRow);
  if (hasPreTest) AppendPart(moduleRow, new PlexoPreTestHeaderRow(shared, handler), names(Kind::PreTest));
  AppendPart(moduleRow, new PlexoContentHeaderRow(shared, handler), names(Kind::Content));
  AppendPart(moduleRow, new PlexoPostTestHeaderRow(shared, handler), names(Kind::PostTest));
  handler->OnModuleAdded(key, moduleRow->GetTitle());
}

void PlexoPreContentPostCourseView::AppendPart(const UI_RowPtr& moduleRow, const UI_RowPtr& header,
                                               const UI_RowPtr& names) {
  for (const UI_RowPtr& row : {header, names}) {
    row->SetSelectable(false);
    AppendRow(row, moduleRow);
  }
}

void PlexoPreContentPostCourseView::RemoveSelection() {
  const std::vector<UI_RowPtr> going = GetSelectedRows();
  for (const UI_RowPtr& row : going) {
    const auto* moduleRow = dynamic_cast<const PlexoModuleViewRow*>(row.get());
    if (moduleRow != nullptr) handler->OnModuleRemoved(moduleRow->GetModuleKey());
  }
  RemoveRows(going);
}

void PlexoPreContentPostCourseView::SetPreTestName(const TzString& key, const TzString& text) {
  ShowNames(key, Kind::PreTest, text);
}

void PlexoPreContentPostCourseView::SetContentName(const TzString& key, const TzString& text) {
  ShowNames(key, Kind::Content, text);
}

void PlexoPreContentPostCourseView::SetPostTestName(const TzString& key, const TzString& text) {
  ShowNames(key, Kind::PostTest, text);
}

void PlexoPreContentPostCourseView::ShowNames(const TzString& key, Kind part, const TzString& text) {
  for (std::size_t index = 0; index < CountRows(); ++index) {
    const UI_RowPtr row = GetRow(static_cast<std::int64_t>(index));
    const auto* moduleRow = dynamic_cast<const PlexoModuleViewRow*>(row.get());
    if (moduleRow == nullptr || moduleRow->GetModuleKey() != key) continue;
    for (std::size_t child = 0; child < row->CountChildRows(); ++child) {
      auto* names = dynamic_cast<PlexoCourseNameRow*>(row->GetChildRow(child).get());
      if (names != nullptr && names->GetKind() == part) names->SetName(text);
    }
    Invalidate();
  }
}

void PlexoPreContentPostCourseView::SelectionChanged() { handler->OnSelectionChanged(); }

void PlexoPreContentPostCourseView::RowMoved(std::int32_t from, std::int32_t to) {
  handler->OnModulesSwapped(from, to);
}

TzString PlexoPreContentPostCourseView::GetDrawnText(const UI_MultiColumnTreeRow& row) const {
  const auto* names = dynamic_cast<const PlexoCourseNameRow*>(&row);
  return names != nullptr ? names->GetName() : TzString();
}
