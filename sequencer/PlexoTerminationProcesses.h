// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "sequencer/PlexoNavigationProcesses.h"

struct PlexoTerminationResult {
  bool isValid = false;
  /// What takes the place of the pending sequencing request; None if that stays.
  PlexoSequencingRequest sequencing = PlexoSequencingRequest::None;
  /// The activity whose postcondition rule said so; kPlexoNone if none did.
  PlexoIndex redirectedBy = kPlexoNone;
};

/// The termination processes of the book, TB.
class PlexoTerminationProcesses {
 public:
  /// Termination Request Process [TB.2.3].
  [[nodiscard]] static PlexoTerminationResult Terminate(PlexoSequencingRun& run, PlexoTermination request);
};
