// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <utility>

#include "host/kelpui/UI_MultiColumnTreeRow.h"
#include "host/text/TzString.h"

/// The row of a SCO. Drawn by the view; it has no controls.
class PlexoLinearCourseViewRow : public kelpui::controls::UI_MultiColumnTreeRow {
 public:
  explicit PlexoLinearCourseViewRow(TzString scoName) : name(std::move(scoName)) {}

  [[nodiscard]] const TzString& GetName() const { return name; }

 private:
  TzString name;
};
