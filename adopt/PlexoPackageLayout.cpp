// SPDX-License-Identifier: Apache-2.0
#include "adopt/PlexoPackageLayout.h"

#include <algorithm>
#include <array>
#include <map>

#include "adopt/PlexoAdoptedManifest.h"
#include "adopt/PlexoForeignFormat.h"
#include "check/PlexoArchiveCheck.h"

namespace {

using enum PlexoFindingId;

constexpr std::string_view kManifest = PlexoFindingList::kManifestName;

std::string_view GetFileName(std::string_view name) { return name.substr(name.rfind('/') + 1); }

/// Published schema documents by their names, which makers copy to the top of a package.
bool IsPublishedSchema(std::string_view fileName) {
  static constexpr std::array<std::string_view, 3> kNames = {"xml.xsd", "xmlschema.dtd", "datatypes.dtd"};
  static constexpr std::array<std::string_view, 9> kStarts = {
      "adlcp_", "adlnav_", "adlseq_", "adl_cp", "imscp_", "imsmd_", "imsss_", "ims_xml", "lom"};
  const std::string name = PlexoCheckedPackage::FoldCase(fileName);
  if (std::find(kNames.begin(), kNames.end(), name) != kNames.end()) return true;
  return (name.ends_with(".xsd") || name.ends_with(".dtd")) &&
         std::any_of(kStarts.begin(), kStarts.end(),
                     [&name](std::string_view start) { return name.starts_with(start); });
}

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
    if (PlexoCheckedPackage::FoldCase(GetFileName(entry.name)) == kManifest) found.push_back(&entry);
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

std::string PlexoPackageLayout::GetFolder(const TzZipEntry& entry) {
  const std::size_t slash = entry.name.rfind('/');
  return slash == std::string::npos ? std::string() : entry.name.substr(0, slash);
}

PlexoPackageLayout::PlexoPackageLayout(PlexoCheckedPackage& checked, const TzZipEntry& manifestEntry,
                                       PlexoAdoptFindings& adoptFindings)
    : package(checked), findings(adoptFindings), manifestFolder(GetFolder(manifestEntry)) {
  if (!manifestFolder.empty()) manifestFolder += '/';
  if (manifestEntry.name != kManifest) findings.AddReason(ManifestLifted, {manifestEntry.name});
  Sort(manifestEntry);
  if (manifestFolder.empty()) ReadLaunchSettings();
  if (manifestFolder.empty() && IsInPlace()) {
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
  for (const TzZipEntry& entry : package.archive.GetEntries()) {
    if (entry.isFolder || &entry == &manifestEntry) continue;
    if (const std::string_view leaver = PlexoArchiveCheck::GetLeaver(entry.name); !leaver.empty()) {
      junk[leaver].push_back(entry.name);
    } else if (IsSchemaDocument(entry.name)) {
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
  name.remove_prefix(manifestFolder.size());
  const std::string_view folder = name.substr(0, name.find('/'));
  if (folder == name) return IsPublishedSchema(name);
  return (folder == "common" || folder == "extend" || folder == "unique" || folder == "vocab") &&
         name.ends_with(".xsd");
}

bool PlexoPackageLayout::IsInPlace() {
  return std::all_of(content.begin(), content.end(), [this](const TzZipEntry* file) {
    return file->name.starts_with(kContentFolder) || IsMetadataFile(*file) ||
           (settings && file->name.starts_with(PlexoLaunchSettings::kFolder));
  });
}

bool PlexoPackageLayout::IsMetadataFile(const TzZipEntry& file) const {
  if (file.name != PlexoAdoptedManifest::kMetadataFile) return false;
  const auto& named = package.GetMetadataFiles();
  return std::any_of(named.begin(), named.end(),
                     [&file](const PlexoFileReference& reference) { return reference.entry == &file; });
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
