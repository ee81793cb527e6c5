// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "sequencer/PlexoNavigation.h"
#include "sequencer/PlexoSequencingRun.h"

/// What the termination request process is asked.
enum class PlexoTermination : std::uint8_t { None, Exit, ExitAll, Abandon, AbandonAll, SuspendAll };

/// The answer of the navigation request process.
struct PlexoNavigationPlan {
  bool isValid = false;
  PlexoTermination termination = PlexoTermination::None;
  PlexoSequencingRequest sequencing = PlexoSequencingRequest::None;
};

/// The navigation process of the book, NB.
class PlexoNavigationProcesses {
 public:
  /// Navigation Request Process [NB.2.1].
  [[nodiscard]] static PlexoNavigationPlan Plan(PlexoSequencingRun& run,
                                                const PlexoNavigationRequest& request);
};
