// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "check/PlexoCheckedPackage.h"
#include "check/PlexoFindingList.h"

/// What an item hands to its content at launch, and a course made of it wouldn't pass on as it is. A course
/// of SCORM 1.2 has the same pass mark, limits and launch data for every SCO; one of SCORM 2004 writes two
/// elements under their names of SCORM 1.2, which LMSs that follow the schema ignore.
class PlexoCourseLosses {
 public:
  /// Empty texts stand for what the item lacks.
  struct Values {
    std::string passMark = {};
    std::string timeLimit = {};
    std::string timeLimitAction = {};
    std::string launchData = {};
  };

  /// In a course of this edition. `item` is the identifier of the item.
  static std::vector<PlexoFinding> Find(const std::string& item, const Values& values, bool is12);

  /// Adds what the items of a package would lose in a course of the package's own edition. What a package
  /// that Plexo built has lost already, other checks tell.
  static void Run(const PlexoCheckedPackage& package, PlexoFindingList& findings);
};
