// SPDX-License-Identifier: Apache-2.0
#include "adopt/PlexoFileShares.h"

#include <string_view>

#include "adopt/PlexoLaunchAddress.h"

namespace {

using enum PlexoFindingId;

void AddReference(const PlexoFileReference& reference, const PlexoCheckedPackage& package,
                  std::unordered_set<const TzZipEntry*>& files) {
  if (const TzZipEntry* file = PlexoLaunchableItems::FindFile(reference, package); file != nullptr) {
    files.insert(file);
  }
}

void AddOwnFiles(const PlexoResource& resource, const PlexoCheckedPackage& package,
                 std::unordered_set<const TzZipEntry*>& files) {
  if (resource.launch) AddReference(*resource.launch, package, files);
  for (const PlexoFileReference& file : resource.files) AddReference(file, package, files);
}

}  // namespace

PlexoFileShares::PlexoFileShares(const PlexoCheckedPackage& checked, const PlexoPackageLayout& packageLayout,
                                 const std::vector<PlexoLaunchable>& launchables,
                                 const PlexoContentLinks* contentLinks)
    : package(checked), layout(packageLayout), items(launchables), links(contentLinks) {
  for (const PlexoResource& resource : package.GetResources()) {
    AddOwnFiles(resource, package, filesOf[&resource]);
  }
  std::vector<const PlexoResource*> launched;
  for (const PlexoLaunchable& launchable : items) {
    launched.push_back(launchable.resource);
    pages.insert(launchable.page);
    pageFolders.emplace(PlexoCheckedPackage::GetFolder(launchable.page->name));
  }
  pageFolders.erase("");
  owned = GetListed(std::move(launched));
}

std::vector<const TzZipEntry*> PlexoFileShares::GetShare(const PlexoLaunchable& launchable) const {
  if (items.size() == 1) return layout.GetContent();
  const std::unordered_set<const TzZipEntry*> own = GetListed({launchable.resource});
  const bool saysNothing = own.size() == 1;
  PlexoContentLinks::Files siblings;
  const PlexoContentLinks::Files needed = GetNeeded(own, siblings);
  std::vector<const TzZipEntry*> share;
  for (const TzZipEntry* file : layout.GetContent()) {
    const bool isTaken = needed.contains(file) || !owned.contains(file) ||
                         (saysNothing && !pages.contains(file) && !IsInFolderOfOther(*file, launchable));
    if (isTaken) share.push_back(file);
  }
  return share;
}

std::unordered_set<const TzZipEntry*> PlexoFileShares::GetListed(
    std::vector<const PlexoResource*> open) const {
  std::unordered_set<const TzZipEntry*> files;
  std::unordered_set<const PlexoResource*> seen(open.begin(), open.end());
  while (!open.empty()) {
    const PlexoResource& next = *open.back();
    open.pop_back();
    const std::unordered_set<const TzZipEntry*>& own = filesOf.at(&next);
    files.insert(own.begin(), own.end());
    for (const auto& [element, identifier] : next.dependencies) {
      const PlexoResource* needed = package.FindResource(identifier);
      if (needed != nullptr && seen.insert(needed).second) open.push_back(needed);
    }
  }
  return files;
}

std::uint64_t PlexoFileShares::GetPackedSize(const std::vector<const TzZipEntry*>& files) {
  // A local header, an entry of the directory, and a line of the manifest.
  constexpr std::uint64_t kRecords = 100;
  std::uint64_t size = 0;
  for (const TzZipEntry* file : files) size += file->packedSize + 2 * file->name.size() + kRecords;
  return size;
}

bool PlexoFileShares::IsInFolderOfOther(const TzZipEntry& file, const PlexoLaunchable& launchable) const {
  const std::string_view name = file.name;
  for (std::size_t slash = name.find('/'); slash != std::string_view::npos;
       slash = name.find('/', slash + 1)) {
    const bool isAround = launchable.page->name.starts_with(name.substr(0, slash + 1));
    if (!isAround && pageFolders.contains(name.substr(0, slash))) return true;
  }
  return false;
}

PlexoContentLinks::Files PlexoFileShares::GetNeeded(const PlexoContentLinks::Files& own,
                                                    PlexoContentLinks::Files& siblings) const {
  if (!siblingsAreKept) return links->GetReached(own, pages, siblings);
  PlexoContentLinks::Files needed = links->GetReached(own, {}, siblings);
  for (const TzZipEntry* file : needed) {
    if (pages.contains(file) && !own.contains(file)) siblings.insert(file);
  }
  return needed;
}

void PlexoFileShares::AddSiblingLinks(const PlexoLaunchable& launchable, PlexoAdoptFindings& findings) const {
  if (items.size() == 1) return;
  const std::unordered_set<const TzZipEntry*> own = GetListed({launchable.resource});
  PlexoContentLinks::Files linked;
  static_cast<void>(GetNeeded(own, linked));
  if (linked.empty()) return;
  std::set<std::string_view> siblings;
  for (const TzZipEntry* file : linked) siblings.insert(file->name);
  findings.Add(siblingsAreKept ? SiblingPageLinked : SiblingLinksDead,
               {launchable.GetIdentifier(),
                PlexoAdoptFindings::DescribeNames(std::string(*siblings.begin()), siblings.size()),
                siblings.size() == 1 ? "a page of another item" : "pages of other items"});
}

void PlexoFileShares::AddFindings(PlexoAdoptFindings& findings) const {
  std::unordered_set<std::string_view> told;
  for (const PlexoResource& resource : package.GetResources()) {
    std::vector<const PlexoFileReference*> references;
    if (resource.launch) references.push_back(&*resource.launch);
    for (const PlexoFileReference& file : resource.files) references.push_back(&file);
    for (const PlexoFileReference* reference : references) {
      if (reference->written.empty() || !told.insert(reference->written).second) continue;
      const TzZipEntry* file = PlexoLaunchableItems::FindFile(*reference, package);
      if (reference->href.isExternal) {
        findings.Add(HrefExternal, {reference->written});
      } else if (file == nullptr) {
        findings.AddReason(ListedFileAbsent, {reference->written});
      } else if (file->name != reference->href.path) {
        findings.AddReason(HrefMatched,
                           {reference->written, file->name, PlexoLaunchAddress::EncodePath(file->name)});
      }
    }
  }
  std::unordered_set<const TzZipEntry*> listed;
  for (const auto& [resource, files] : filesOf) listed.insert(files.begin(), files.end());
  std::vector<const TzZipEntry*> unlisted;
  for (const TzZipEntry* file : layout.GetContent()) {
    if (!listed.contains(file)) unlisted.push_back(file);
  }
  if (!unlisted.empty()) {
    findings.Add(FilesListed, {PlexoAdoptFindings::DescribeNames(unlisted.front()->name, unlisted.size())});
  }
}
