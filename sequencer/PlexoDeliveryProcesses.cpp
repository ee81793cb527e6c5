// SPDX-License-Identifier: Apache-2.0
#include "sequencer/PlexoDeliveryProcesses.h"

#include <algorithm>
#include <iterator>
#include <vector>

#include "sequencer/PlexoObjectiveSharing.h"
#include "sequencer/PlexoUtilityProcesses.h"

namespace {

using Code = PlexoSequencingException;

// The pseudo-code of DB.2.1 begins the path at the parent of the suspended activity, and then has a step for
// a leaf on it. The path that the step needs, and that lets a new attempt begin on an activity that wasn't
// resumed, begins at the suspended activity itself.
void ClearSuspendedActivity(PlexoSequencingRun& run, PlexoIndex activity) {
  const PlexoIndex suspended = run.state.suspended;
  if (suspended == kPlexoNone) return;
  run.Begin(PlexoProcess::ClearSuspendedActivity, activity);
  const PlexoIndex common = run.definition.FindCommonAncestor(activity, suspended);
  for (PlexoIndex at = suspended;; at = run.GetParent(at)) {
    const auto children = run.definition.GetChildren(at);
    run.At(at).isSuspended = std::any_of(children.begin(), children.end(),
                                         [&run](PlexoIndex child) { return run.At(child).isSuspended; });
    if (at == common) break;
  }
  run.state.suspended = kPlexoNone;
}

bool IsNewAttempt(const PlexoActivityState& at) { return !at.isActive && !at.isSuspended; }

// DB.2, 5.1.1 clears "suspended" of tracked activities alone. One that isn't tracked would stay suspended for
// good, and its postcondition rules would never apply again, so it is cleared too.
void BeginAttempt(PlexoSequencingRun& run, PlexoIndex activity) {
  PlexoActivityState& at = run.At(activity);
  if (IsNewAttempt(at) && run.IsTracked(activity)) {
    ++at.attemptCount;
    at.isProgressKnown = true;
    PlexoObjectiveSharing::ForgetAttempt(run, activity);
  }
  if (!at.isActive) at.isSuspended = false;
  at.isActive = true;
  at.areObjectivesStale = false;
  at.isProgressStale = false;
}

}  // namespace

bool PlexoDeliveryProcesses::CanDeliver(PlexoSequencingRun& run, PlexoIndex activity) {
  const std::size_t step = run.Begin(PlexoProcess::DeliveryRequest, activity);
  bool can = run.IsLeaf(activity) || run.Refuse(Code::DB_1_1_1, PlexoReasonKind::NotALeaf, activity);
  if (can) {
    const auto path = run.GetPath(kPlexoNone, activity);
    can = std::all_of(path.begin(), path.end(), [&run](PlexoIndex at) {
      return PlexoUtilityProcesses::IsAllowed(run, at, Code::DB_1_1_3);
    });
  }
  if (!can) run.End(step, run.exception);
  return can;
}

bool PlexoDeliveryProcesses::Deliver(PlexoSequencingRun& run, PlexoIndex activity) {
  PlexoSequencingState& state = run.state;
  const std::size_t step = run.Begin(PlexoProcess::ContentDeliveryEnvironment, activity);
  if (state.current != kPlexoNone && run.At(state.current).isActive) {
    run.Refuse(Code::DB_2_1, PlexoReasonKind::StillActive, state.current);
    run.End(step, run.exception);
    return false;
  }
  if (activity != state.suspended) ClearSuspendedActivity(run, activity);
  PlexoUtilityProcesses::TerminateDescendentAttempts(run, activity);
  const auto path = run.GetPath(kPlexoNone, activity);
  std::vector<PlexoIndex> begun;
  std::copy_if(path.begin(), path.end(), std::back_inserter(begun),
               [&run](PlexoIndex at) { return IsNewAttempt(run.At(at)); });
  PlexoObjectiveSharing::BeginChildrenAnew(run, begun);
  for (const PlexoIndex at : path) BeginAttempt(run, at);
  state.current = activity;
  state.suspended = kPlexoNone;
  return true;
}
