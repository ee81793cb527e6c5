// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <set>
#include <string>
#include <vector>

#include "adopt/PlexoAdoptFindings.h"
#include "adopt/PlexoLaunchableItems.h"
#include "adopt/PlexoPackageLayout.h"

/// Which files of a package each of its launchable items needs.
///
/// A manifest that lists too little is the rule, so that a file is left out of an item's share only where
/// there is evidence that it is another's: others list it, and the item's own resources don't. An item whose
/// resources list nothing but its page says nothing about the files that it needs; its share then lacks only
/// the pages of other items and the files in their folders.
class PlexoFileShares {
 public:
  PlexoFileShares(const PlexoCheckedPackage& checked, const PlexoPackageLayout& packageLayout,
                  const std::vector<PlexoLaunchable>& launchables);

  /// The files that the item's package holds: all, if it is the only item.
  [[nodiscard]] std::vector<const TzZipEntry*> GetShare(const PlexoLaunchable& launchable) const;
  /// Adds what the manifest lists and the package lacks, what it lists under other names, and what of the
  /// content it doesn't list.
  void AddFindings(PlexoAdoptFindings& findings) const;

 private:
  /// The files that the resource and its dependencies list, its page among them.
  [[nodiscard]] std::set<const TzZipEntry*> GetListed(const PlexoResource& resource) const;
  [[nodiscard]] bool IsInFolderOfOther(const TzZipEntry& file, const PlexoLaunchable& launchable) const;

  const PlexoCheckedPackage& package;
  const PlexoPackageLayout& layout;
  const std::vector<PlexoLaunchable>& items;
  /// All files that any resource lists.
  std::set<const TzZipEntry*> listed;
  std::set<const TzZipEntry*> pages;
  /// The folders of the pages, but for the top.
  std::set<std::string, std::less<>> pageFolders;
};
