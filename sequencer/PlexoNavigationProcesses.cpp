// SPDX-License-Identifier: Apache-2.0
#include "sequencer/PlexoNavigationProcesses.h"

namespace {

using Code = PlexoSequencingException;
using Kind = PlexoReasonKind;

PlexoNavigationPlan Refuse(PlexoSequencingRun& run, Code code, Kind kind, PlexoIndex activity = kPlexoNone) {
  run.Refuse(code, kind, activity);
  return {};
}

/// A request that leaves the current activity ends it first, if that is still active.
PlexoNavigationPlan Leave(PlexoSequencingRun& run, PlexoSequencingRequest request) {
  const PlexoIndex current = run.state.current;
  const bool isActive = current != kPlexoNone && run.At(current).isActive;
  return {true, isActive ? PlexoTermination::Exit : PlexoTermination::None, request};
}

PlexoNavigationPlan PlanContinue(PlexoSequencingRun& run) {
  const PlexoIndex current = run.state.current;
  if (current == kPlexoNone) return Refuse(run, Code::NB_2_1_2, Kind::NoSession);
  const PlexoIndex parent = run.GetParent(current);
  if (parent == kPlexoNone || !run.GetControls(parent).flow)
    return Refuse(run, Code::NB_2_1_4, Kind::FlowOff, parent == kPlexoNone ? current : parent);
  return Leave(run, PlexoSequencingRequest::Continue);
}

PlexoNavigationPlan PlanPrevious(PlexoSequencingRun& run) {
  const PlexoIndex current = run.state.current;
  if (current == kPlexoNone) return Refuse(run, Code::NB_2_1_2, Kind::NoSession);
  const PlexoIndex parent = run.GetParent(current);
  if (parent == kPlexoNone) return Refuse(run, Code::NB_2_1_6, Kind::NothingBefore, current);
  if (!run.GetControls(parent).flow) return Refuse(run, Code::NB_2_1_5, Kind::FlowOff, parent);
  if (run.GetControls(parent).forwardOnly) return Refuse(run, Code::NB_2_1_5, Kind::ForwardOnly, parent);
  return Leave(run, PlexoSequencingRequest::Previous);
}

/// The activities that a choice leaves: the current one always, its ancestors below what it has in common
/// with the target. NB.2.1, 7.1.1.2 and 7.1.1.3.
PlexoIndex FindClosedExit(PlexoSequencingRun& run, PlexoIndex target) {
  const PlexoIndex current = run.state.current;
  if (current == kPlexoNone) return kPlexoNone;
  const PlexoIndex common = run.definition.FindCommonAncestor(current, target);
  for (PlexoIndex at = current; at == current || !run.definition.Holds(at, common); at = run.GetParent(at)) {
    if (run.At(at).isActive && !run.GetControls(at).choiceExit) return at;
    if (at == 0) break;
  }
  return kPlexoNone;
}

PlexoNavigationPlan PlanChoice(PlexoSequencingRun& run, PlexoIndex target) {
  if (target >= run.definition.GetCount()) return Refuse(run, Code::NB_2_1_11, Kind::UnknownTarget);
  const PlexoIndex parent = run.GetParent(target);
  if (parent != kPlexoNone && !run.GetControls(parent).choice)
    return Refuse(run, Code::NB_2_1_10, Kind::ChoiceOff, parent);
  if (const PlexoIndex closed = FindClosedExit(run, target); closed != kPlexoNone)
    return Refuse(run, Code::NB_2_1_8, Kind::ChoiceExitOff, closed);
  return Leave(run, PlexoSequencingRequest::Choice);
}

/// Jump came with the 4th Edition. It ends the current activity whether active or not, so that one that is
/// over makes the termination request process refuse.
PlexoNavigationPlan PlanJump(PlexoSequencingRun& run, PlexoIndex target) {
  if (run.definition.GetEdition() != PlexoSequencingEdition::Fourth)
    return Refuse(run, Code::NB_2_1_13, Kind::NotSupported);
  if (target >= run.definition.GetCount()) return Refuse(run, Code::NB_2_1_11, Kind::UnknownTarget);
  if (!run.IsAvailable(target)) return Refuse(run, Code::NB_2_1_11, Kind::NotSelected, target);
  return {true, PlexoTermination::Exit, PlexoSequencingRequest::Jump};
}

PlexoNavigationPlan PlanEnd(PlexoSequencingRun& run, PlexoTermination termination, bool takesActive) {
  const PlexoIndex current = run.state.current;
  if (current == kPlexoNone) return Refuse(run, Code::NB_2_1_2, Kind::NoSession);
  if (takesActive && !run.At(current).isActive)
    return Refuse(run, Code::NB_2_1_12, Kind::AlreadyTerminated, current);
  return {true, termination, PlexoSequencingRequest::Exit};
}

PlexoNavigationPlan PlanBegin(PlexoSequencingRun& run, PlexoSequencingRequest request) {
  if (run.state.current != kPlexoNone) return Refuse(run, Code::NB_2_1_1, Kind::SessionOpen);
  if (request == PlexoSequencingRequest::ResumeAll && run.state.suspended == kPlexoNone)
    return Refuse(run, Code::NB_2_1_3, Kind::NothingSuspended);
  return {true, PlexoTermination::None, request};
}

PlexoNavigationPlan PlanByKind(PlexoSequencingRun& run, const PlexoNavigationRequest& request) {
  switch (request.kind) {
    case PlexoNavigation::Start:
      return PlanBegin(run, PlexoSequencingRequest::Start);
    case PlexoNavigation::ResumeAll:
      return PlanBegin(run, PlexoSequencingRequest::ResumeAll);
    case PlexoNavigation::Continue:
      return PlanContinue(run);
    case PlexoNavigation::Previous:
      return PlanPrevious(run);
    case PlexoNavigation::Forward:
    case PlexoNavigation::Backward:
      return Refuse(run, Code::NB_2_1_7, Kind::NotSupported);
    case PlexoNavigation::Choice:
      return PlanChoice(run, request.target);
    case PlexoNavigation::Jump:
      return PlanJump(run, request.target);
    case PlexoNavigation::Exit:
      return PlanEnd(run, PlexoTermination::Exit, true);
    case PlexoNavigation::ExitAll:
      return PlanEnd(run, PlexoTermination::ExitAll, false);
    case PlexoNavigation::Abandon:
      return PlanEnd(run, PlexoTermination::Abandon, true);
    case PlexoNavigation::AbandonAll:
      return PlanEnd(run, PlexoTermination::AbandonAll, false);
    case PlexoNavigation::SuspendAll:
      return PlanEnd(run, PlexoTermination::SuspendAll, false);
  }
  return Refuse(run, Code::NB_2_1_13, Kind::NotSupported);
}

}  // namespace

PlexoNavigationPlan PlexoNavigationProcesses::Plan(PlexoSequencingRun& run,
                                                   const PlexoNavigationRequest& request) {
  const std::size_t step = run.Begin(PlexoProcess::NavigationRequest, run.state.current);
  const PlexoNavigationPlan plan = PlanByKind(run, request);
  if (!plan.isValid) run.End(step, run.exception);
  return plan;
}
