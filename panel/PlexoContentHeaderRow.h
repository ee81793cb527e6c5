// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "host/kelpui/UI_Checkbox.h"
#include "host/kelpui/UI_StaticText.h"
#include "panel/PlexoAddButton.h"
#include "panel/PlexoModuleBaseRow.h"

/// What stands above a module's contents: a label, whether they are to be taken in order, and the button that
/// adds contents.
class PlexoContentHeaderRow : public PlexoModuleBaseRow {
 public:
  using PlexoModuleBaseRow::PlexoModuleBaseRow;

  void CreateCellViews() override;

 private:
  void ForcedSequenceEntered();

  // Null until the row is first seen.
  boost::intrusive_ptr<kelpui::controls::UI_StaticText> text;
  boost::intrusive_ptr<kelpui::controls::UI_Checkbox> forcedSequence;
  boost::intrusive_ptr<PlexoAddButton> addButton;
};
