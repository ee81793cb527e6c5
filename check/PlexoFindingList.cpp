// SPDX-License-Identifier: Apache-2.0
#include "check/PlexoFindingList.h"

#include <algorithm>
#include <tuple>
#include <utility>

void PlexoFindingList::Add(PlexoFindingId id, std::vector<std::string> words) {
  findings.push_back({id, {}, std::move(words)});
}

void PlexoFindingList::AddFile(PlexoFindingId id, std::string file, std::vector<std::string> words) {
  findings.push_back({id, {std::move(file), 0, {}}, std::move(words)});
}

void PlexoFindingList::AddElement(PlexoFindingId id, const PlexoManifestElement& element,
                                  std::vector<std::string> words) {
  findings.push_back({id, {kManifestName, element.line, element.GetPath()}, std::move(words)});
}

void PlexoFindingList::AddLine(PlexoFindingId id, int line, std::vector<std::string> words) {
  findings.push_back({id, {kManifestName, line, {}}, std::move(words)});
}

std::vector<PlexoFinding> PlexoFindingList::TakeSorted() {
  std::stable_sort(findings.begin(), findings.end(), [](const PlexoFinding& left, const PlexoFinding& right) {
    return std::tie(left.id, left.place.line) < std::tie(right.id, right.place.line);
  });
  return std::move(findings);
}
