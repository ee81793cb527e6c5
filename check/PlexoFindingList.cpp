// SPDX-License-Identifier: Apache-2.0
#include "check/PlexoFindingList.h"

#include <algorithm>
#include <tuple>
#include <utility>

void PlexoFindingList::Add(PlexoFindingId id, std::vector<std::string> words) {
  findings.push_back({id, {}, std::move(words), {}});
}

void PlexoFindingList::AddFile(PlexoFindingId id, std::string file, std::vector<std::string> words) {
  findings.push_back({id, {std::move(file), 0, {}}, std::move(words), {}});
}

void PlexoFindingList::AddElement(PlexoFindingId id, const PlexoManifestElement& element,
                                  std::vector<std::string> words) {
  AddInManifest(id, element.line, element.GetPath(), std::move(words));
}

void PlexoFindingList::AddPlayed(PlexoFindingId id, const PlexoManifestElement& element,
                                 std::vector<std::string> words, std::string witness) {
  AddInManifest(id, element.line, element.GetPath(), std::move(words));
  findings.back().witness = std::move(witness);
}

void PlexoFindingList::AddLine(PlexoFindingId id, int line, std::vector<std::string> words) {
  AddInManifest(id, line, {}, std::move(words));
}

void PlexoFindingList::AddInManifest(PlexoFindingId id, int line, std::string element,
                                     std::vector<std::string> words) {
  constexpr std::size_t kMostWordBytes = 1000;
  for (std::string& word : words) word = Shorten(word, kMostWordBytes);
  findings.push_back({id, {kManifestName, line, std::move(element)}, std::move(words), {}});
}

std::string PlexoFindingList::Shorten(std::string_view text, std::size_t mostBytes) {
  if (text.size() <= mostBytes) return std::string(text);
  std::size_t end = mostBytes;
  while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U) --end;
  return std::string(text.substr(0, end)) + "...";
}

std::vector<PlexoFinding> PlexoFindingList::TakeSorted() {
  std::stable_sort(findings.begin(), findings.end(), [](const PlexoFinding& left, const PlexoFinding& right) {
    return std::tie(left.id, left.place.line) < std::tie(right.id, right.place.line);
  });
  return std::move(findings);
}
