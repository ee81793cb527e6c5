// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

#include "adopt/PlexoAdoptFindings.h"
#include "adopt/PlexoAdoptedSCO.h"
#include "adopt/PlexoLaunchableItems.h"

/// What an item says beside its title: objective, launch data, and the sequencing of the old course.
class PlexoItemData {
 public:
  /// The objectiveID of the item's primary objective; empty if it has none. A malformed one is left out, and
  /// a finding.
  static std::string ReadObjective(const PlexoLaunchable& launchable, PlexoAdoptFindings& findings);
  /// In the notation of the item's edition. What no edition allows is left out, and a finding.
  static PlexoLaunchData ReadLaunchData(const PlexoLaunchable& launchable, PlexoCourseEdition edition,
                                        PlexoAdoptFindings& findings);
  /// Takes out what a course of the SCO's edition has no place for, each a finding: limits and thresholds,
  /// unless a launch page hands them to the content, and an objective of SCORM 1.2 content in SCORM 1.2.
  static void DropWithoutPlace(PlexoAdoptedSCO& sco, PlexoAdoptFindings& findings);
  /// Adds what isn't kept of the items, their resources and what is around them: sequencing, prerequisites,
  /// metadata that stands in the manifest itself, and what they say about how an LMS shows them.
  static void AddDropped(const std::vector<PlexoLaunchable>& launchables, const PlexoCheckedPackage& package,
                         PlexoAdoptFindings& findings);
};
