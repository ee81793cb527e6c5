// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "check/PlexoActivityTree.h"
#include "check/PlexoFindingList.h"

/// Sequencing that can't work as it is written, whatever the content does.
class PlexoSequencingCheck {
 public:
  static void Run(const PlexoActivityTree& tree, PlexoFindingList& findings);
};
