// SPDX-License-Identifier: Apache-2.0
#include "core/PlexoSCOManifestList.h"

#include <iterator>

void PlexoSCOManifestList::Append(const PlexoSCOManifest& manifest) {
  records.push_back(manifest);
  places.emplace(manifest.folderPath, std::prev(records.end()));
  // An empty index of a list that isn't empty stays so: it is made by the next read.
  if (indexed.size() + 1 == records.size()) indexed.push_back(&records.back());
}

void PlexoSCOManifestList::RemoveFirst(const TzString& folderPath) {
  const auto place = places.lower_bound(folderPath);
  if (place == places.end() || place->first != folderPath) return;
  records.erase(place->second);
  places.erase(place);
  indexed.clear();
}

void PlexoSCOManifestList::Clear() {
  indexed.clear();
  places.clear();
  records.clear();
}

const PlexoSCOManifest* PlexoSCOManifestList::At(std::size_t index) const {
  if (indexed.size() != records.size()) {
    indexed.clear();
    indexed.reserve(records.size());
    for (const PlexoSCOManifest& record : records) indexed.push_back(&record);
  }
  return index < indexed.size() ? indexed[index] : nullptr;
}
