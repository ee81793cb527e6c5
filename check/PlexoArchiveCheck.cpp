// SPDX-License-Identifier: Apache-2.0
#include "check/PlexoArchiveCheck.h"

#include <algorithm>
#include <unordered_map>

#include "check/PlexoForeignFormat.h"

namespace {

using enum PlexoFindingId;

constexpr std::string_view kManifest = PlexoFindingList::kManifestName;

PlexoFindingId GetIdOf(TzZipFaultKind kind) {
  switch (kind) {
    case TzZipFaultKind::Name:
      return EntryNameRefused;
    case TzZipFaultKind::Packing:
      return EntryPacking;
    case TzZipFaultKind::Data:
      return EntryDamaged;
    case TzZipFaultKind::Clash:
      return EntryClash;
    case TzZipFaultKind::Size:
      return ArchiveUnpacksHuge;
    case TzZipFaultKind::Archive:
      break;
  }
  return ArchiveUnreadable;
}

std::string_view GetFileName(std::string_view name) { return name.substr(name.rfind('/') + 1); }

/// What keeps Windows from storing a name; empty if nothing does.
std::string_view GetWindowsFault(std::string_view name) {
  if (name.find_first_of("<>:\"|?*") != std::string_view::npos) return "with one of < > : \" | ? *";
  for (std::string_view rest = name; !rest.empty();) {
    const std::size_t end = std::min(rest.find('/'), rest.size());
    if (end > 0 && (rest[end - 1] == '.' || rest[end - 1] == ' ')) return "that ends in a point or a blank";
    rest.remove_prefix(std::min(end + 1, rest.size()));
  }
  return {};
}

bool IsAscii(std::string_view text) {
  return std::all_of(text.begin(), text.end(),
                     [](char character) { return static_cast<signed char>(character) >= 0; });
}

void CheckManifestPlace(const PlexoCheckedPackage& package, PlexoFindingList& findings) {
  if (package.FindFile(kManifest) != nullptr) return;
  if (const TzZipEntry* other = package.FindFileInAnyCase(kManifest); other != nullptr) {
    findings.AddFile(ManifestNameCase, other->name, {other->name});
    return;
  }
  const auto& entries = package.archive.GetEntries();
  const auto found = std::find_if(entries.begin(), entries.end(), [](const TzZipEntry& entry) {
    return GetFileName(entry.name) == kManifest && PlexoArchiveCheck::GetLeaver(entry.name).empty();
  });
  if (found != entries.end()) {
    findings.AddFile(ManifestInFolder, found->name, {found->name});
  } else if (const std::string_view format = PlexoForeignFormat::FindByFiles(package); !format.empty()) {
    findings.Add(ForeignFormat, {std::string(format)});
  } else {
    findings.Add(ManifestMissing, {});
  }
}

void CheckName(const TzZipEntry& entry, PlexoFindingList& findings) {
  if (const std::string_view leaver = PlexoArchiveCheck::GetLeaver(entry.name); !leaver.empty()) {
    findings.AddFile(EntryJunk, entry.name, {entry.name, std::string(leaver)});
    return;
  }
  if (!entry.isNameUtf8 && !IsAscii(entry.name))
    findings.AddFile(EntryNameEncoding, entry.name, {entry.name});
  if (entry.hasBackslash) findings.AddFile(EntryBackslash, entry.name, {entry.name});
  if (const std::string_view fault = GetWindowsFault(entry.name); !fault.empty()) {
    findings.AddFile(EntryNameOnWindows, entry.name, {entry.name, std::string(fault)});
  }
}

}  // namespace

std::string_view PlexoArchiveCheck::GetLeaver(std::string_view name) {
  const std::string_view fileName = GetFileName(name);
  const std::string_view top = name.substr(0, name.find('/'));
  if (top == "__MACOSX" || top == ".Spotlight-V100" || top == ".Trashes" || top == ".fseventsd" ||
      fileName == ".DS_Store" || fileName.starts_with("._")) {
    return "macOS";
  }
  const std::string folded = PlexoCheckedPackage::FoldCase(fileName);
  return folded == "thumbs.db" || folded == "ehthumbs.db" || folded == "desktop.ini" ? "Windows" : "";
}

void PlexoArchiveCheck::AddFaults(const PlexoCheckedPackage& package, PlexoFindingList& findings) {
  for (const auto& [kind, failure] : package.archive.GetFaults()) {
    if (failure.entry.empty()) {
      findings.Add(GetIdOf(kind), {failure.message});
    } else {
      findings.AddFile(GetIdOf(kind), failure.entry, {failure.entry, failure.message});
    }
  }
}

void PlexoArchiveCheck::Run(const PlexoCheckedPackage& package, PlexoFindingList& findings) {
  AddFaults(package, findings);
  CheckManifestPlace(package, findings);
  std::unordered_map<std::string, std::string_view> folded;
  for (const TzZipEntry& entry : package.archive.GetEntries()) {
    if (entry.isFaulty) continue;
    CheckName(entry, findings);
    const auto [other, isNew] = folded.try_emplace(PlexoCheckedPackage::FoldCase(entry.name), entry.name);
    if (!isNew && other->second != entry.name) {
      findings.AddFile(EntryCaseTwins, entry.name, {entry.name, std::string(other->second)});
    }
  }
}
