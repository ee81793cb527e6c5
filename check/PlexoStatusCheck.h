// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "check/PlexoActivityTree.h"
#include "check/PlexoFindingList.h"
#include "check/PlexoScriptIndex.h"

/// What contents report, as far as their scripts show, against what the course's sequencing waits for.
class PlexoStatusCheck {
 public:
  static void Run(const PlexoActivityTree& tree, const PlexoScriptIndex& scripts, PlexoFindingList& findings);
};
