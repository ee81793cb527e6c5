// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>

#include "sequencer/PlexoSequencingRun.h"

/// Which rollup rules of a cluster apply.
class PlexoRollupRuleCheck {
 public:
  /// Rollup Rule Check Subprocess [RB.1.4]: whether one of these rules with this action applies.
  [[nodiscard]] static bool Applies(PlexoSequencingRun& run, PlexoIndex cluster,
                                    std::span<const PlexoRollupRule> rules, PlexoRollupAction action);
};
