// SPDX-License-Identifier: Apache-2.0
#include "check/PlexoFileCheck.h"

#include <algorithm>
#include <unordered_set>
#include <utility>
#include <vector>

#include "check/PlexoArchiveCheck.h"
#include "check/PlexoContentReading.h"

namespace {

using enum PlexoFindingId;

/// Schema documents serve the manifest, and need no resource.
bool IsSchemaDocument(std::string_view name) { return name.ends_with(".xsd") || name.ends_with(".dtd"); }

// The player of wrapped movies and documents stands once in a package, for the pages of all SCOs: none of
// them owns its files.
bool IsOfSharedPlayer(std::string_view name) { return name.starts_with("plexo_players/"); }

/// The script of a page that is shown by the shared player.
bool NeedsSharedPlayer(std::string_view name) { return name.ends_with("/SCORM_support/scorm_support.js"); }

/// A reference with what the bases put in front of it.
std::string GetAddress(const PlexoFileReference& file) {
  return file.base.substr(0, file.base.rfind('/') + 1) + file.written;
}

std::string_view WithoutQuery(std::string_view href) { return href.substr(0, href.find_first_of("?#")); }

class FileCheck {
 public:
  FileCheck(const PlexoCheckedPackage& checked, PlexoFindingList& list) : package(checked), findings(list) {}

  void Run() {
    for (const PlexoResource& resource : package.GetResources()) {
      std::unordered_set<const TzZipEntry*> own;
      std::unordered_set<std::string_view> names;
      std::unordered_set<std::string_view> writings;
      for (const PlexoFileReference& file : resource.files) {
        own.insert(file.entry);
        names.insert(file.href.path);
        writings.insert(file.written);
        CheckFile(file, FileMissing, {});
      }
      if (!resource.launch.has_value()) continue;
      const PlexoFileReference& launch = *resource.launch;
      if (launch.entry == nullptr) {
        // A launch file that is also listed has had its finding.
        const bool isListed = names.contains(launch.href.path) && !launch.href.path.empty();
        if (!isListed) CheckFile(launch, LaunchFileMissing, resource.identifier);
        continue;
      }
      listed.insert(launch.entry);
      if (!writings.contains(WithoutQuery(launch.written))) CheckWriting(launch);
      if (own.contains(launch.entry)) continue;
      findings.AddElement(LaunchFileUnlisted, *resource.element, {launch.written, resource.identifier});
    }
    for (const PlexoFileReference& file : package.GetMetadataFiles()) CheckFile(file, FileMissing, {});
    for (const PlexoFileReference& file : package.GetNestedFiles()) listed.insert(file.entry);
    CheckUnlisted();
  }

 private:
  void CheckFile(const PlexoFileReference& file, PlexoFindingId missing, const std::string& resource) {
    // That an href is missing the schema tells.
    if (file.written.empty()) return;
    listed.insert(file.entry);
    if (file.href.isExternal) {
      findings.AddElement(HrefExternal, *file.element, {file.written});
    } else if (file.href.leavesPackage) {
      findings.AddElement(HrefLeavesPackage, *file.element, {GetAddress(file)});
    } else {
      CheckWriting(file);
      if (file.entry == nullptr) CheckMissing(file, missing, resource);
    }
  }

  void CheckWriting(const PlexoFileReference& file) {
    if (file.href.hasBackslash) findings.AddElement(HrefBackslash, *file.element, {file.written});
    // An escape that is right in form, but stands for itself, would be decoded by an LMS.
    const bool isDecodedWrongly =
        file.entry != nullptr && file.href.path != file.href.rawPath && file.entry->name == file.href.rawPath;
    if (file.href.hasRawCharacters || isDecodedWrongly) {
      findings.AddElement(HrefRawCharacters, *file.element, {file.written});
    }
  }

  void CheckMissing(const PlexoFileReference& file, PlexoFindingId missing, const std::string& resource) {
    const TzZipEntry* other = package.FindFileInAnyCase(file.href.path);
    if (other == nullptr) {
      findings.AddElement(missing, *file.element, {GetAddress(file), resource});
      return;
    }
    listed.insert(other);
    findings.AddElement(FileNameCase, *file.element, {GetAddress(file), other->name});
  }

  void CheckUnlisted() {
    const bool hasWrappers = std::ranges::any_of(
        listed, [](const TzZipEntry* entry) { return entry != nullptr && NeedsSharedPlayer(entry->name); });
    std::vector<const TzZipEntry*> unlisted;
    for (const TzZipEntry& entry : package.archive.GetEntries()) {
      if (entry.isFolder || entry.isFaulty || entry.name == PlexoFindingList::kManifestName ||
          listed.contains(&entry) || IsSchemaDocument(entry.name) ||
          (hasWrappers && IsOfSharedPlayer(entry.name)) ||
          !PlexoArchiveCheck::GetLeaver(entry.name).empty()) {
        continue;
      }
      unlisted.push_back(&entry);
    }
    // A page or script that an LMS leaves out breaks more than a picture, and a large file more than a small
    // one.
    const auto rank = [](const TzZipEntry* entry) {
      return std::pair(!PlexoContentReading::IsScript(entry->name), ~entry->size);
    };
    std::stable_sort(unlisted.begin(), unlisted.end(),
                     [&](const auto* left, const auto* right) { return rank(left) < rank(right); });
    for (const TzZipEntry* entry : unlisted) findings.AddFile(FileUnlisted, entry->name, {entry->name});
  }

  const PlexoCheckedPackage& package;
  PlexoFindingList& findings;
  /// The files that the manifest names anywhere, found in the package.
  std::unordered_set<const TzZipEntry*> listed;
};

}  // namespace

void PlexoFileCheck::Run(const PlexoCheckedPackage& package, PlexoFindingList& findings) {
  FileCheck(package, findings).Run();
}
