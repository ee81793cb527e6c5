// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "sequencer/PlexoSequencingRun.h"

enum class PlexoDirection : std::uint8_t { Forward, Backward };

/// Where a flow led.
struct PlexoFlow {
  /// The activity that it identified last.
  PlexoIndex activity = kPlexoNone;
  /// That activity can be delivered. If not, the run has the reason.
  bool isDeliverable = false;
  /// The flow left the tree, which ends the sequencing session.
  bool endsSession = false;
};

/// The flow processes of the book, SB.2.1 to SB.2.3. Its recursions are loops here, so that neither a long
/// course nor a deep one takes stack; every step goes on in preorder, or back to where no earlier step was,
/// which bounds them.
class PlexoFlowProcesses {
 public:
  /// Flow Subprocess [SB.2.3].
  [[nodiscard]] static PlexoFlow Flow(PlexoSequencingRun& run, PlexoIndex activity, PlexoDirection direction,
                                      bool considersChildren);
};
