// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "host/kelpui/UI_NumberEdit.h"
#include "host/kelpui/UI_StaticText.h"
#include "host/kelpui/UI_TextEdit.h"
#include "panel/PlexoModuleBaseRow.h"

/// The row of a module: its title and its share of the course in percent, both to be edited. Any title is
/// accepted, also an empty one or one that another module has.
class PlexoModuleViewRow : public PlexoModuleBaseRow {
 public:
  /// The title is "Module_" and the next number of a count of its own, which may differ from the key's.
  PlexoModuleViewRow(std::shared_ptr<const TzString> key, IPlexoPreContentPostCourseHandler* courseHandler);

  [[nodiscard]] const TzString& GetTitle() const { return title; }
  void CreateCellViews() override;

 private:
  void TitleEntered();
  void WeightageEntered();

  TzString title;
  // Null until the row is first seen.
  boost::intrusive_ptr<kelpui::controls::UI_TextEdit> titleEdit;
  boost::intrusive_ptr<kelpui::controls::UI_StaticText> weightageText;
  boost::intrusive_ptr<kelpui::controls::UI_NumberEdit> weightageEdit;
};
