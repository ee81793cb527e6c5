// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "sequencer/PlexoNavigation.h"
#include "sequencer/PlexoSequencingRun.h"

struct PlexoSequencingResult {
  /// The activity to deliver; kPlexoNone if there is none.
  PlexoIndex delivery = kPlexoNone;
  bool endsSession = false;
};

/// The sequencing request processes of the book, SB.2.5 to SB.2.13.
class PlexoSequencingProcesses {
 public:
  /// Sequencing Request Process [SB.2.12]. Where nothing is to be delivered and the session goes on, the run
  /// has the reason; an exit has none.
  [[nodiscard]] static PlexoSequencingResult Process(PlexoSequencingRun& run, PlexoSequencingRequest request,
                                                     PlexoIndex target);
};
