// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "host/kelpui/UI_StaticText.h"
#include "panel/PlexoAddButton.h"
#include "panel/PlexoModuleBaseRow.h"

/// What stands above a module's test: a label, and the button that adds the test.
class PlexoTestHeaderRow : public PlexoModuleBaseRow {
 public:
  void CreateCellViews() override;

 protected:
  /// The key is the dictionary's of the button's tooltip.
  PlexoTestHeaderRow(std::shared_ptr<const TzString> key, IPlexoPreContentPostCourseHandler* courseHandler,
                     const char* labelText, const char* addTooltipKey)
      : PlexoModuleBaseRow(std::move(key), courseHandler), label(labelText), tooltipKey(addTooltipKey) {}

  virtual void AddTest() = 0;

 private:
  const char* label;
  const char* tooltipKey;
  // Null until the row is first seen.
  boost::intrusive_ptr<kelpui::controls::UI_StaticText> text;
  boost::intrusive_ptr<PlexoAddButton> addButton;
};
