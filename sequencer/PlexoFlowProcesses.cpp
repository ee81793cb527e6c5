// SPDX-License-Identifier: Apache-2.0
#include "sequencer/PlexoFlowProcesses.h"

#include <optional>

#include "sequencer/PlexoUtilityProcesses.h"

namespace {

using Code = PlexoSequencingException;

struct PlexoStepTaken {
  /// kPlexoNone if there is none.
  PlexoIndex next = kPlexoNone;
  PlexoDirection direction = PlexoDirection::Forward;
  bool endsSession = false;
};

/// Flow Tree Traversal Subprocess [SB.2.1], forward.
PlexoStepTaken StepForward(PlexoSequencingRun& run, PlexoIndex activity, bool considersChildren) {
  while (true) {
    if (run.IsLastInTree(activity) || (activity == 0 && !considersChildren)) {
      run.Refuse(Code::None, PlexoReasonKind::EndOfCourse, kPlexoNone);
      PlexoUtilityProcesses::TerminateDescendentAttempts(run, 0);
      return {kPlexoNone, PlexoDirection::Forward, true};
    }
    if (!run.IsLeaf(activity) && considersChildren) {
      const PlexoIndex first = run.GetFirst(activity);
      if (first == kPlexoNone) run.Refuse(Code::SB_2_1_2, PlexoReasonKind::NoChildren, activity);
      return {first, PlexoDirection::Forward};
    }
    if (const PlexoIndex next = run.GetNext(activity); next != kPlexoNone)
      return {next, PlexoDirection::Forward};
    activity = run.GetParent(activity);
    considersChildren = false;
  }
}

/// The same, backward.
PlexoStepTaken StepBackward(PlexoSequencingRun& run, PlexoIndex activity, bool considersChildren,
                            bool isReversed) {
  while (activity != 0) {
    if (!run.IsLeaf(activity) && considersChildren) {
      // Into a cluster from behind: one that only goes forward is entered at its first child.
      if (run.GetFirst(activity) == kPlexoNone) {
        run.Refuse(Code::SB_2_1_2, PlexoReasonKind::NoChildren, activity);
        return {};
      }
      if (run.GetControls(activity).forwardOnly) return {run.GetFirst(activity), PlexoDirection::Forward};
      return {run.GetLast(activity), PlexoDirection::Backward};
    }
    const PlexoIndex parent = run.GetParent(activity);
    if (!isReversed && run.GetControls(parent).forwardOnly) {
      run.Refuse(Code::SB_2_1_4, PlexoReasonKind::ForwardOnly, parent);
      return {};
    }
    if (const PlexoIndex previous = run.GetPrevious(activity); previous != kPlexoNone)
      return {previous, PlexoDirection::Backward};
    activity = parent;
    considersChildren = false;
    isReversed = false;
  }
  run.Refuse(Code::SB_2_1_3, PlexoReasonKind::NothingBefore, 0);
  return {};
}

/// Flow Tree Traversal Subprocess [SB.2.1]. A backward flow that had to enter a cluster at its first child,
/// and found nothing there up to the last, goes back out in front of the first.
PlexoStepTaken Step(PlexoSequencingRun& run, PlexoIndex activity, PlexoDirection direction,
                    bool considersChildren, std::optional<PlexoDirection> before = std::nullopt) {
  const std::size_t step = run.Begin(PlexoProcess::FlowTreeTraversal, activity);
  bool isReversed = false;
  if (before == PlexoDirection::Backward && activity != 0 && run.GetNext(activity) == kPlexoNone) {
    direction = PlexoDirection::Backward;
    if (const PlexoIndex first = run.GetFirst(run.GetParent(activity)); first != kPlexoNone) activity = first;
    isReversed = true;
  }
  const PlexoStepTaken taken = direction == PlexoDirection::Forward
                                   ? StepForward(run, activity, considersChildren)
                                   : StepBackward(run, activity, considersChildren, isReversed);
  if (taken.next == kPlexoNone) run.End(step, run.exception);
  return taken;
}

/// Flow Activity Traversal Subprocess [SB.2.2].
PlexoFlow Traverse(PlexoSequencingRun& run, PlexoIndex activity, PlexoDirection direction) {
  std::optional<PlexoDirection> before;
  while (true) {
    const std::size_t step = run.Begin(PlexoProcess::FlowActivityTraversal, activity);
    // A flow never comes to the root: it is entered at its children.
    if (!run.GetControls(run.GetParent(activity)).flow) {
      run.Refuse(Code::SB_2_2_1, PlexoReasonKind::FlowOff, run.GetParent(activity));
      run.End(step, run.exception);
      return {activity};
    }
    const PlexoIndex skip = PlexoUtilityProcesses::FindRule(run, activity, {PlexoRuleAction::Skip});
    PlexoStepTaken taken;
    if (skip != kPlexoNone) {
      run.End(step, Code::None, skip);
      taken = Step(run, activity, direction, false, before);
      if (before == PlexoDirection::Backward && taken.direction == PlexoDirection::Backward)
        before = std::nullopt;
    } else if (!PlexoUtilityProcesses::IsAllowed(run, activity, Code::SB_2_2_2)) {
      run.End(step, run.exception, run.reason.rule);
      return {activity};
    } else if (run.IsLeaf(activity)) {
      return {activity, true};
    } else {
      taken = Step(run, activity, direction, true);
      const bool turns = direction == PlexoDirection::Backward && taken.direction == PlexoDirection::Forward;
      before = turns ? std::optional(PlexoDirection::Backward) : std::nullopt;
    }
    if (taken.next == kPlexoNone) return {activity, false, taken.endsSession};
    activity = taken.next;
    direction = taken.direction;
  }
}

}  // namespace

PlexoFlow PlexoFlowProcesses::Flow(PlexoSequencingRun& run, PlexoIndex activity, PlexoDirection direction,
                                   bool considersChildren) {
  run.Begin(PlexoProcess::Flow, activity);
  const PlexoStepTaken taken = Step(run, activity, direction, considersChildren);
  if (taken.next == kPlexoNone) return {activity, false, taken.endsSession};
  return Traverse(run, taken.next, taken.direction);
}
