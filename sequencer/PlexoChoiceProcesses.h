// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "sequencer/PlexoFlowProcesses.h"

/// The choice processes of the book, SB.2.4 and SB.2.9.
class PlexoChoiceProcesses {
 public:
  /// Choice Sequencing Request Process [SB.2.9]: the activity to deliver; kPlexoNone if the run has a reason
  /// why not.
  [[nodiscard]] static PlexoIndex Choose(PlexoSequencingRun& run, PlexoIndex target);
  /// Choice Flow Subprocess [SB.2.9.1], with Choice Flow Tree Traversal [SB.2.9.2]: the furthest activity in
  /// a direction that a constrained activity lets be chosen from; itself at the end of the tree.
  [[nodiscard]] static PlexoIndex FindConsidered(PlexoSequencingRun& run, PlexoIndex constrained,
                                                 PlexoDirection direction);
};
