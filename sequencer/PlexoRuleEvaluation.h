// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "sequencer/PlexoTrackingView.h"

/// What conditions and rules of an activity come to in a state.
class PlexoRuleEvaluation {
 public:
  /// A condition word without its negation, for an objective of the activity.
  [[nodiscard]] static PlexoTruth Evaluate(const PlexoSequencingDefinition& definition,
                                           const PlexoSequencingState& state, PlexoIndex activity,
                                           PlexoCondition condition, PlexoIndex objective, double threshold);
  [[nodiscard]] static PlexoTruth Evaluate(const PlexoSequencingDefinition& definition,
                                           const PlexoSequencingState& state, PlexoIndex activity,
                                           const PlexoRuleCondition& condition);
  /// Sequencing Rule Check Subprocess [UP.2.1].
  [[nodiscard]] static PlexoTruth CheckRule(const PlexoSequencingDefinition& definition,
                                            const PlexoSequencingState& state, PlexoIndex activity,
                                            const PlexoSequencingRule& rule);
  /// Evaluate Rollup Conditions Subprocess [RB.1.4.1], for a child.
  [[nodiscard]] static PlexoTruth CheckRollupConditions(const PlexoSequencingDefinition& definition,
                                                        const PlexoSequencingState& state, PlexoIndex child,
                                                        const PlexoRollupRule& rule);
};
