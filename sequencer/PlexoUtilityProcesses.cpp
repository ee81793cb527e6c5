// SPDX-License-Identifier: Apache-2.0
#include "sequencer/PlexoUtilityProcesses.h"

#include <algorithm>

#include "sequencer/PlexoRollupProcesses.h"
#include "sequencer/PlexoRuleEvaluation.h"
#include "sequencer/PlexoSelectionProcesses.h"
#include "sequencer/PlexoTrackingView.h"

namespace {

/// What the system sets for content that was ended without saying so itself: UP.4, 1.1.
void SetByDelivery(PlexoSequencingRun& run, PlexoIndex leaf) {
  const PlexoActivityNode& node = run.definition.Get(leaf);
  PlexoObjectiveState& primary = run.state.objectives[node.firstObjective];
  if (!node.rules.delivery.completionSetByContent && !primary.completed.IsKnown())
    primary.completed = PlexoTruth::True();
  if (!node.rules.delivery.objectiveSetByContent && !primary.satisfied.IsKnown())
    primary.satisfied = PlexoTruth::True();
}

}  // namespace

bool PlexoUtilityProcesses::IsLimitReached(PlexoSequencingRun& run, PlexoIndex activity) {
  const PlexoActivityState& at = run.At(activity);
  if (!run.IsTracked(activity) || at.isActive || at.isSuspended) return false;
  return PlexoTrackingView(run.definition, run.state).IsAttemptLimitExceeded(activity);
}

PlexoIndex PlexoUtilityProcesses::FindRule(PlexoSequencingRun& run, PlexoIndex activity,
                                           std::initializer_list<PlexoRuleAction> actions) {
  const auto& rules = run.GetRules(activity).rules;
  for (PlexoIndex index = 0; index < rules.size(); ++index) {
    if (std::find(actions.begin(), actions.end(), rules[index].action) == actions.end()) continue;
    const std::size_t step = run.Begin(PlexoProcess::SequencingRulesCheck, activity);
    if (PlexoRuleEvaluation::CheckRule(run.definition, run.state, activity, rules[index]).IsTrue()) {
      run.End(step, PlexoSequencingException::None, index);
      return index;
    }
  }
  return kPlexoNone;
}

void PlexoUtilityProcesses::TerminateDescendentAttempts(PlexoSequencingRun& run, PlexoIndex activity) {
  const PlexoIndex current = run.state.current;
  if (current == kPlexoNone) return;
  run.Begin(PlexoProcess::TerminateDescendentAttempts, activity);
  const PlexoIndex common = run.definition.FindCommonAncestor(current, activity);
  if (current == common) return;
  for (PlexoIndex at = run.GetParent(current); at != common; at = run.GetParent(at)) EndAttempt(run, at);
}

void PlexoUtilityProcesses::EndAttempt(PlexoSequencingRun& run, PlexoIndex activity) {
  run.Begin(PlexoProcess::EndAttempt, activity);
  PlexoActivityState& at = run.At(activity);
  if (run.IsLeaf(activity)) {
    if (run.IsTracked(activity) && !at.isSuspended) SetByDelivery(run, activity);
    ++run.changes;
  } else {
    const auto children = run.definition.GetChildren(activity);
    const bool isSuspended = std::any_of(children.begin(), children.end(),
                                         [&run](PlexoIndex child) { return run.At(child).isSuspended; });
    if (isSuspended != at.isSuspended) ++run.changes;
    at.isSuspended = isSuspended;
  }
  at.isActive = false;
  PlexoRollupProcesses::RollUp(run, activity);
  PlexoSelectionProcesses::PrepareNextAttempt(run, activity);
}

bool PlexoUtilityProcesses::IsAllowed(PlexoSequencingRun& run, PlexoIndex activity,
                                      PlexoSequencingException code) {
  run.Begin(PlexoProcess::CheckActivity, activity);
  if (const PlexoIndex rule = FindRule(run, activity, {PlexoRuleAction::Disabled}); rule != kPlexoNone)
    return run.Refuse(code, PlexoReasonKind::RuleDisables, activity, rule);
  if (IsLimitReached(run, activity)) return run.Refuse(code, PlexoReasonKind::AttemptLimit, activity);
  return true;
}
