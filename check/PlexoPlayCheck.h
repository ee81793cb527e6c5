// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "check/PlexoCheckedPackage.h"
#include "check/PlexoFindingList.h"
#include "check/PlexoPlayExtent.h"
#include "check/PlexoScriptIndex.h"

/// Plays the default organization of a SCORM 2004 course, with content that reports what its scripts can, and
/// reports what learners would meet. Each finding has a script for `plexo play` that shows it.
class PlexoPlayCheck {
 public:
  static PlexoPlayExtent Run(const PlexoCheckedPackage& package, const PlexoScriptIndex& scripts,
                             PlexoFindingList& findings);
};
