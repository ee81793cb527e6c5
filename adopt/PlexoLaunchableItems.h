// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "adopt/PlexoAdoptFindings.h"
#include "check/PlexoCheckedPackage.h"

/// Something that an LMS would launch.
struct PlexoLaunchable {
  /// Null if no item launches the resource.
  const PlexoManifestElement* item = nullptr;
  const PlexoResource* resource = nullptr;
  const TzZipEntry* page = nullptr;

  /// As the package writes it; empty without an item.
  [[nodiscard]] std::string GetIdentifier() const;
  /// "item 'FIRST'"; by its page without an identifier.
  [[nodiscard]] std::string GetName() const;
};

/// What of a package can be launched: the items of its default organization that lead to a page.
class PlexoLaunchableItems {
 public:
  /// Items that lead nowhere, and organizations beside the one that is taken, are findings. Where no item
  /// leads to a page, the SCOs among the resources are taken, or without any the only resource with a page;
  /// of a single item and a single page the item keeps its say.
  static std::vector<PlexoLaunchable> Find(const PlexoCheckedPackage& package, PlexoAdoptFindings& findings);

  /// The item's title, else that of an element around it; never empty.
  static std::string GetTitle(const PlexoLaunchable& launchable, const PlexoCheckedPackage& package);
  /// "'FIRST' (Fire doors), 'SECOND' (Exits)", the first few.
  static std::string Describe(const std::vector<PlexoLaunchable>& launchables,
                              const PlexoCheckedPackage& package);

  /// The file of a reference, in whatever case it is written, without the blanks around it; null if the
  /// package has none.
  static const TzZipEntry* FindFile(const PlexoFileReference& reference, const PlexoCheckedPackage& package);
  /// The resource calls itself an asset, in either edition's spelling.
  static bool IsAsset(const PlexoResource& resource);
};
