// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

#include "check/PlexoCheckedPackage.h"
#include "check/PlexoFindingList.h"

/// The hygiene of the archive: where its manifest is, and whether every entry can be unpacked, everywhere,
/// under its name.
class PlexoArchiveCheck {
 public:
  /// The system that leaves a file of this name behind; empty for any other file.
  [[nodiscard]] static std::string_view GetLeaver(std::string_view name);

  /// The faults for which the archive as a whole, or an entry, can't be unpacked.
  static void AddFaults(const PlexoCheckedPackage& package, PlexoFindingList& findings);

  static void Run(const PlexoCheckedPackage& package, PlexoFindingList& findings);
};
