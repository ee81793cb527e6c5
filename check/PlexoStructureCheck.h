// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "check/PlexoCheckedPackage.h"
#include "check/PlexoFindingList.h"

/// What the manifest says it is, and its tree of organizations, items and resources.
class PlexoStructureCheck {
 public:
  static void Run(const PlexoCheckedPackage& package, PlexoFindingList& findings);
};
