// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "sequencer/PlexoSequencingRun.h"

/// The rollup processes of the book, RB.
class PlexoRollupProcesses {
 public:
  /// Overall Rollup Process [RB.1.5] from an activity to the root. Objectives are written to global ones as
  /// each activity is rolled up, so that its ancestors and whoever reads them see the new values; where an
  /// activity's primary objective reads a global one that changed, its parent and ancestors are rolled up
  /// too.
  static void RollUp(PlexoSequencingRun& run, PlexoIndex activity);
  /// Whether a measure decides satisfaction at this moment [RB.1.2.a, 3.1.2], and how.
  [[nodiscard]] static PlexoTruth GetSatisfiedByMeasure(PlexoSequencingRun& run, PlexoIndex activity,
                                                        PlexoMeasure measure);
};
