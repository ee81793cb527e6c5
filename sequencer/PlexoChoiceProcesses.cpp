// SPDX-License-Identifier: Apache-2.0
#include "sequencer/PlexoChoiceProcesses.h"

#include "sequencer/PlexoUtilityProcesses.h"

namespace {

using Code = PlexoSequencingException;

/// Choice Activity Traversal Subprocess [SB.2.4].
bool CanTraverse(PlexoSequencingRun& run, PlexoIndex activity, PlexoDirection direction) {
  run.Begin(PlexoProcess::ChoiceActivityTraversal, activity);
  if (direction == PlexoDirection::Forward) {
    const PlexoIndex stop =
        PlexoUtilityProcesses::FindRule(run, activity, {PlexoRuleAction::StopForwardTraversal});
    return stop == kPlexoNone ||
           run.Refuse(Code::SB_2_4_1, PlexoReasonKind::RuleStopsForward, activity, stop);
  }
  const PlexoIndex parent = run.GetParent(activity);
  if (parent == kPlexoNone) return run.Refuse(Code::SB_2_4_3, PlexoReasonKind::NothingBefore, activity);
  if (run.GetControls(parent).forwardOnly)
    return run.Refuse(Code::SB_2_4_2, PlexoReasonKind::ForwardOnly, parent);
  return true;
}

/// SB.2.9, 2 to 4: what the path from the root to the target says, wherever the learner is.
bool IsPathOpen(PlexoSequencingRun& run, PlexoIndex target) {
  for (const PlexoIndex at : run.GetPath(kPlexoNone, target)) {
    if (!run.IsAvailable(at)) return run.Refuse(Code::SB_2_9_2, PlexoReasonKind::NotSelected, at);
    const PlexoIndex hide = PlexoUtilityProcesses::FindRule(run, at, {PlexoRuleAction::HiddenFromChoice});
    if (hide != kPlexoNone) return run.Refuse(Code::SB_2_9_3, PlexoReasonKind::RuleHides, at, hide);
  }
  if (target != 0 && !run.GetControls(run.GetParent(target)).choice)
    return run.Refuse(Code::SB_2_9_4, PlexoReasonKind::ChoiceOff, run.GetParent(target));
  return true;
}

/// SB.2.9, 8: the siblings on the way, without the target.
bool CanReachSibling(PlexoSequencingRun& run, PlexoIndex current, PlexoIndex target) {
  const bool isForward = run.IsAfter(target, current);
  for (PlexoIndex at = current; at != target && at != kPlexoNone;
       at = isForward ? run.GetNext(at) : run.GetPrevious(at)) {
    if (!CanTraverse(run, at, isForward ? PlexoDirection::Forward : PlexoDirection::Backward)) return false;
  }
  return true;
}

/// SB.2.9, 9 and 11.6 to 11.9: from the common ancestor down to the target, without the target.
bool CanDescend(PlexoSequencingRun& run, PlexoIndex common, PlexoIndex target, bool isForward) {
  auto path = run.GetPath(common, run.GetParent(target));
  path.insert(path.begin(), common);
  for (const PlexoIndex at : path) {
    if (isForward && !CanTraverse(run, at, PlexoDirection::Forward)) return false;
    if (!run.At(at).isActive && at != common && run.GetRules(at).preventActivation)
      return run.Refuse(Code::SB_2_9_6, PlexoReasonKind::ActivationPrevented, at);
  }
  return true;
}

/// SB.2.9, 10.3 and 11.4.1: from the current activity up to the end, without the end.
bool CanLeave(PlexoSequencingRun& run, PlexoIndex current, PlexoIndex end) {
  for (PlexoIndex at = current; at != end; at = run.GetParent(at)) {
    if (!run.GetControls(at).choiceExit)
      return run.Refuse(Code::SB_2_9_7, PlexoReasonKind::ChoiceExitOff, at);
  }
  return true;
}

/// SB.2.9, 11.5: the lowest activity on the way up that constrains choice decides.
bool IsWithinConstraint(PlexoSequencingRun& run, PlexoIndex current, PlexoIndex common, PlexoIndex target) {
  PlexoIndex constrained = current;
  while (constrained != common && !run.GetRules(constrained).constrainChoice)
    constrained = run.GetParent(constrained);
  if (constrained == common || target == constrained) return true;
  const PlexoIndex considered = PlexoChoiceProcesses::FindConsidered(
      run, constrained,
      run.IsAfter(target, constrained) ? PlexoDirection::Forward : PlexoDirection::Backward);
  return run.definition.Holds(considered, target) ||
         run.Refuse(Code::SB_2_9_8, PlexoReasonKind::ChoiceConstrained, constrained);
}

/// SB.2.9, 7 to 11: by where the learner is. The paths of the pseudo-code can't be empty, so SB.2.9-5 can't
/// happen.
bool CanReach(PlexoSequencingRun& run, PlexoIndex common, PlexoIndex target) {
  const PlexoIndex current = run.state.current;
  if (current == target) return true;
  if (current != kPlexoNone && current != 0 && target != 0 && run.GetParent(current) == run.GetParent(target))
    return CanReachSibling(run, current, target);
  if (current == kPlexoNone || current == common)
    return target == common || CanDescend(run, common, target, true);
  if (target == common) return CanLeave(run, current, common);
  return CanLeave(run, current, common) && IsWithinConstraint(run, current, common, target) &&
         CanDescend(run, common, target, run.IsAfter(target, current));
}

/// SB.2.9, 14: nothing can be delivered in the target, but the learner has got there.
PlexoIndex ReachWithoutDelivery(PlexoSequencingRun& run, PlexoIndex common, PlexoIndex target) {
  const PlexoSequencingReason reason = run.reason;
  PlexoUtilityProcesses::TerminateDescendentAttempts(run, common);
  PlexoUtilityProcesses::EndAttempt(run, common);
  run.state.current = target;
  run.Refuse(Code::SB_2_9_9, reason.kind, reason.activity, reason.rule);
  return kPlexoNone;
}

}  // namespace

PlexoIndex PlexoChoiceProcesses::FindConsidered(PlexoSequencingRun& run, PlexoIndex constrained,
                                                PlexoDirection direction) {
  run.Begin(PlexoProcess::ChoiceFlow, constrained);
  for (PlexoIndex at = constrained; at != 0; at = run.GetParent(at)) {
    const PlexoIndex next = direction == PlexoDirection::Forward ? run.GetNext(at) : run.GetPrevious(at);
    if (next != kPlexoNone) return next;
  }
  return constrained;
}

PlexoIndex PlexoChoiceProcesses::Choose(PlexoSequencingRun& run, PlexoIndex target) {
  const std::size_t step = run.Begin(PlexoProcess::ChoiceSequencingRequest, target);
  PlexoIndex chosen = kPlexoNone;
  if (target == kPlexoNone) {
    run.Refuse(Code::SB_2_9_1, PlexoReasonKind::UnknownTarget, kPlexoNone);
  } else if (IsPathOpen(run, target)) {
    const PlexoIndex current = run.state.current;
    const PlexoIndex common = current != kPlexoNone ? run.definition.FindCommonAncestor(current, target) : 0;
    if (CanReach(run, common, target)) {
      if (run.IsLeaf(target)) return target;
      const PlexoFlow flow = PlexoFlowProcesses::Flow(run, target, PlexoDirection::Forward, true);
      chosen = flow.isDeliverable ? flow.activity : ReachWithoutDelivery(run, common, target);
    }
  }
  if (chosen == kPlexoNone) run.End(step, run.exception);
  return chosen;
}
