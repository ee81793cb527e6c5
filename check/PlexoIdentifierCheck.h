// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "check/PlexoCheckedPackage.h"
#include "check/PlexoFindingList.h"

/// Identifiers of the manifest, and the references to them.
class PlexoIdentifierCheck {
 public:
  static void Run(const PlexoCheckedPackage& package, PlexoFindingList& findings);
};
