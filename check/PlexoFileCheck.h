// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "check/PlexoCheckedPackage.h"
#include "check/PlexoFindingList.h"

/// The files that the manifest lists against those that are in the package, and how it writes their names.
class PlexoFileCheck {
 public:
  static void Run(const PlexoCheckedPackage& package, PlexoFindingList& findings);
};
