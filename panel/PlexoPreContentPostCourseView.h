// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "panel/IPlexoPreContentPostCourseHandler.h"
#include "panel/PlexoCourseNameRow.h"
#include "panel/PlexoCourseTree.h"

/// The list of a module course: a row for each module, in the course's order, and below it a header and a row
/// of names for its pretest (where the template has them), its content and its post-test. Only modules can be
/// selected.
///
/// Holds no course; what the author does goes to the handler. The rows aren't read back from the course:
/// while it is edited, their controls show the truth.
class PlexoPreContentPostCourseView : public PlexoCourseTree {
 public:
  /// The handler outlives the view.
  PlexoPreContentPostCourseView(IPlexoPreContentPostCourseHandler* courseHandler, bool withPreTest);

  /// Appends a module and tells the handler of it.
  void AddModuleRow(const TzString& key);
  void RemoveSelection() override;

  // Show what was added to a module, in place of what was shown; a key that has no row is passed over.
  void SetPreTestName(const TzString& key, const TzString& text);
  void SetContentName(const TzString& key, const TzString& text);
  void SetPostTestName(const TzString& key, const TzString& text);

 protected:
  void SelectionChanged() override;
  void RowMoved(std::int32_t from, std::int32_t to) override;
  [[nodiscard]] TzString GetDrawnText(const kelpui::controls::UI_MultiColumnTreeRow& row) const override;

 private:
  /// Appends a header and its row of names below the module's row.
  void AppendPart(const kelpui::controls::UI_RowPtr& moduleRow, const kelpui::controls::UI_RowPtr& header,
                  const kelpui::controls::UI_RowPtr& names);
  void ShowNames(const TzString& key, PlexoCourseNameRow::Kind part, const TzString& text);

  IPlexoPreContentPostCourseHandler* handler;
  bool hasPreTest;
};
