// SPDX-License-Identifier: Apache-2.0
#include "sequencer/PlexoSequencingProcesses.h"

#include "sequencer/PlexoChoiceProcesses.h"
#include "sequencer/PlexoFlowProcesses.h"
#include "sequencer/PlexoObjectiveSharing.h"
#include "sequencer/PlexoUtilityProcesses.h"

namespace {

using Code = PlexoSequencingException;
using Kind = PlexoReasonKind;

PlexoSequencingResult Refuse(PlexoSequencingRun& run, Code code, Kind kind,
                             PlexoIndex activity = kPlexoNone) {
  run.Refuse(code, kind, activity);
  return {};
}

PlexoSequencingResult GetResult(PlexoSequencingRun& run, const PlexoFlow& flow) {
  if (flow.isDeliverable) return {flow.activity};
  // SB.2.1, 3.1.1 ends all attempts but that on the root, which would so go on into the next session. The
  // session ends as it does by Exit All.
  if (flow.endsSession && run.At(0).isActive) PlexoUtilityProcesses::EndAttempt(run, 0);
  return {kPlexoNone, flow.endsSession};
}

/// Start Sequencing Request Process [SB.2.5].
PlexoSequencingResult Start(PlexoSequencingRun& run) {
  if (run.state.current != kPlexoNone) return Refuse(run, Code::SB_2_5_1, Kind::SessionOpen);
  if (run.IsLeaf(0)) return {0};
  return GetResult(run, PlexoFlowProcesses::Flow(run, 0, PlexoDirection::Forward, true));
}

/// Resume All Sequencing Request Process [SB.2.6].
PlexoSequencingResult ResumeAll(PlexoSequencingRun& run) {
  if (run.state.current != kPlexoNone) return Refuse(run, Code::SB_2_6_1, Kind::SessionOpen);
  if (run.state.suspended == kPlexoNone) return Refuse(run, Code::SB_2_6_2, Kind::NothingSuspended);
  return {run.state.suspended};
}

/// Continue and Previous Sequencing Request Processes [SB.2.7, SB.2.8].
PlexoSequencingResult Step(PlexoSequencingRun& run, PlexoDirection direction) {
  const PlexoIndex current = run.state.current;
  const bool isForward = direction == PlexoDirection::Forward;
  if (current == kPlexoNone) return Refuse(run, isForward ? Code::SB_2_7_1 : Code::SB_2_8_1, Kind::NoSession);
  if (current != 0 && !run.GetControls(run.GetParent(current)).flow)
    return Refuse(run, isForward ? Code::SB_2_7_2 : Code::SB_2_8_2, Kind::FlowOff, run.GetParent(current));
  return GetResult(run, PlexoFlowProcesses::Flow(run, current, direction, false));
}

// The flow into a cluster that is retried comes before its new attempt begins (DB.2), so by the letter of
// SB.2.10 the rules of the children see what they recorded in the attempt that is over: "skip if satisfied"
// would leave nothing to retry. What the new attempt will not use is set aside first, and put back if the
// retry fails.
PlexoSequencingResult RetryCluster(PlexoSequencingRun& run, PlexoIndex cluster) {
  const auto activities = run.state.activities;
  const auto globals = run.state.globals;
  PlexoObjectiveSharing::BeginChildrenAnew(run, {&cluster, 1});
  const PlexoFlow flow = PlexoFlowProcesses::Flow(run, cluster, PlexoDirection::Forward, true);
  if (flow.isDeliverable) return {flow.activity};
  run.state.activities = activities;
  run.state.globals = globals;
  const PlexoSequencingReason reason = run.reason;
  run.Refuse(Code::SB_2_10_3, reason.kind, reason.activity, reason.rule);
  return {};
}

/// Retry Sequencing Request Process [SB.2.10].
PlexoSequencingResult Retry(PlexoSequencingRun& run) {
  const PlexoIndex current = run.state.current;
  if (current == kPlexoNone) return Refuse(run, Code::SB_2_10_1, Kind::NoSession);
  if (run.At(current).isActive || run.At(current).isSuspended)
    return Refuse(run, Code::SB_2_10_2, Kind::StillActive, current);
  return run.IsLeaf(current) ? PlexoSequencingResult{current} : RetryCluster(run, current);
}

/// Exit Sequencing Request Process [SB.2.11].
PlexoSequencingResult Exit(PlexoSequencingRun& run) {
  const PlexoIndex current = run.state.current;
  if (current == kPlexoNone) return Refuse(run, Code::SB_2_11_1, Kind::NoSession);
  if (run.At(current).isActive) return Refuse(run, Code::SB_2_11_2, Kind::StillActive, current);
  return {kPlexoNone, current == 0};
}

/// Jump Sequencing Request Process [SB.2.13].
PlexoSequencingResult Jump(PlexoSequencingRun& run, PlexoIndex target) {
  if (run.state.current == kPlexoNone) return Refuse(run, Code::SB_2_13_1, Kind::NoSession);
  return {target};
}

PlexoSequencingResult Dispatch(PlexoSequencingRun& run, PlexoSequencingRequest request, PlexoIndex target) {
  switch (request) {
    case PlexoSequencingRequest::Start:
      return Start(run);
    case PlexoSequencingRequest::ResumeAll:
      return ResumeAll(run);
    case PlexoSequencingRequest::Continue:
      return Step(run, PlexoDirection::Forward);
    case PlexoSequencingRequest::Previous:
      return Step(run, PlexoDirection::Backward);
    case PlexoSequencingRequest::Choice:
      return {PlexoChoiceProcesses::Choose(run, target)};
    case PlexoSequencingRequest::Jump:
      return Jump(run, target);
    case PlexoSequencingRequest::Retry:
      return Retry(run);
    case PlexoSequencingRequest::Exit:
      return Exit(run);
    case PlexoSequencingRequest::None:
      break;
  }
  return Refuse(run, Code::SB_2_12_1, Kind::NotSupported);
}

PlexoProcess GetProcess(PlexoSequencingRequest request) {
  switch (request) {
    case PlexoSequencingRequest::Start:
      return PlexoProcess::StartSequencingRequest;
    case PlexoSequencingRequest::ResumeAll:
      return PlexoProcess::ResumeAllSequencingRequest;
    case PlexoSequencingRequest::Continue:
      return PlexoProcess::ContinueSequencingRequest;
    case PlexoSequencingRequest::Previous:
      return PlexoProcess::PreviousSequencingRequest;
    case PlexoSequencingRequest::Jump:
      return PlexoProcess::JumpSequencingRequest;
    case PlexoSequencingRequest::Retry:
      return PlexoProcess::RetrySequencingRequest;
    case PlexoSequencingRequest::Exit:
      return PlexoProcess::ExitSequencingRequest;
    case PlexoSequencingRequest::Choice:
    case PlexoSequencingRequest::None:
      break;
  }
  return PlexoProcess::SequencingRequest;
}

}  // namespace

PlexoSequencingResult PlexoSequencingProcesses::Process(PlexoSequencingRun& run,
                                                        PlexoSequencingRequest request, PlexoIndex target) {
  const std::size_t step = run.Begin(GetProcess(request), run.state.current);
  const PlexoSequencingResult result = Dispatch(run, request, target);
  if (result.delivery == kPlexoNone && !result.endsSession) run.End(step, run.exception);
  return result;
}
