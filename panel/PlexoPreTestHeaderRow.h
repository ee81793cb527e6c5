// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "panel/PlexoTestHeaderRow.h"

class PlexoPreTestHeaderRow : public PlexoTestHeaderRow {
 public:
  PlexoPreTestHeaderRow(std::shared_ptr<const TzString> key, IPlexoPreContentPostCourseHandler* courseHandler)
      : PlexoTestHeaderRow(std::move(key), courseHandler, "PreTest", "kPlexoUIAddPreTestTooltip") {}

 private:
  void AddTest() override { GetHandler().OnAddPreTest(GetModuleKey()); }
};
