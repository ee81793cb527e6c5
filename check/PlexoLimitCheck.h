// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "check/PlexoCheckedPackage.h"
#include "check/PlexoFindingList.h"
#include "check/PlexoScriptIndex.h"

/// Texts that are longer than an LMS must store, by the table of `PlexoLimits.h`.
class PlexoLimitCheck {
 public:
  static void Run(const PlexoCheckedPackage& package, const PlexoScriptIndex& scripts,
                  PlexoFindingList& findings);
};
