// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "check/PlexoFinding.h"
#include "check/PlexoManifestElement.h"

/// Collects what the checks find.
class PlexoFindingList {
 public:
  static constexpr const char* kManifestName = "imsmanifest.xml";

  /// About the package as a whole.
  void Add(PlexoFindingId id, std::vector<std::string> words);
  /// About an entry.
  void AddFile(PlexoFindingId id, std::string file, std::vector<std::string> words);
  /// About an element of the manifest.
  void AddElement(PlexoFindingId id, const PlexoManifestElement& element, std::vector<std::string> words);
  /// About a line of the manifest; 0 for the manifest as a whole.
  void AddLine(PlexoFindingId id, int line, std::vector<std::string> words);

  [[nodiscard]] const std::vector<PlexoFinding>& Get() const { return findings; }
  /// By id, then line; else as they were found.
  [[nodiscard]] std::vector<PlexoFinding> TakeSorted();

 private:
  std::vector<PlexoFinding> findings;
};
