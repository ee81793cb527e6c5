// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "sequencer/PlexoSequencingRun.h"

/// The selection and randomization processes of the book, SR.
class PlexoSelectionProcesses {
 public:
  /// Selects and reorders the children of every cluster, for a state before the first session.
  static void PrepareFirstAttempts(PlexoSequencingRun& run);
  /// Selects and reorders anew the children of a cluster that does so on each new attempt: when an attempt
  /// has ended, so that the flow into the next one, and a table of contents before it, find the order that it
  /// has. The book leaves "on each new attempt" undefined for selection; it works as for randomization.
  static void PrepareNextAttempt(PlexoSequencingRun& run, PlexoIndex cluster);
};
