// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <vector>

#include "apps/course/CourseDocument.h"
#include "host/kelpui/UI_MultiColumnTree.h"
#include "host/sheets/TzCanvas.h"

/// Where on the screen things of the course are: found by what the sheets call them.
///
/// Whatever isn't there, because the component hasn't made it yet or has let go of it, is null or none.
class CourseScreen {
 public:
  using Tree = kelpui::controls::UI_MultiColumnTree;
  using Row = kelpui::controls::UI_MultiColumnTreeRow;

  /// The component asked for this canvas; dialogs are passed over.
  void NoteCanvas(const TzCanvasPtr& canvas);
  /// Lets go of everything, before the component is unloaded.
  void Forget() { canvases.clear(); }

  /// The panel's and the application bar's. The one made last, if there were several.
  [[nodiscard]] TzCanvas* GetPanel() const;
  [[nodiscard]] TzCanvas* GetBar() const;
  /// The panel's cells.
  [[nodiscard]] TzDataModel* GetCells() const;

  /// None while the template choice shows.
  [[nodiscard]] std::optional<CourseTemplate> GetTemplate() const;
  /// The tree of the template in force; null also before the first file of a flat course.
  [[nodiscard]] Tree* GetTree() const;

  /// Presses the button of this action on the panel or the bar. False if there is none that can be pressed.
  bool Press(const TzString& action) const;

  /// The action that chooses the template, and the cell that is true while it is in force.
  static TzString GetChooseAction(CourseTemplate courseTemplate);
  static TzString GetTypeCell(CourseTemplate courseTemplate);

 private:
  std::vector<TzCanvasPtr> canvases;
};

/// Presses the button of this action below the node, as a person would: one that is hidden or disabled isn't
/// reached. False then.
bool PressBelow(const kelpui::controls::UI_Node& node, const TzString& action);
