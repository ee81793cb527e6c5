// SPDX-License-Identifier: Apache-2.0
#include "adopt/PlexoPackageLayout.h"

#include <algorithm>
#include <map>
#include <set>

#include "adopt/PlexoAdoptedManifest.h"
#include "adopt/PlexoLaunchableItems.h"
#include "adopt/PlexoSchemaNames.h"
#include "check/PlexoArchiveCheck.h"
#include "check/PlexoForeignFormat.h"

namespace {

using enum PlexoFindingId;

constexpr std::string_view kManifest = PlexoFindingList::kManifestName;

std::string JoinNames(const std::vector<const TzZipEntry*>& entries) {
  constexpr std::size_t kMostShown = 5;
  std::string text;
  for (std::size_t index = 0; index < std::min(entries.size(), kMostShown); ++index) {
    text += (text.empty() ? "'" : ", '") + entries[index]->name + "'";
  }
  return entries.size() > kMostShown ? text + " ..." : text;
}

}  // namespace

const TzZipEntry* PlexoPackageLayout::FindManifest(const PlexoCheckedPackage& package,
                                                   PlexoFindingList& findings) {
  if (const TzZipEntry* atTop = package.FindFile(kManifest); atTop != nullptr) return atTop;
  if (const TzZipEntry* atTop = package.FindFileInAnyCase(kManifest); atTop != nullptr) return atTop;
  std::vector<const TzZipEntry*> found;
  for (const TzZipEntry& entry : package.archive.GetEntries()) {
    if (entry.isFolder || !PlexoArchiveCheck::GetLeaver(entry.name).empty()) continue;
    if (PlexoCheckedPackage::FoldCase(PlexoCheckedPackage::GetFileName(entry.name)) == kManifest)
      found.push_back(&entry);
  }
  if (found.size() == 1) return found.front();
  if (found.size() > 1) {
    findings.Add(SeveralManifests, {std::to_string(found.size()), JoinNames(found)});
  } else if (const std::string_view format = PlexoForeignFormat::FindByFiles(package); !format.empty()) {
    findings.Add(ForeignFormat, {std::string(format)});
  } else {
    findings.Add(ManifestMissing, {});
  }
  return nullptr;
}

PlexoPackageLayout::PlexoPackageLayout(PlexoCheckedPackage& checked, const TzZipEntry& manifestEntry,
                                       PlexoCourseEdition manifestEdition,
                                       const std::vector<std::string>& launchFiles,
                                       PlexoAdoptFindings& adoptFindings)
    : package(checked),
      findings(adoptFindings),
      edition(manifestEdition),
      manifestFolder(PlexoCheckedPackage::GetFolder(manifestEntry.name)) {
  if (!manifestFolder.empty()) manifestFolder += '/';
  if (manifestEntry.name != kManifest) findings.AddReason(ManifestLifted, {manifestEntry.name});
  Sort(manifestEntry);
  if (manifestFolder.empty()) ReadLaunchSettings();
  if (manifestFolder.empty() && IsInPlace(launchFiles)) {
    root = kContentFolder;
    std::erase_if(content, [](const TzZipEntry* file) { return !file->name.starts_with(kContentFolder); });
    return;
  }
  settings.reset();
  launchedPage = nullptr;
  const bool allInFolder = std::all_of(content.begin(), content.end(), [this](const TzZipEntry* file) {
    return file->name.starts_with(manifestFolder);
  });
  if (allInFolder) root = manifestFolder;
}

void PlexoPackageLayout::Sort(const TzZipEntry& manifestEntry) {
  std::map<std::string_view, std::vector<std::string>> junk;
  std::vector<std::string> schemas;
  const std::unordered_set<const TzZipEntry*> listed = GetListed();
  for (const TzZipEntry& entry : package.archive.GetEntries()) {
    if (entry.isFolder || &entry == &manifestEntry) continue;
    if (const std::string_view leaver = PlexoArchiveCheck::GetLeaver(entry.name); !leaver.empty()) {
      junk[leaver].push_back(entry.name);
    } else if (IsSchemaDocument(entry.name) && !listed.contains(&entry)) {
      schemas.push_back(entry.name);
    } else {
      content.push_back(&entry);
    }
  }
  for (const auto& [leaver, names] : junk) {
    findings.Add(JunkLeftOut,
                 {PlexoAdoptFindings::DescribeNames(names.front(), names.size()), std::string(leaver)});
  }
  if (!schemas.empty()) {
    findings.Add(SchemasLeftOut, {PlexoAdoptFindings::DescribeNames(schemas.front(), schemas.size())});
  }
}

bool PlexoPackageLayout::IsSchemaDocument(std::string_view name) const {
  if (!name.starts_with(manifestFolder)) return false;
  return PlexoSchemaNames::Has(name.substr(manifestFolder.size()), edition);
}

std::unordered_set<const TzZipEntry*> PlexoPackageLayout::GetListed() const {
  std::unordered_set<const TzZipEntry*> listed;
  for (const PlexoResource& resource : package.GetResources()) {
    if (resource.launch) listed.insert(PlexoLaunchableItems::FindFile(*resource.launch, package));
    for (const PlexoFileReference& file : resource.files) {
      listed.insert(PlexoLaunchableItems::FindFile(file, package));
    }
  }
  return listed;
}

bool PlexoPackageLayout::IsInPlace(const std::vector<std::string>& launchFiles) const {
  std::set<std::string> ours;
  if (settings) {
    ours.insert(PlexoLaunchSettings::kFile);
    for (const std::string& name : launchFiles) ours.insert(PlexoLaunchSettings::kFolder + name);
  }
  return std::all_of(content.begin(), content.end(), [&](const TzZipEntry* file) {
    return file->name.starts_with(kContentFolder) || IsMetadataFile(*file) || ours.contains(file->name);
  });
}

bool PlexoPackageLayout::IsMetadataFile(const TzZipEntry& file) const {
  if (file.name != PlexoAdoptedManifest::kMetadataFile) return false;
  if (package.GetItems().size() != 1) return false;
  const PlexoManifestElement* item = package.GetItems().front();
  const PlexoResource* resource = package.GetResourceOf(*item);
  if (resource == nullptr) return false;
  // Another one that is named could be taken in its place.
  bool isTheItems = false;
  for (const PlexoFileReference& reference : package.GetMetadataFiles()) {
    if (reference.entry != &file) return false;
    const PlexoManifestElement* metadata = reference.element->parent;
    const PlexoManifestElement* about = metadata != nullptr ? metadata->parent : nullptr;
    isTheItems = isTheItems || about == item || about == resource->element ||
                 (about != nullptr && about == package.manifest.GetRoot());
  }
  return isTheItems;
}

void PlexoPackageLayout::ReadLaunchSettings() {
  const auto& resources = package.GetResources();
  if (resources.size() != 1 || package.GetItems().size() != 1 || !resources.front().launch) return;
  const TzZipEntry* page = resources.front().launch->entry;
  if (page == nullptr || page->name != PlexoLaunchSettings::kPage) return;
  const TzZipEntry* file = package.FindFile(PlexoLaunchSettings::kFile);
  if (file == nullptr || file->size > PlexoLaunchSettings::kMaximumSize) return;
  std::string script;
  const TzZipFailure failure = package.archive.Read(*file, [&script](std::span<const std::byte> piece) {
    script.append(reinterpret_cast<const char*>(piece.data()), piece.size());
  });
  if (failure) return;
  settings = PlexoLaunchSettings::Read(script);
  if (!settings) return;
  const PlexoHref launched = PlexoHref::Read(PlexoLaunchSettings::kFolder, settings->content);
  launchedPage = launched.path.starts_with(kContentFolder) ? package.FindFile(launched.path) : nullptr;
  if (launchedPage == nullptr) settings.reset();
}

std::string PlexoPackageLayout::GetTarget(const TzZipEntry& file) const {
  return kContentFolder + file.name.substr(root.size());
}
