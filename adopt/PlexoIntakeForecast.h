// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "adopt/PlexoAdoptFindings.h"
#include "adopt/PlexoAdoptedSCO.h"
#include "adopt/PlexoLaunchableItems.h"
#include "adopt/PlexoPackageLayout.h"

/// What a course would make of a package as it stands: its manifest reader is flat, knows names by their
/// usual prefixes only, and takes the last of everything; its publisher moves what isn't listed.
class PlexoIntakeForecast {
 public:
  /// Adds as reasons what the reader would refuse or misread of the manifest, and what would happen to files,
  /// when the package is to become this SCO.
  static void AddReasons(const PlexoCheckedPackage& package, const PlexoLaunchable& launchable,
                         const PlexoAdoptedSCO& sco, const std::vector<const TzZipEntry*>& content,
                         PlexoAdoptFindings& findings);
};
