// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "check/PlexoFinding.h"
#include "check/PlexoManifestElement.h"

/// Collects what the checks find. What is found in the manifest keeps only the start of words that are longer
/// than anybody reads: memory mustn't grow with the length of a name times the number of findings about it.
class PlexoFindingList {
 public:
  static constexpr const char* kManifestName = "imsmanifest.xml";

  /// About the package as a whole.
  void Add(PlexoFindingId id, std::vector<std::string> words);
  /// About an entry.
  void AddFile(PlexoFindingId id, std::string file, std::vector<std::string> words);
  /// About an element of the manifest.
  void AddElement(PlexoFindingId id, const PlexoManifestElement& element, std::vector<std::string> words);
  /// The same, with the script that shows it.
  void AddPlayed(PlexoFindingId id, const PlexoManifestElement& element, std::vector<std::string> words,
                 std::string witness);
  /// About a line of the manifest; 0 for the manifest as a whole.
  void AddLine(PlexoFindingId id, int line, std::vector<std::string> words);

  [[nodiscard]] const std::vector<PlexoFinding>& Get() const { return findings; }
  /// By id, then line; else as they were found.
  [[nodiscard]] std::vector<PlexoFinding> TakeSorted();

  /// The start of a text in UTF-8 that is longer than this, for a message.
  static std::string Shorten(std::string_view text, std::size_t mostBytes);

 private:
  void AddInManifest(PlexoFindingId id, int line, std::string element, std::vector<std::string> words);

  std::vector<PlexoFinding> findings;
};
