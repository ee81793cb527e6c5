// SPDX-License-Identifier: Apache-2.0
#include "check/PlexoLimitCheck.h"

#include <algorithm>
#include <string>
#include <unordered_set>

#include "check/PlexoLimits.h"

namespace {

using enum PlexoVocabulary;
using enum PlexoLimited;

/// The number of characters of a text in UTF-8.
std::size_t CountCharacters(std::string_view text) {
  return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char byte) {
    constexpr unsigned kContinuation = 0x80;
    return (static_cast<unsigned char>(byte) & 0xC0U) != kContinuation;
  }));
}

class LimitCheck {
 public:
  LimitCheck(const PlexoCheckedPackage& checked, PlexoFindingList& list)
      : package(checked), edition(checked.GetEdition()), findings(list) {}

  void CheckArchive() {
    const auto& entries = package.archive.GetEntries();
    CheckSize(EntryCount, entries.size(), "entries");
    std::uint64_t bytes = 0;
    for (const TzZipEntry& entry : entries) bytes += entry.isFaulty ? 0 : entry.packedSize;
    CheckSize(PackedBytes, bytes, "bytes");
  }

  void CheckPaths() {
    const PlexoLimit* limit = FindPlexoLimit(EntryPath, edition);
    for (const TzZipEntry& entry : package.archive.GetEntries()) {
      const std::size_t length = CountCharacters(entry.name);
      if (limit == nullptr || entry.isFaulty || length <= limit->maximum) continue;
      findings.AddFile(limit->id, entry.name, Describe(*limit, entry.name, length));
    }
  }

  void CheckElement(const PlexoManifestElement& element) {
    if (element.vocabulary == Packaging) {
      CheckAttribute(element, "identifier", Identifier);
      CheckAttribute(element, "href", Href);
      CheckAttribute(element, "parameters", Parameters);
      if (element.name == "title") CheckText(element, element.text, Title);
    } else if (element.vocabulary == Adlcp) {
      if (PlexoCheckedPackage::FoldCase(element.name) == "datafromlms")
        CheckText(element, element.text, LaunchData);
      if (element.name == "location") CheckText(element, element.text, Href);
    } else if (element.vocabulary == Sequencing) {
      CheckAttribute(element, "objectiveID", ObjectiveIdentifier);
      CheckAttribute(element, "targetObjectiveID", ObjectiveIdentifier);
    } else if (element.vocabulary == Metadata && element.children.empty() && element.parent != nullptr) {
      CheckMetadata(element);
    }
  }

  void CheckSuspendData(const PlexoScriptIndex& scripts) {
    const PlexoLimit* limit = FindPlexoLimit(SuspendData, edition);
    if (limit == nullptr) return;
    std::unordered_set<const PlexoResource*> seen;
    for (const PlexoManifestElement* item : package.GetItems()) {
      const PlexoResource* resource = package.GetResourceOf(*item);
      if (resource == nullptr || !seen.insert(resource).second) continue;
      if (!scripts.GetWordsOf(*resource).Has(PlexoScriptWords::SuspendData)) continue;
      findings.AddElement(
          limit->id, *item,
          {item->GetValue("identifier"), std::to_string(limit->maximum), std::string(limit->source)});
    }
  }

 private:
  static std::vector<std::string> Describe(const PlexoLimit& limit, std::string_view text,
                                           std::size_t length) {
    constexpr std::size_t kShownBytes = 60;
    return {PlexoFindingList::Shorten(text, kShownBytes), std::to_string(length),
            std::to_string(limit.maximum), std::string(limit.source)};
  }

  void CheckSize(PlexoLimited part, std::uint64_t size, const char* unit) {
    const PlexoLimit* limit = FindPlexoLimit(part, edition);
    if (limit == nullptr || size <= limit->maximum) return;
    findings.Add(limit->id,
                 {std::to_string(size), unit, std::to_string(limit->maximum), std::string(limit->source)});
  }

  /// A language's text, inside the element that it is the text of.
  void CheckMetadata(const PlexoManifestElement& element) {
    const std::string& holder = element.parent->name;
    if (holder == "title") CheckText(element, element.text, MetadataTitle);
    if (holder == "description") CheckText(element, element.text, MetadataDescription);
    if (holder == "keyword") CheckText(element, element.text, MetadataKeyword);
  }

  void CheckAttribute(const PlexoManifestElement& element, std::string_view name, PlexoLimited part) {
    if (const std::string* value = element.GetAttribute(name); value != nullptr)
      CheckText(element, *value, part);
  }

  void CheckText(const PlexoManifestElement& element, std::string_view value, PlexoLimited part) {
    const PlexoLimit* limit = FindPlexoLimit(part, edition);
    if (limit == nullptr || value.size() <= limit->maximum) return;
    const std::size_t length = CountCharacters(value);
    if (length > limit->maximum) findings.AddElement(limit->id, element, Describe(*limit, value, length));
  }

  const PlexoCheckedPackage& package;
  PlexoEdition edition;
  PlexoFindingList& findings;
};

}  // namespace

void PlexoLimitCheck::Run(const PlexoCheckedPackage& package, const PlexoScriptIndex& scripts,
                          PlexoFindingList& findings) {
  LimitCheck check(package, findings);
  check.CheckArchive();
  check.CheckPaths();
  for (const PlexoManifestElement& element : package.manifest.GetElements()) check.CheckElement(element);
  check.CheckSuspendData(scripts);
}
