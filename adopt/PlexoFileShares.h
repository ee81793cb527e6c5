// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <set>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "adopt/PlexoAdoptFindings.h"
#include "adopt/PlexoContentLinks.h"
#include "adopt/PlexoLaunchableItems.h"
#include "adopt/PlexoPackageLayout.h"

/// Which files of a package each of its launchable items needs.
///
/// A manifest that lists too little is the rule, so that a file is left out of an item's share only where
/// there is evidence that it is another's: the resources of other items list it, and the item's own don't.
/// What belongs to no item, listed or not, is in every share. An item whose resources list nothing but its
/// page says nothing about the files that it needs; its share then lacks only the pages of other items and
/// the files in their folders. Whoever needs a page or a style sheet needs what that refers to: such files
/// are in the share, whatever lists them; pages of other items too, unless they are left to those.
class PlexoFileShares {
 public:
  /// `contentLinks` is null for a single item, which needs them all.
  PlexoFileShares(const PlexoCheckedPackage& checked, const PlexoPackageLayout& packageLayout,
                  const std::vector<PlexoLaunchable>& launchables, const PlexoContentLinks* contentLinks);

  /// The files that the item's package holds: all, if it is the only item.
  [[nodiscard]] std::vector<const TzZipEntry*> GetShare(const PlexoLaunchable& launchable) const;
  /// What these files take in an archive, with the records about each.
  [[nodiscard]] static std::uint64_t GetPackedSize(const std::vector<const TzZipEntry*>& files);
  /// Adds what the manifest lists and the package lacks, what it lists under other names, and what of the
  /// content it doesn't list.
  void AddFindings(PlexoAdoptFindings& findings) const;
  /// From here on pages of other items are in no share, though links lead to them.
  void LeaveSiblings() { siblingsAreKept = false; }
  /// Adds that the item's pages link to pages of other items.
  void AddSiblingLinks(const PlexoLaunchable& launchable, PlexoAdoptFindings& findings) const;

 private:
  /// The files that these resources and their dependencies list, their pages among them.
  [[nodiscard]] std::unordered_set<const TzZipEntry*> GetListed(std::vector<const PlexoResource*> open) const;
  /// These files, and what they refer to; in `siblings` the pages of other items that they refer to.
  [[nodiscard]] PlexoContentLinks::Files GetNeeded(const PlexoContentLinks::Files& own,
                                                   PlexoContentLinks::Files& siblings) const;
  [[nodiscard]] bool IsInFolderOfOther(const TzZipEntry& file, const PlexoLaunchable& launchable) const;

  const PlexoCheckedPackage& package;
  const PlexoPackageLayout& layout;
  const std::vector<PlexoLaunchable>& items;
  const PlexoContentLinks* links;
  bool siblingsAreKept = true;
  /// The files that each resource lists itself. A manifest may name one file very often, and every item the
  /// same dependencies.
  std::unordered_map<const PlexoResource*, std::unordered_set<const TzZipEntry*>> filesOf;
  /// All files that the items' resources list.
  std::unordered_set<const TzZipEntry*> owned;
  std::unordered_set<const TzZipEntry*> pages;
  /// The folders of the pages, but for the top.
  std::set<std::string, std::less<>> pageFolders;
};
