// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <initializer_list>

#include "sequencer/PlexoSequencingRun.h"

/// The utility processes of the book, UP.
class PlexoUtilityProcesses {
 public:
  /// Limit Conditions Check Process [UP.1]: whether a limit is reached.
  [[nodiscard]] static bool IsLimitReached(PlexoSequencingRun& run, PlexoIndex activity);
  /// Sequencing Rules Check Process [UP.2]: the index of the first rule with one of these actions that
  /// applies; kPlexoNone if none does.
  [[nodiscard]] static PlexoIndex FindRule(PlexoSequencingRun& run, PlexoIndex activity,
                                           std::initializer_list<PlexoRuleAction> actions);
  /// Terminate Descendent Attempts Process [UP.3].
  static void TerminateDescendentAttempts(PlexoSequencingRun& run, PlexoIndex activity);
  /// End Attempt Process [UP.4].
  static void EndAttempt(PlexoSequencingRun& run, PlexoIndex activity);
  /// Check Activity Process [UP.5]: whether it may be delivered or passed through. If not, the run has the
  /// reason.
  [[nodiscard]] static bool IsAllowed(PlexoSequencingRun& run, PlexoIndex activity,
                                      PlexoSequencingException code);
};
