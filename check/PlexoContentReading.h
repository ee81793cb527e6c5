// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "check/PlexoCheckedPackage.h"
#include "check/PlexoFindingList.h"
#include "check/PlexoScriptWords.h"

/// A script or page of a package.
struct PlexoScript {
  const TzZipEntry* entry = nullptr;
  PlexoScriptWords words;
  /// The settings of one of our launch pages only: the address of the content's page, relative to the folder
  /// of the launch page.
  std::string content;
};

/// Reads the content of a package once, on all cores, piece by piece.
///
/// Guarantees: every file that is read was checked against its size and CRC-32, and each damaged one is a
/// finding. An archive that unpacks to far more than its size isn't read.
class PlexoContentReading {
 public:
  enum class Extent { Everything, Scripts };

  /// True for the name of a script or page.
  [[nodiscard]] static bool IsScript(std::string_view name);

  /// `knownDamage` is a file whose damage was found before; null if there is none.
  PlexoContentReading(PlexoCheckedPackage& checked, Extent extent, PlexoFindingList& findings,
                      const TzZipEntry* knownDamage = nullptr);

  /// What kept the content from being read: a fault of the machine, or a stop that was asked for.
  [[nodiscard]] const TzZipFailure& GetFailure() const { return failure; }
  /// False if the archive wasn't read, or not to its end.
  [[nodiscard]] bool IsRead() const { return isRead; }
  /// In the archive's order.
  [[nodiscard]] const std::vector<PlexoScript>& GetScripts() const { return scripts; }

 private:
  [[nodiscard]] static TzZipFailure ReadScript(const TzZipInspection::Reader& read, bool isLaunchSettings,
                                               PlexoScript& script);
  [[nodiscard]] bool IsLaunchSettings(const TzZipEntry& entry) const;

  const PlexoCheckedPackage& package;
  bool isRead = false;
  TzZipFailure failure;
  std::vector<PlexoScript> scripts;
};
