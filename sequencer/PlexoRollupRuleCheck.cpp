// SPDX-License-Identifier: Apache-2.0
#include "sequencer/PlexoRollupRuleCheck.h"

#include "sequencer/PlexoRuleEvaluation.h"
#include "sequencer/PlexoTrackingView.h"
#include "sequencer/PlexoUtilityProcesses.h"

namespace {

/// What the children that count came to under one rule.
struct PlexoChildBag {
  std::uint32_t trues = 0;
  std::uint32_t falses = 0;
  std::uint32_t unknowns = 0;

  void Add(PlexoTruth truth) { ++(truth.IsTrue() ? trues : truth.IsFalse() ? falses : unknowns); }
  [[nodiscard]] std::uint32_t GetCount() const { return trues + falses + unknowns; }
};

PlexoRequirement GetRequirement(const PlexoRollupControls& controls, PlexoRollupAction action) {
  switch (action) {
    case PlexoRollupAction::Satisfied:
      return controls.requiredForSatisfied;
    case PlexoRollupAction::NotSatisfied:
      return controls.requiredForNotSatisfied;
    case PlexoRollupAction::Completed:
      return controls.requiredForCompleted;
    case PlexoRollupAction::Incomplete:
      return controls.requiredForIncomplete;
  }
  return PlexoRequirement::Always;
}

/// Check Child for Rollup Subprocess [RB.1.4.2].
bool Counts(PlexoSequencingRun& run, PlexoIndex child, PlexoRollupAction action) {
  const PlexoRollupControls& controls = run.GetRules(child).rollup;
  const bool isObjective =
      action == PlexoRollupAction::Satisfied || action == PlexoRollupAction::NotSatisfied;
  if (isObjective ? !controls.objectiveSatisfied : !controls.progressCompletion) return false;
  const PlexoActivityState& at = run.At(child);
  switch (GetRequirement(controls, action)) {
    case PlexoRequirement::Always:
      return true;
    case PlexoRequirement::IfNotSuspended:
      return at.isProgressKnown && !(at.attemptCount > 0 && at.isSuspended);
    case PlexoRequirement::IfAttempted:
      return PlexoTrackingView(run.definition, run.state).IsAttempted(child);
    case PlexoRequirement::IfNotSkipped:
      return PlexoUtilityProcesses::FindRule(run, child, {PlexoRuleAction::Skip}) == kPlexoNone;
  }
  return true;
}

// The pseudo-code of RB.1.4 lets "all" and "none" apply to an empty bag. The book's description of rollup
// doesn't: an activity's status comes from its contributing children, and without any there is nothing to
// roll up. Otherwise a cluster whose children are all untracked would be completed and satisfied by the end
// of the first.
bool Applies(const PlexoRollupRule& rule, const PlexoChildBag& bag) {
  if (bag.GetCount() == 0) return false;
  switch (rule.childSet) {
    case PlexoChildSet::All:
      return bag.falses == 0 && bag.unknowns == 0;
    case PlexoChildSet::Any:
      return bag.trues > 0;
    case PlexoChildSet::None:
      return bag.trues == 0 && bag.unknowns == 0;
    case PlexoChildSet::AtLeastCount:
      return bag.trues >= rule.minimumCount;
    case PlexoChildSet::AtLeastPercent:
      return static_cast<double>(bag.trues) / bag.GetCount() >= rule.minimumPercent;
  }
  return false;
}

PlexoChildBag Collect(PlexoSequencingRun& run, PlexoIndex cluster, const PlexoRollupRule& rule) {
  PlexoChildBag bag;
  for (const PlexoIndex child : run.GetAvailableChildren(cluster)) {
    if (!run.IsTracked(child) || !Counts(run, child, rule.action)) continue;
    bag.Add(PlexoRuleEvaluation::CheckRollupConditions(run.definition, run.state, child, rule));
  }
  return bag;
}

}  // namespace

bool PlexoRollupRuleCheck::Applies(PlexoSequencingRun& run, PlexoIndex cluster,
                                   std::span<const PlexoRollupRule> rules, PlexoRollupAction action) {
  const std::size_t step = run.Begin(PlexoProcess::RollupRuleCheck, cluster);
  for (PlexoIndex index = 0; index < rules.size(); ++index) {
    if (rules[index].action != action) continue;
    if (!::Applies(rules[index], Collect(run, cluster, rules[index]))) continue;
    run.End(step, PlexoSequencingException::None, index);
    return true;
  }
  return false;
}
