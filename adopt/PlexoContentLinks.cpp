// SPDX-License-Identifier: Apache-2.0
#include "adopt/PlexoContentLinks.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

#include "adopt/PlexoReferenceScan.h"
#include "check/PlexoHref.h"

namespace {

bool StatesAddresses(std::string_view name) {
  static constexpr std::array<std::string_view, 6> kExtensions = {".htm",   ".html", ".xht",
                                                                  ".xhtml", ".css",  ".svg"};
  const std::size_t point = name.rfind('.');
  if (point == std::string_view::npos) return false;
  const std::string extension = PlexoCheckedPackage::FoldCase(name.substr(point));
  return std::find(kExtensions.begin(), kExtensions.end(), extension) != kExtensions.end();
}

/// The file that the address means when it stands in a file of this folder; null if the package has none.
const TzZipEntry* FindTarget(const PlexoCheckedPackage& package, const std::string& folder,
                             std::string_view base, std::string_view address) {
  const PlexoHref around = PlexoHref::Read(folder, base);
  if (around.isExternal || base.starts_with('/')) return nullptr;
  const PlexoHref href = PlexoHref::Read(folder + std::string(base), address);
  if (href.isExternal || href.leavesPackage || href.path.empty()) return nullptr;
  for (const std::string& path : {href.path, href.rawPath}) {
    if (const TzZipEntry* file = package.FindFile(path); file != nullptr) return file;
  }
  return package.FindFileInAnyCase(href.path);
}

}  // namespace

PlexoContentLinks::PlexoContentLinks(PlexoCheckedPackage& checked, PlexoFindingList& findings) {
  for (const TzZipEntry& entry : checked.archive.GetEntries()) {
    if (entry.isFolder || entry.isFaulty || !StatesAddresses(entry.name)) continue;
    ReadFile(checked, entry, findings);
    if (failure) return;
  }
}

void PlexoContentLinks::ReadFile(PlexoCheckedPackage& checked, const TzZipEntry& file,
                                 PlexoFindingList& findings) {
  std::string folder(PlexoCheckedPackage::GetFolder(file.name));
  if (!folder.empty()) folder += '/';
  Files& found = links[&file];
  PlexoReferenceScan scan([&](std::string_view base, std::string_view address) {
    const TzZipEntry* target = FindTarget(checked, folder, base, address);
    if (target != nullptr && target != &file) found.insert(target);
  });
  TzZipFailure problem =
      checked.archive.Read(file, [&scan](std::span<const std::byte> piece) { scan.Feed(piece); });
  scan.Finish();
  if (problem.code == kTzBadContent) {
    findings.AddFile(PlexoFindingId::EntryDamaged, file.name, {file.name, problem.message});
  } else if (problem) {
    failure = std::move(problem);
  }
}

PlexoContentLinks::Files PlexoContentLinks::GetReached(Files start, const Files& closed, Files& met) const {
  std::vector<const TzZipEntry*> open(start.begin(), start.end());
  while (!open.empty()) {
    const auto found = links.find(open.back());
    open.pop_back();
    if (found == links.end()) continue;
    for (const TzZipEntry* target : found->second) {
      if (closed.contains(target) && !start.contains(target)) {
        met.insert(target);
      } else if (start.insert(target).second) {
        open.push_back(target);
      }
    }
  }
  return start;
}
