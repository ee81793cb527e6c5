// SPDX-License-Identifier: Apache-2.0
#include "publish/PlexoIdentifiers.h"

#include <gtest/gtest.h>

TEST(PlexoIdentifiers, ComeFromPlacesInTheCourse) {
  const struct {
    const char* prefix;
    std::uint32_t index;
    std::uint32_t moduleIndex;
    ItemKind kind;
    const char* identifier;
  } cases[] = {
      {"SCO", 2, kNoIndex, ItemKind::Item, "SCO-Item_3"},
      {"obj-global", 99999, kNoIndex, ItemKind::Item, "obj-global-Item_100000"},
      {"RES", 5, 1, ItemKind::PreTest, "RES-Module_2_PreTest"},
      {"obj-global", kNoIndex, 1, ItemKind::PostTest, "obj-global-Module_2_PostTest"},
      {"obj", 0, 1, ItemKind::Content, "obj-Module_2_Content_1"},
      {"obj-global", kNoIndex, 1, ItemKind::Content, "obj-global-Module_2_Content"},
      {"obj-global", kNoIndex, 1, ItemKind::ModuleObjective, "obj-global-Module_2_"},
  };
  for (const auto& [prefix, index, moduleIndex, kind, identifier] : cases) {
    EXPECT_EQ(MakeIdentifier(prefix, index, moduleIndex, kind), identifier);
  }
  EXPECT_EQ("CLUSTER-" + MakeEntityName(1, ItemKind::Module) + "_content_wrapper",
            "CLUSTER-Module_2_content_wrapper");
}
