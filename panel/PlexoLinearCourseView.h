// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "panel/IPlexoLinearCourseHandler.h"
#include "panel/PlexoCourseTree.h"

/// The list of a flat course: a row for each SCO, in the course's order. Holds no data but its rows; what the
/// author does goes to the handler.
class PlexoLinearCourseView : public PlexoCourseTree {
 public:
  /// The handler outlives the view.
  explicit PlexoLinearCourseView(IPlexoLinearCourseHandler* courseHandler) : handler(courseHandler) {}

  void AddRow(const TzString& scoName);
  void RemoveSelection() override;

 protected:
  void SelectionChanged() override;
  void RowMoved(std::int32_t from, std::int32_t to) override;
  [[nodiscard]] TzString GetDrawnText(const kelpui::controls::UI_MultiColumnTreeRow& row) const override;

 private:
  IPlexoLinearCourseHandler* handler;
};
