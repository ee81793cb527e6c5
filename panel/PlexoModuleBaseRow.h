// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <memory>
#include <utility>

#include "host/kelpui/UI_MultiColumnTreeRow.h"
#include "host/kelpui/UI_SubView.h"
#include "host/text/TzString.h"
#include "panel/IPlexoPreContentPostCourseHandler.h"

/// A row that belongs to a module of the course. Its controls are made when it is first seen: a course has
/// many more rows than a screen.
class PlexoModuleBaseRow : public kelpui::controls::UI_MultiColumnTreeRow {
 public:
  /// The handler outlives the row.
  PlexoModuleBaseRow(std::shared_ptr<const TzString> key, IPlexoPreContentPostCourseHandler* courseHandler)
      : moduleKey(std::move(key)), handler(courseHandler) {}

  [[nodiscard]] const TzString& GetModuleKey() const { return *moduleKey; }

  /// Makes the row's controls; nothing happens if it has them.
  virtual void CreateCellViews() = 0;

 protected:
  using LayOut = std::function<void(TzReal width, TzReal height)>;

  [[nodiscard]] IPlexoPreContentPostCourseHandler& GetHandler() const { return *handler; }
  /// Gives the cell's controls their places, now and whenever the cell has another size.
  void KeepLaidOut(kelpui::controls::UI_SubView& cell, const LayOut& layOut);

 private:
  std::shared_ptr<const TzString> moduleKey;
  IPlexoPreContentPostCourseHandler* handler;
};
