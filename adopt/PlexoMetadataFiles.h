// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <unordered_map>

#include "adopt/PlexoAdoptFindings.h"
#include "adopt/PlexoLaunchableItems.h"
#include "check/PlexoCheckedPackage.h"

/// The metadata files that a manifest names, by the elements that they are about.
class PlexoMetadataFiles {
 public:
  /// Whose metadata file an item may take for its own.
  enum class Scope { Item, Package };

  explicit PlexoMetadataFiles(const PlexoCheckedPackage& checked);

  /// The most special file that is named for the item: its resource's, its own, then the organization's and
  /// the manifest's. Null if none is; one that the package lacks is a finding.
  [[nodiscard]] const TzZipEntry* Find(const PlexoLaunchable& launchable, Scope scope,
                                       PlexoAdoptFindings& findings) const;

 private:
  const PlexoCheckedPackage& package;
  /// The first one of each element.
  std::unordered_map<const PlexoManifestElement*, const PlexoFileReference*> byElement;
};
