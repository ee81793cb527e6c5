// SPDX-License-Identifier: Apache-2.0
#include "sequencer/PlexoSequencer.h"

#include <algorithm>
#include <utility>

#include "sequencer/PlexoDeliveryProcesses.h"
#include "sequencer/PlexoNavigationProcesses.h"
#include "sequencer/PlexoOutlookSurvey.h"
#include "sequencer/PlexoRollupProcesses.h"
#include "sequencer/PlexoSelectionProcesses.h"
#include "sequencer/PlexoSequencingProcesses.h"
#include "sequencer/PlexoTerminationProcesses.h"

namespace {

PlexoNavigationOutcome Fail(const PlexoSequencingRun& run, PlexoNavigationOutcome outcome) {
  outcome.exception = run.exception;
  outcome.reason = run.reason;
  return outcome;
}

template <typename Value>
void Set(Value& value, const std::optional<Value>& reported) {
  if (reported.has_value()) value = *reported;
}

/// A number that is out of its range is no value at all.
void SetWithin(PlexoMeasure& value, const std::optional<PlexoMeasure>& reported, double least) {
  if (!reported.has_value()) return;
  const double number = reported->GetValue();
  if (!reported->IsKnown() || (number >= least && number <= 1)) value = *reported;
}

/// What content reports of one objective. A measure decides satisfaction where the objective says so.
void RecordObjective(PlexoSequencingRun& run, PlexoIndex activity, PlexoIndex objective,
                     const PlexoObjectiveData& data) {
  const PlexoActivityNode& node = run.definition.Get(activity);
  const PlexoObjectiveDefinition& rules = node.rules.objectives[objective];
  PlexoObjectiveState& state = run.state.objectives[node.firstObjective + objective];
  SetWithin(state.measure, data.measure, -1);
  Set(state.rawScore, data.rawScore);
  Set(state.minScore, data.minScore);
  Set(state.maxScore, data.maxScore);
  SetWithin(state.progress, data.progress, 0);
  Set(state.satisfied, data.satisfied);
  Set(state.completed, data.completed);
  if (rules.isSatisfiedByMeasure) {
    state.satisfied = objective == 0
                          ? PlexoRollupProcesses::GetSatisfiedByMeasure(run, activity, state.measure)
                          : state.measure.IsAtLeast(rules.minNormalizedMeasure);
  }
  // The 4th Edition decides completion by measure alone; in the 3rd the threshold overrides what content says
  // only once there is a measure.
  const PlexoCompletionThreshold& completion = node.rules.completion;
  if (objective != 0 || !completion.isByMeasure) return;
  const PlexoTruth byMeasure = state.progress.IsAtLeast(completion.minProgressMeasure);
  if (byMeasure.IsKnown() || run.definition.GetEdition() == PlexoSequencingEdition::Fourth)
    state.completed = byMeasure;
}

}  // namespace

PlexoSequencer::PlexoSequencer(std::shared_ptr<const PlexoSequencingDefinition> course)
    : definition(std::move(course)) {}

PlexoSequencingState PlexoSequencer::NewState(std::uint64_t seed) const {
  PlexoSequencingState state(*definition);
  // Without randomization the seed would only tell apart what is equal.
  if (definition->HasRandomization()) state.random = seed;
  PlexoSequencingRun run(*definition, state, nullptr);
  PlexoSelectionProcesses::PrepareFirstAttempts(run);
  return state;
}

PlexoNavigationOutcome PlexoSequencer::Request(PlexoSequencingState& state,
                                               const PlexoNavigationRequest& request,
                                               PlexoSequencingTrace* trace) const {
  PlexoSequencingRun run(*definition, state, trace);
  run.Begin(PlexoProcess::OverallSequencing);
  PlexoNavigationOutcome outcome;
  const PlexoNavigationPlan plan = PlexoNavigationProcesses::Plan(run, request);
  if (!plan.isValid) return Fail(run, outcome);
  outcome.sequencing = plan.sequencing;
  if (plan.termination != PlexoTermination::None) {
    const PlexoTerminationResult ended = PlexoTerminationProcesses::Terminate(run, plan.termination);
    if (!ended.isValid) return Fail(run, outcome);
    if (ended.sequencing != PlexoSequencingRequest::None) outcome.sequencing = ended.sequencing;
    outcome.redirectedBy = ended.redirectedBy;
  }
  const PlexoSequencingResult result =
      PlexoSequencingProcesses::Process(run, outcome.sequencing, request.target);
  if (result.endsSession) {
    state.current = kPlexoNone;
    outcome.hasEnded = true;
    return Fail(run, outcome);
  }
  if (result.delivery == kPlexoNone) return Fail(run, outcome);
  if (!PlexoDeliveryProcesses::CanDeliver(run, result.delivery)) return Fail(run, outcome);
  if (!PlexoDeliveryProcesses::Deliver(run, result.delivery)) return Fail(run, outcome);
  outcome.delivered = result.delivery;
  return outcome;
}

bool PlexoSequencer::Record(PlexoSequencingState& state, const PlexoRunTimeData& data) const {
  const PlexoIndex current = state.current;
  PlexoSequencingRun run(*definition, state, nullptr);
  if (current == kPlexoNone || !run.IsLeaf(current) || !run.At(current).isActive) return false;
  if (data.isSuspended.has_value()) run.At(current).isSuspended = *data.isSuspended;
  if (!run.IsTracked(current)) return false;
  for (const PlexoObjectiveData& objective : data.objectives) {
    const PlexoIndex index = definition->FindObjective(current, objective.identifier);
    if (index != kPlexoNone && !objective.identifier.empty()) RecordObjective(run, current, index, objective);
  }
  // The content as a whole comes last: its status is that of the primary objective, which it may have set
  // under its identifier too.
  RecordObjective(run, current, 0, data.whole);
  return true;
}

void PlexoSequencer::RollUp(PlexoSequencingState& state, PlexoSequencingTrace* trace) const {
  if (state.current == kPlexoNone) return;
  PlexoSequencingRun run(*definition, state, trace);
  PlexoRollupProcesses::RollUp(run, state.current);
}

PlexoOutlook PlexoSequencer::Look(const PlexoSequencingState& state) const {
  return PlexoOutlookSurvey(*definition, state).Make();
}
