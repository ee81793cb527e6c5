// SPDX-License-Identifier: Apache-2.0
#include "shell/PlexoUIUtils.h"

#include <gtest/gtest.h>

TEST(PlexoUIUtils, KeepsTheLanguageOfTheHost) {
  EXPECT_EQ(PlexoUIUtils::GetPlexoUIUtils(), PlexoUIUtils::GetPlexoUIUtils());
  EXPECT_EQ(PlexoUIUtils::GetLangId(), "");
  PlexoUIUtils::SetLangId("de_DE");
  EXPECT_EQ(PlexoUIUtils::GetLangId(), "de_DE");
  PlexoUIUtils::SetLangId("");
}
