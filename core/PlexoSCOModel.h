// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <vector>

#include "core/PlexoSCOManifest.h"

/// One SCO in its place in the course. A value: copied freely.
struct PlexoSCOModel {
  TzString sourcePath;
  TzString folderPath;
  TzString scoName;
  /// Set for wrapped SWF and PDF files only.
  TzString launchFile;
  /// The course's version when the file was added; set for wrapped files only.
  TzString scormVersion;
  /// Carried through every copy for the host's use; nothing here fills or reads them.
  std::array<TzString, 6> reservedTexts;
  std::array<bool, 4> reservedFlags{};
  std::vector<TzString> files;
  PlexoSCOManifest manifest;

  /// True for a slot that holds no SCO.
  [[nodiscard]] bool IsEmpty() const { return sourcePath.IsEmpty(); }

  bool operator==(const PlexoSCOModel&) const = default;
};
