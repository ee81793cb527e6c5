// SPDX-License-Identifier: Apache-2.0
#include "publish/PlexoIdentifiers.h"

#include <string>

namespace {

struct EntityName {
  const char* name;
  bool numbered;
};

/// In the order of `ItemKind`.
constexpr EntityName kEntityNames[] = {
    {"Item", true}, {"Content", true}, {"PreTest", false}, {"PostTest", false}, {"Module", true}, {"", true},
};

/// "_" and the number of an index.
std::string Number(std::uint32_t index) { return "_" + std::to_string(std::uint64_t{index} + 1); }

std::string EntityNameOf(std::uint32_t index, ItemKind kind) {
  const auto& [name, numbered] = kEntityNames[static_cast<std::size_t>(kind)];
  return numbered && index != kNoIndex ? name + Number(index) : name;
}

}  // namespace

TzString MakeEntityName(std::uint32_t index, ItemKind kind) { return EntityNameOf(index, kind); }

TzString MakeIdentifier(std::string_view prefix, std::uint32_t index, std::uint32_t moduleIndex,
                        ItemKind kind) {
  std::string identifier = std::string(prefix) + "-";
  if (moduleIndex != kNoIndex) identifier += "Module" + Number(moduleIndex) + "_";
  return identifier + EntityNameOf(index, kind);
}
