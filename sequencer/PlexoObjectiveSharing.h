// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>

#include "sequencer/PlexoSequencingRun.h"

/// What activities share through global objectives, and what a new attempt forgets.
class PlexoObjectiveSharing {
 public:
  /// Writes what an activity's objectives know through their write maps. A value that this attempt hasn't
  /// known leaves the global one alone; one that it has known and that became unknown makes the global one
  /// unknown too.
  static void Write(PlexoSequencingRun& run, PlexoIndex activity);
  /// A new attempt on an activity forgets its local information.
  static void ForgetAttempt(PlexoSequencingRun& run, PlexoIndex activity);
  /// A cluster that is rolled up before it is attempted again: what it recorded in an earlier attempt on its
  /// parent is gone, and what it records now counts.
  static void ForgetStale(PlexoSequencingRun& run, PlexoIndex activity);
  /// New attempts on activities of one path, the highest first: what their children recorded before isn't
  /// used, where they use information of their current attempt alone; likewise below clusters among those
  /// children. On the root, global objectives are forgotten that aren't for the system.
  static void BeginChildrenAnew(PlexoSequencingRun& run, std::span<const PlexoIndex> begun);
};
