// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <list>
#include <map>
#include <vector>

#include "core/PlexoSCOManifest.h"

/// Records of SCOs in the order of their adding, found by their folders.
///
/// Costs, with n records: appending and removing take about log n steps, whatever was removed before. Reading
/// by index is constant after the first read that follows a removal, which takes n.
class PlexoSCOManifestList {
 public:
  PlexoSCOManifestList() = default;
  PlexoSCOManifestList(const PlexoSCOManifestList&) = delete;
  PlexoSCOManifestList& operator=(const PlexoSCOManifestList&) = delete;

  void Append(const PlexoSCOManifest& manifest);
  /// The first record with this folder path goes; nothing happens if there is none.
  void RemoveFirst(const TzString& folderPath);
  void Clear();

  [[nodiscard]] std::size_t Count() const { return records.size(); }
  /// Null past the end.
  [[nodiscard]] const PlexoSCOManifest* At(std::size_t index) const;
  [[nodiscard]] std::vector<PlexoSCOManifest> GetAll() const { return {records.begin(), records.end()}; }

 private:
  using Records = std::list<PlexoSCOManifest>;

  Records records;
  /// Records of one folder follow each other in the order of their adding.
  std::multimap<TzString, Records::iterator> places;
  /// All records in order, or none where they have to be looked up anew.
  mutable std::vector<const PlexoSCOManifest*> indexed;
};
