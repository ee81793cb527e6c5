// SPDX-License-Identifier: Apache-2.0
#include "sequencer/PlexoRollupProcesses.h"

#include <algorithm>
#include <functional>
#include <optional>
#include <vector>

#include "sequencer/PlexoObjectiveSharing.h"
#include "sequencer/PlexoRollupRuleCheck.h"
#include "sequencer/PlexoSequencer.h"
#include "sequencer/PlexoTrackingView.h"

namespace {

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

/// What the children of a cluster come to: their measures [RB.1.1], in the 4th Edition their progress
/// [RB.1.1.b], and their answers to the rollup rules, gathered in one walk. Every activity has a primary
/// objective, so the way out of RB.1.1 for a child without one (6.1.1.4) is never taken.
class PlexoChildrenRollup {
 public:
  PlexoChildrenRollup(PlexoSequencingRun& run, PlexoIndex cluster) : rules(run, cluster) {
    run.Begin(PlexoProcess::MeasureRollup, cluster);
    const bool hasProgress = run.definition.GetEdition() == PlexoSequencingEdition::Fourth;
    if (hasProgress) run.Begin(PlexoProcess::CompletionMeasureRollup, cluster);
    const PlexoTrackingView tracking(run.definition, run.state);
    for (const PlexoIndex child : run.GetAvailableChildren(cluster)) {
      if (!run.IsTracked(child)) continue;
      const PlexoActivityRules& childRules = run.GetRules(child);
      measure.Add(tracking.GetMeasure(child), childRules.rollup.objectiveMeasureWeight);
      if (hasProgress) progress.Add(tracking.GetProgress(child), childRules.completion.progressWeight);
      rules.AddChild(child);
    }
  }
  [[nodiscard]] PlexoMeasure GetMeasure() const { return measure.Get(); }
  /// Unknown in the 3rd Edition.
  [[nodiscard]] PlexoMeasure GetProgress() const { return progress.Get(); }
  /// A status by the rules of two actions. The bad one is checked first, so that the good one prevails.
  void Set(PlexoTruth& status, PlexoRollupAction good, PlexoRollupAction bad) const {
    if (rules.Applies(bad)) status = PlexoTruth::False();
    if (rules.Applies(good)) status = PlexoTruth::True();
  }

 private:
  PlexoRollupRuleCheck rules;
  PlexoWeightedMean measure;
  PlexoWeightedMean progress;
};

/// Objective Rollup Process [RB.1.2.a, RB.1.2.b]. A leaf has no children to apply rules to.
void RollUpObjective(PlexoSequencingRun& run, PlexoIndex activity, const PlexoChildrenRollup* children,
                     PlexoObjectiveState& primary) {
  if (run.GetRules(activity).objectives.front().isSatisfiedByMeasure) {
    run.Begin(PlexoProcess::ObjectiveRollupUsingMeasure, activity);
    primary.satisfied = PlexoRollupProcesses::GetSatisfiedByMeasure(run, activity, primary.measure);
  } else if (children != nullptr) {
    run.Begin(PlexoProcess::ObjectiveRollupUsingRules, activity);
    children->Set(primary.satisfied, PlexoRollupAction::Satisfied, PlexoRollupAction::NotSatisfied);
  }
}

/// Activity Progress Rollup Process [RB.1.3.a, RB.1.3.b].
void RollUpCompletion(PlexoSequencingRun& run, PlexoIndex activity, const PlexoChildrenRollup* children,
                      PlexoObjectiveState& primary) {
  const PlexoCompletionThreshold& completion = run.GetRules(activity).completion;
  if (completion.isByMeasure && run.definition.GetEdition() == PlexoSequencingEdition::Fourth) {
    run.Begin(PlexoProcess::ActivityProgressRollupUsingMeasure, activity);
    primary.completed = primary.progress.IsAtLeast(completion.minProgressMeasure);
  } else if (children != nullptr) {
    run.Begin(PlexoProcess::ActivityProgressRollupUsingRules, activity);
    children->Set(primary.completed, PlexoRollupAction::Completed, PlexoRollupAction::Incomplete);
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
  std::optional<PlexoChildrenRollup> children;
  if (!run.IsLeaf(activity)) {
    children.emplace(run, activity);
    primary.measure = children->GetMeasure();
    primary.progress = children->GetProgress();
  }
  RollUpObjective(run, activity, children.has_value() ? &*children : nullptr, primary);
  RollUpCompletion(run, activity, children.has_value() ? &*children : nullptr, primary);
  if (primary != before) ++run.changes;
  last = run.changes << 1 | (isActive ? 1U : 0U);
  // What it writes may be read by its own children: it counts as a change behind this rollup.
  PlexoObjectiveSharing::Write(run, activity);
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
