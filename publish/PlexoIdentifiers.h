// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string_view>

#include "host/text/TzString.h"

/// What an identifier names.
enum class ItemKind : std::uint32_t {
  Item = 0,
  Content = 1,
  PreTest = 2,
  PostTest = 3,
  Module = 4,
  ModuleObjective = 5
};

/// Says that there is no index.
inline constexpr std::uint32_t kNoIndex = 0xFFFFFFFF;

/// The kind's name, with "_" and the number behind it if the kind is numbered and an index is given:
/// "Item_3" for index 2. Pretests and post-tests are never numbered.
TzString MakeEntityName(std::uint32_t index, ItemKind kind);

/// prefix "-", then "Module_n_" if a module index is given, then the entity name. Indices count from 0,
/// numbers from 1. All identifiers of a manifest come from places in the course, so none can clash with
/// another.
///
/// The module objective has no name and mostly no index: "obj-global-Module_2_" ends in its underscore.
TzString MakeIdentifier(std::string_view prefix, std::uint32_t index, std::uint32_t moduleIndex,
                        ItemKind kind);
