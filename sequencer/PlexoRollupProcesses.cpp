// SPDX-License-Identifier: Apache-2.0
#include "sequencer/PlexoRollupProcesses.h"

#include <algorithm>
#include <functional>
#include <vector>

#include "sequencer/PlexoObjectiveSharing.h"
#include "sequencer/PlexoRollupRuleCheck.h"
#include "sequencer/PlexoSequencer.h"
#include "sequencer/PlexoTrackingView.h"

namespace {

PlexoRollupRule MakeDefaultRule(PlexoCondition condition, PlexoRollupAction action) {
  PlexoRollupRule rule;
  rule.conditions = {{condition, false}};
  rule.action = action;
  return rule;
}

/// The rules of the standard for a cluster that has none of either action.
std::vector<PlexoRollupRule> GetDefaultRules(PlexoRollupAction good) {
  if (good == PlexoRollupAction::Satisfied) {
    return {MakeDefaultRule(PlexoCondition::Satisfied, PlexoRollupAction::Satisfied),
            MakeDefaultRule(PlexoCondition::ObjectiveStatusKnown, PlexoRollupAction::NotSatisfied)};
  }
  return {MakeDefaultRule(PlexoCondition::Completed, PlexoRollupAction::Completed),
          MakeDefaultRule(PlexoCondition::ActivityProgressKnown, PlexoRollupAction::Incomplete)};
}

/// Sets a status by the rules of two actions. The bad one is checked first, so that the good one prevails.
void RollUpByRules(PlexoSequencingRun& run, PlexoIndex cluster, PlexoRollupAction good, PlexoRollupAction bad,
                   PlexoTruth& status) {
  const auto& own = run.GetRules(cluster).rollupRules;
  const bool hasOwn = std::any_of(own.begin(), own.end(), [good, bad](const PlexoRollupRule& rule) {
    return rule.action == good || rule.action == bad;
  });
  const auto defaults = hasOwn ? std::vector<PlexoRollupRule>() : GetDefaultRules(good);
  const std::span<const PlexoRollupRule> rules = hasOwn ? own : defaults;
  if (PlexoRollupRuleCheck::Applies(run, cluster, rules, bad)) status = PlexoTruth::False();
  if (PlexoRollupRuleCheck::Applies(run, cluster, rules, good)) status = PlexoTruth::True();
}

/// A weighted mean over children. One without a value counts with its weight all the same: a course isn't
/// passed with the one test that was taken.
class PlexoWeightedMean {
 public:
  void Add(PlexoMeasure value, double weight) {
    counted += weight;
    if (!value.IsKnown()) return;
    total += value.GetValue() * weight;
    isValid = true;
  }
  [[nodiscard]] PlexoMeasure Get() const {
    return isValid && counted > 0 ? PlexoMeasure(total / counted) : PlexoMeasure::Unknown();
  }

 private:
  double total = 0;
  double counted = 0;
  bool isValid = false;
};

/// Measure Rollup Process [RB.1.1]. Every activity has a primary objective, so the pseudo-code's way out for
/// a child without one (6.1.1.4) is never taken.
PlexoMeasure RollUpMeasure(PlexoSequencingRun& run, PlexoIndex cluster) {
  run.Begin(PlexoProcess::MeasureRollup, cluster);
  const PlexoTrackingView tracking(run.definition, run.state);
  PlexoWeightedMean mean;
  for (const PlexoIndex child : run.GetAvailableChildren(cluster)) {
    if (run.IsTracked(child))
      mean.Add(tracking.GetMeasure(child), run.GetRules(child).rollup.objectiveMeasureWeight);
  }
  return mean.Get();
}

/// Completion Measure Rollup Process [RB.1.1.b], of the 4th Edition.
PlexoMeasure RollUpProgress(PlexoSequencingRun& run, PlexoIndex cluster) {
  run.Begin(PlexoProcess::CompletionMeasureRollup, cluster);
  const PlexoTrackingView tracking(run.definition, run.state);
  PlexoWeightedMean mean;
  for (const PlexoIndex child : run.GetAvailableChildren(cluster)) {
    if (run.IsTracked(child))
      mean.Add(tracking.GetProgress(child), run.GetRules(child).completion.progressWeight);
  }
  return mean.Get();
}

/// Objective Rollup Process [RB.1.2.a, RB.1.2.b]. A leaf has no children to apply rules to.
void RollUpObjective(PlexoSequencingRun& run, PlexoIndex activity, PlexoObjectiveState& primary) {
  if (run.GetRules(activity).objectives.front().isSatisfiedByMeasure) {
    run.Begin(PlexoProcess::ObjectiveRollupUsingMeasure, activity);
    primary.satisfied = PlexoRollupProcesses::GetSatisfiedByMeasure(run, activity, primary.measure);
  } else if (!run.IsLeaf(activity)) {
    run.Begin(PlexoProcess::ObjectiveRollupUsingRules, activity);
    RollUpByRules(run, activity, PlexoRollupAction::Satisfied, PlexoRollupAction::NotSatisfied,
                  primary.satisfied);
  }
}

/// Activity Progress Rollup Process [RB.1.3.a, RB.1.3.b].
void RollUpCompletion(PlexoSequencingRun& run, PlexoIndex activity, PlexoObjectiveState& primary) {
  const PlexoCompletionThreshold& completion = run.GetRules(activity).completion;
  if (completion.isByMeasure && run.definition.GetEdition() == PlexoSequencingEdition::Fourth) {
    run.Begin(PlexoProcess::ActivityProgressRollupUsingMeasure, activity);
    primary.completed = primary.progress.IsAtLeast(completion.minProgressMeasure);
  } else if (!run.IsLeaf(activity)) {
    run.Begin(PlexoProcess::ActivityProgressRollupUsingRules, activity);
    RollUpByRules(run, activity, PlexoRollupAction::Completed, PlexoRollupAction::Incomplete,
                  primary.completed);
  }
}

/// One activity of the path of RB.1.5. What isn't tracked records nothing.
void RollUpActivity(PlexoSequencingRun& run, PlexoIndex activity) {
  const bool isActive = run.At(activity).isActive;
  run.lastRollups.resize(run.definition.GetCount());
  std::uint64_t& last = run.lastRollups[activity];
  if (!run.IsTracked(activity) || last == (run.changes << 1 | (isActive ? 1U : 0U))) return;
  run.Begin(PlexoProcess::OverallRollup, activity);
  PlexoObjectiveState& primary = run.state.objectives[run.definition.Get(activity).firstObjective];
  const PlexoObjectiveState before = primary;
  PlexoObjectiveSharing::ForgetStale(run, activity);
  if (!run.IsLeaf(activity)) {
    primary.measure = RollUpMeasure(run, activity);
    if (run.definition.GetEdition() == PlexoSequencingEdition::Fourth)
      primary.progress = RollUpProgress(run, activity);
  }
  RollUpObjective(run, activity, primary);
  RollUpCompletion(run, activity, primary);
  PlexoObjectiveSharing::Write(run, activity);
  if (primary != before) ++run.changes;
  last = run.changes << 1 | (isActive ? 1U : 0U);
}

/// The ancestors of all activities that read one of the changed global objectives, the deepest part of the
/// tree first.
std::vector<PlexoIndex> TakeReadersAncestors(PlexoSequencingRun& run) {
  std::vector<bool> isMarked(run.definition.GetCount());
  std::vector<PlexoIndex> ancestors;
  for (const PlexoIndex global : run.changedGlobals) {
    for (const PlexoIndex reader : run.definition.GetPrimaryReaders(global)) {
      if (!run.IsAvailable(reader)) continue;
      for (PlexoIndex at = run.GetParent(reader); at != kPlexoNone && !isMarked[at]; at = run.GetParent(at)) {
        isMarked[at] = true;
        ancestors.push_back(at);
      }
    }
  }
  run.changedGlobals.clear();
  std::sort(ancestors.begin(), ancestors.end(), std::greater());
  return ancestors;
}

}  // namespace

PlexoTruth PlexoRollupProcesses::GetSatisfiedByMeasure(PlexoSequencingRun& run, PlexoIndex activity,
                                                       PlexoMeasure measure) {
  const PlexoActivityRules& rules = run.GetRules(activity);
  if (run.At(activity).isActive && !rules.rollup.measureSatisfactionIfActive) return PlexoTruth::Unknown();
  return measure.IsAtLeast(rules.objectives.front().minNormalizedMeasure);
}

void PlexoRollupProcesses::RollUp(PlexoSequencingRun& run, PlexoIndex activity) {
  for (PlexoIndex at = activity; at != kPlexoNone; at = run.GetParent(at)) RollUpActivity(run, at);
  for (int round = 0; round < PlexoSequencer::kMaxRollupRounds && !run.changedGlobals.empty(); ++round) {
    for (const PlexoIndex at : TakeReadersAncestors(run)) RollUpActivity(run, at);
  }
  run.changedGlobals.clear();
}
