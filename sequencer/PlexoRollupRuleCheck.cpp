// SPDX-License-Identifier: Apache-2.0
#include "sequencer/PlexoRollupRuleCheck.h"

#include <algorithm>

#include "sequencer/PlexoRuleEvaluation.h"
#include "sequencer/PlexoTrackingView.h"
#include "sequencer/PlexoUtilityProcesses.h"

namespace {

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
bool AppliesTo(const PlexoRollupRule& rule, const PlexoChildBag& bag) {
  const std::uint32_t count = bag.trues + bag.falses + bag.unknowns;
  if (count == 0) return false;
  switch (rule.childSet) {
    case PlexoChildSet::All:
      return bag.trues == count;
    case PlexoChildSet::Any:
      return bag.trues > 0;
    case PlexoChildSet::None:
      return bag.falses == count;
    case PlexoChildSet::AtLeastCount:
      return bag.trues >= rule.minimumCount;
    case PlexoChildSet::AtLeastPercent:
      return static_cast<double>(bag.trues) / count >= rule.minimumPercent;
  }
  return false;
}

PlexoRollupRule MakeDefaultRule(PlexoCondition condition, PlexoRollupAction action) {
  PlexoRollupRule rule;
  rule.conditions = {{condition, false}};
  rule.action = action;
  return rule;
}

}  // namespace

PlexoRollupRuleCheck::PlexoRollupRuleCheck(PlexoSequencingRun& underWay, PlexoIndex checked)
    : run(underWay), cluster(checked) {
  using Action = PlexoRollupAction;
  const auto& own = run.GetRules(cluster).rollupRules;
  const auto hasOwn = [&own](Action good, Action bad) {
    return std::any_of(own.begin(), own.end(), [good, bad](const PlexoRollupRule& rule) {
      return rule.action == good || rule.action == bad;
    });
  };
  if (!hasOwn(Action::Satisfied, Action::NotSatisfied)) {
    defaults.push_back(MakeDefaultRule(PlexoCondition::Satisfied, Action::Satisfied));
    defaults.push_back(MakeDefaultRule(PlexoCondition::ObjectiveStatusKnown, Action::NotSatisfied));
  }
  if (!hasOwn(Action::Completed, Action::Incomplete)) {
    defaults.push_back(MakeDefaultRule(PlexoCondition::Completed, Action::Completed));
    defaults.push_back(MakeDefaultRule(PlexoCondition::ActivityProgressKnown, Action::Incomplete));
  }
  for (const PlexoRollupRule& rule : own) rules.push_back(&rule);
  for (const PlexoRollupRule& rule : defaults) rules.push_back(&rule);
  bags.resize(rules.size());
}

void PlexoRollupRuleCheck::AddChild(PlexoIndex child) {
  for (std::size_t index = 0; index < rules.size(); ++index) {
    if (!Counts(run, child, rules[index]->action)) continue;
    const PlexoTruth truth =
        PlexoRuleEvaluation::CheckRollupConditions(run.definition, run.state, child, *rules[index]);
    PlexoChildBag& bag = bags[index];
    ++(truth.IsTrue() ? bag.trues : truth.IsFalse() ? bag.falses : bag.unknowns);
  }
}

bool PlexoRollupRuleCheck::Applies(PlexoRollupAction action) const {
  const std::size_t step = run.Begin(PlexoProcess::RollupRuleCheck, cluster);
  for (PlexoIndex index = 0; index < rules.size(); ++index) {
    if (rules[index]->action != action || !AppliesTo(*rules[index], bags[index])) continue;
    run.End(step, PlexoSequencingException::None, index);
    return true;
  }
  return false;
}
