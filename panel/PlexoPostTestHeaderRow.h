// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "panel/PlexoTestHeaderRow.h"

class PlexoPostTestHeaderRow : public PlexoTestHeaderRow {
 public:
  PlexoPostTestHeaderRow(std::shared_ptr<const TzString> key,
                         IPlexoPreContentPostCourseHandler* courseHandler)
      : PlexoTestHeaderRow(std::move(key), courseHandler, "Post-test", "kPlexoUIAddPostTestTooltip") {}

 private:
  void AddTest() override { GetHandler().OnAddPostTest(GetModuleKey()); }
};
