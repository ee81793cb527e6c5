// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "check/PlexoCheckedPackage.h"
#include "check/PlexoFindingList.h"
#include "check/PlexoScriptIndex.h"

/// How content talks to the LMS, as far as its scripts show (SCORM 1.2 Run-Time Environment, clause 3.3;
/// SCORM 2004 3rd Edition Run-Time Environment, clause 3.1).
class PlexoScriptCheck {
 public:
  static void Run(const PlexoCheckedPackage& package, const PlexoScriptIndex& scripts,
                  PlexoFindingList& findings);
};
