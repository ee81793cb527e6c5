// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "check/PlexoActivityTree.h"
#include "check/PlexoFindingList.h"
#include "check/PlexoScriptIndex.h"

/// What the results of content do to a course of SCORM 2004: what opens although a learner fails, what closes
/// again, and what the course's score becomes.
class PlexoResultCheck {
 public:
  static void Run(const PlexoActivityTree& tree, const PlexoScriptIndex& scripts, PlexoFindingList& findings);
};
