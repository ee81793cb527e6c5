// SPDX-License-Identifier: Apache-2.0
#include "sequencer/PlexoTerminationProcesses.h"

#include "sequencer/PlexoRollupProcesses.h"
#include "sequencer/PlexoUtilityProcesses.h"

namespace {

using Code = PlexoSequencingException;
using Kind = PlexoReasonKind;

/// Sequencing Exit Action Rules Subprocess [TB.2.1]: the highest ancestor with an exit rule that applies ends
/// too.
void ApplyExitActions(PlexoSequencingRun& run) {
  const PlexoIndex current = run.state.current;
  run.Begin(PlexoProcess::SequencingExitActionRules, current);
  if (current == 0) return;
  for (const PlexoIndex at : run.GetPath(kPlexoNone, run.GetParent(current))) {
    if (PlexoUtilityProcesses::FindRule(run, at, {PlexoRuleAction::Exit}) == kPlexoNone) continue;
    PlexoUtilityProcesses::TerminateDescendentAttempts(run, at);
    PlexoUtilityProcesses::EndAttempt(run, at);
    run.state.current = at;
    return;
  }
}

struct PlexoPostCondition {
  bool isFound = false;
  PlexoTermination termination = PlexoTermination::None;
  bool exitsParent = false;
  PlexoSequencingRequest sequencing = PlexoSequencingRequest::None;
};

/// Sequencing Post Condition Rules Subprocess [TB.2.2].
PlexoPostCondition ApplyPostConditions(PlexoSequencingRun& run) {
  using Action = PlexoRuleAction;
  const PlexoIndex current = run.state.current;
  const std::size_t step = run.Begin(PlexoProcess::SequencingPostConditionRules, current);
  if (run.At(current).isSuspended) return {};
  const PlexoIndex rule =
      PlexoUtilityProcesses::FindRule(run, current,
                                      {Action::ExitParent, Action::ExitAll, Action::Retry, Action::RetryAll,
                                       Action::Continue, Action::Previous});
  if (rule == kPlexoNone) return {};
  run.End(step, Code::None, rule);
  PlexoPostCondition post{true};
  const Action action = run.GetRules(current).rules[rule].action;
  post.exitsParent = action == Action::ExitParent;
  if (action == Action::ExitAll || action == Action::RetryAll) post.termination = PlexoTermination::ExitAll;
  if (action == Action::Retry || action == Action::RetryAll) post.sequencing = PlexoSequencingRequest::Retry;
  if (action == Action::Continue) post.sequencing = PlexoSequencingRequest::Continue;
  if (action == Action::Previous) post.sequencing = PlexoSequencingRequest::Previous;
  return post;
}

/// TB.2.3, 4. What a postcondition rule asked for (Retry, for "retryAll") stays pending behind the end of
/// all.
PlexoTerminationResult ExitAll(PlexoSequencingRun& run, PlexoSequencingRequest pending,
                               PlexoIndex redirectedBy) {
  if (run.At(run.state.current).isActive) PlexoUtilityProcesses::EndAttempt(run, run.state.current);
  PlexoUtilityProcesses::TerminateDescendentAttempts(run, 0);
  if (run.state.current != 0 || run.At(0).isActive) PlexoUtilityProcesses::EndAttempt(run, 0);
  run.state.current = 0;
  return {true, pending == PlexoSequencingRequest::None ? PlexoSequencingRequest::Exit : pending,
          redirectedBy};
}

/// TB.2.3, 3. "exitParent" goes on from the parent; each round is one level up, so the depth of the tree
/// bounds them.
PlexoTerminationResult Exit(PlexoSequencingRun& run) {
  PlexoUtilityProcesses::EndAttempt(run, run.state.current);
  ApplyExitActions(run);
  PlexoIndex redirectedBy = kPlexoNone;
  while (true) {
    const PlexoIndex current = run.state.current;
    const PlexoPostCondition post = ApplyPostConditions(run);
    if (redirectedBy == kPlexoNone && post.isFound) redirectedBy = current;
    if (post.termination == PlexoTermination::ExitAll) return ExitAll(run, post.sequencing, redirectedBy);
    if (post.exitsParent) {
      if (current == 0) {
        run.Refuse(Code::TB_2_3_4, Kind::NothingBefore, current);
        return {};
      }
      run.state.current = run.GetParent(current);
      PlexoUtilityProcesses::EndAttempt(run, run.state.current);
      continue;
    }
    if (current == 0 && post.sequencing != PlexoSequencingRequest::Retry)
      return {true, PlexoSequencingRequest::Exit, redirectedBy};
    return {true, post.sequencing,
            post.sequencing != PlexoSequencingRequest::None ? redirectedBy : kPlexoNone};
  }
}

/// TB.2.3, 5.
PlexoTerminationResult SuspendAll(PlexoSequencingRun& run) {
  const PlexoIndex current = run.state.current;
  if (run.At(current).isActive || run.At(current).isSuspended) {
    PlexoRollupProcesses::RollUp(run, current);
    run.state.suspended = current;
  } else if (current != 0) {
    run.state.suspended = run.GetParent(current);
  } else {
    run.Refuse(Code::TB_2_3_3, Kind::NothingSuspended, current);
    return {};
  }
  for (PlexoIndex at = run.state.suspended; at != kPlexoNone; at = run.GetParent(at)) {
    run.At(at).isActive = false;
    run.At(at).isSuspended = true;
  }
  run.state.current = 0;
  return {true, PlexoSequencingRequest::Exit};
}

/// TB.2.3, 7.
PlexoTerminationResult AbandonAll(PlexoSequencingRun& run) {
  for (PlexoIndex at = run.state.current; at != kPlexoNone; at = run.GetParent(at))
    run.At(at).isActive = false;
  run.state.current = 0;
  return {true, PlexoSequencingRequest::Exit};
}

PlexoTerminationResult TerminateByKind(PlexoSequencingRun& run, PlexoTermination request) {
  const PlexoIndex current = run.state.current;
  if (current == kPlexoNone) {
    run.Refuse(Code::TB_2_3_1, Kind::NoSession, kPlexoNone);
    return {};
  }
  if ((request == PlexoTermination::Exit || request == PlexoTermination::Abandon) &&
      !run.At(current).isActive) {
    run.Refuse(Code::TB_2_3_2, Kind::AlreadyTerminated, current);
    return {};
  }
  switch (request) {
    case PlexoTermination::Exit:
      return Exit(run);
    case PlexoTermination::ExitAll:
      return ExitAll(run, PlexoSequencingRequest::None, kPlexoNone);
    case PlexoTermination::SuspendAll:
      return SuspendAll(run);
    case PlexoTermination::AbandonAll:
      return AbandonAll(run);
    case PlexoTermination::Abandon:
      run.At(current).isActive = false;
      return {true};
    case PlexoTermination::None:
      break;
  }
  run.Refuse(Code::TB_2_3_7, Kind::NotSupported, current);
  return {};
}

}  // namespace

PlexoTerminationResult PlexoTerminationProcesses::Terminate(PlexoSequencingRun& run,
                                                            PlexoTermination request) {
  const std::size_t step = run.Begin(PlexoProcess::TerminationRequest, run.state.current);
  const PlexoTerminationResult result = TerminateByKind(run, request);
  if (!result.isValid) run.End(step, run.exception);
  return result;
}
