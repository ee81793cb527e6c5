// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "panel/PlexoModuleBaseRow.h"

/// The row below a header that says what was added there. Drawn by the view; it has no controls.
class PlexoCourseNameRow : public PlexoModuleBaseRow {
 public:
  enum class Kind : std::uint8_t { PreTest = 0, Content = 1, PostTest = 2 };

  PlexoCourseNameRow(std::shared_ptr<const TzString> key, IPlexoPreContentPostCourseHandler* courseHandler,
                     Kind rowKind)
      : PlexoModuleBaseRow(std::move(key), courseHandler), kind(rowKind) {}

  [[nodiscard]] const TzString& GetName() const { return name; }
  void SetName(const TzString& text) { name = text; }
  [[nodiscard]] Kind GetKind() const { return kind; }
  void CreateCellViews() override {}

 private:
  TzString name;
  Kind kind;
};
