// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "sequencer/PlexoSequencingRun.h"

/// The delivery processes of the book, DB.
class PlexoDeliveryProcesses {
 public:
  /// Delivery Request Process [DB.1.1]: whether an activity may be delivered. If not, the run has the reason.
  [[nodiscard]] static bool CanDeliver(PlexoSequencingRun& run, PlexoIndex activity);
  /// Content Delivery Environment Process [DB.2]: begins or resumes the attempts on the activity and its
  /// ancestors. False if the current activity is still active.
  [[nodiscard]] static bool Deliver(PlexoSequencingRun& run, PlexoIndex activity);
};
