// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <vector>

#include "sequencer/PlexoSequencingRun.h"

/// What the children that count came to under one rollup rule.
struct PlexoChildBag {
  std::uint32_t trues = 0;
  std::uint32_t falses = 0;
  std::uint32_t unknowns = 0;
};

/// The rollup rules of a cluster, with the children's answers to all of them gathered in one walk.
class PlexoRollupRuleCheck {
 public:
  /// Takes the cluster's own rules, and those of the standard in the place of a pair of actions that it has
  /// no rule for.
  PlexoRollupRuleCheck(PlexoSequencingRun& underWay, PlexoIndex checked);

  void AddChild(PlexoIndex child);
  /// Rollup Rule Check Subprocess [RB.1.4]: whether a rule with this action applies.
  [[nodiscard]] bool Applies(PlexoRollupAction action) const;

 private:
  PlexoSequencingRun& run;
  PlexoIndex cluster;
  std::vector<PlexoRollupRule> defaults;
  std::vector<const PlexoRollupRule*> rules;
  std::vector<PlexoChildBag> bags;
};
