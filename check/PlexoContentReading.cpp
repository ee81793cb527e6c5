// SPDX-License-Identifier: Apache-2.0
#include "check/PlexoContentReading.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <unordered_map>

namespace {

/// Our launch pages write the content's address in front, and no address is longer.
constexpr std::size_t kMostSettingsBytes = std::size_t{16} << 10U;

bool UnpacksHuge(const TzZipInspection& archive) {
  const auto& faults = archive.GetFaults();
  return std::any_of(faults.begin(), faults.end(),
                     [](const TzZipFault& fault) { return fault.kind == TzZipFaultKind::Size; });
}

/// The text of a key in the settings of a launch page, up to its first escape: those that are asked for here
/// have none. Empty without the key.
std::string_view FindSetting(std::string_view settings, std::string_view key) {
  const std::string quoted = '"' + std::string(key) + '"';
  const std::size_t at = settings.find(quoted);
  if (at == std::string_view::npos) return {};
  std::string_view rest = settings.substr(at + quoted.size());
  const std::size_t start = rest.find_first_not_of(" \t\r\n:");
  if (start == std::string_view::npos || rest[start] != '"') return {};
  rest.remove_prefix(start + 1);
  return rest.substr(0, rest.find_first_of("\"\\"));
}

}  // namespace

bool PlexoContentReading::IsScript(std::string_view name) {
  static constexpr std::array<std::string_view, 7> kExtensions = {".js",   ".mjs", ".cjs",  ".htm",
                                                                  ".html", ".xht", ".xhtml"};
  const std::size_t point = name.rfind('.');
  if (point == std::string_view::npos) return false;
  const std::string extension = PlexoCheckedPackage::FoldCase(name.substr(point));
  return std::find(kExtensions.begin(), kExtensions.end(), extension) != kExtensions.end();
}

PlexoContentReading::PlexoContentReading(PlexoCheckedPackage& checked, Extent extent,
                                         PlexoFindingList& findings, const TzZipEntry* knownDamage)
    : package(checked) {
  if (UnpacksHuge(checked.archive)) return;
  std::unordered_map<const TzZipEntry*, std::size_t> places;
  for (const TzZipEntry& entry : checked.archive.GetEntries()) {
    if (entry.isFolder || entry.isFaulty || !IsScript(entry.name)) continue;
    places.emplace(&entry, scripts.size());
    scripts.push_back({&entry, {}, {}});
  }
  const auto visit = [&](const TzZipEntry& entry, const TzZipInspection::Reader& read) -> TzZipFailure {
    const auto place = places.find(&entry);
    if (place != places.end()) return ReadScript(read, IsLaunchSettings(entry), scripts[place->second]);
    return extent == Extent::Everything && &entry != knownDamage ? read({}) : TzZipFailure();
  };
  std::vector<TzZipFailure> damaged;
  failure = checked.archive.VisitAll(visit, damaged);
  if (failure) return;
  for (const TzZipFailure& damage : damaged)
    findings.AddFile(PlexoFindingId::EntryDamaged, damage.entry, {damage.entry, damage.message});
  isRead = true;
}

TzZipFailure PlexoContentReading::ReadScript(const TzZipInspection::Reader& read, bool isLaunchSettings,
                                             PlexoScript& script) {
  PlexoScriptScan scan;
  std::string settings;
  auto failure = read([&](std::span<const std::byte> piece) {
    scan.Feed(piece);
    if (!isLaunchSettings || settings.size() > kMostSettingsBytes) return;
    settings.append(reinterpret_cast<const char*>(piece.data()), std::min(piece.size(), kMostSettingsBytes));
  });
  script.words = scan.Finish();
  if (!isLaunchSettings) {
    script.words.Remove(PlexoScriptWords::kOfLaunchSettings);
  } else if (script.words.Has(PlexoScriptWords::Translated)) {
    script.content = FindSetting(settings, "content");
    if (FindSetting(settings, "contentEdition") == "1.2") script.words.Add(PlexoScriptWords::Content12);
  }
  return failure;
}

bool PlexoContentReading::IsLaunchSettings(const TzZipEntry& entry) const {
  const std::string folder(PlexoCheckedPackage::GetFolder(entry.name));
  return (folder == "launch" || folder.ends_with("/launch")) && entry.name == folder + "/settings.js" &&
         package.FindFile(folder + "/launch.html") != nullptr;
}
