// SPDX-License-Identifier: Apache-2.0
#include "check/play/PlexoLearner.h"

#include <utility>

#include "sequencer/PlexoTrackingView.h"

PlexoRunTimeData PlexoPlayedCourse::GetReport(PlexoIndex activity, PlexoVisit visit) const {
  const PlexoContentAbility& ability = abilities[activity];
  PlexoRunTimeData data;
  if (visit == PlexoVisit::Idle) return data;
  if (visit == PlexoVisit::Unfinished) {
    if (ability.completes) data.whole.completed = PlexoTruth::False();
    return data;
  }
  const bool fails = visit == PlexoVisit::Failing && ability.fails;
  if (ability.completes) {
    data.whole.completed = PlexoTruth::True();
    if (GetDefinition().GetRules(activity).completion.isByMeasure) data.whole.progress = PlexoMeasure(1);
  }
  if (fails || ability.passes) data.whole.satisfied = PlexoTruth::Of(!fails);
  if (ability.scores) data.whole.measure = PlexoMeasure(fails ? 0 : 1);
  return data;
}

PlexoLearner::PlexoLearner(const PlexoPlayedCourse& played)
    : course(&played), state(played.sequencer.NewState()) {}

bool PlexoLearner::Ask(PlexoNavigationRequest request, PlexoVisit visit) {
  const PlexoNavigationOutcome outcome = course->sequencer.Request(state, request);
  steps.push_back({request, PlexoVisit::Idle, outcome.delivered, outcome.hasEnded});
  if (outcome.delivered == kPlexoNone) return false;
  Visit(visit);
  return true;
}

bool PlexoLearner::Try(PlexoNavigationRequest request, PlexoVisit visit) {
  PlexoSequencingState before = state;
  if (Ask(request, visit)) return true;
  state = std::move(before);
  steps.pop_back();
  return false;
}

void PlexoLearner::Visit(PlexoVisit visit) {
  PlexoLearnerStep& step = steps.back();
  step.visit = visit;
  if (visit == PlexoVisit::Idle) return;
  course->sequencer.Record(state, course->GetReport(step.delivered, visit));
}

bool PlexoLearner::HasCompleted(PlexoIndex activity) const {
  return PlexoTrackingView(course->GetDefinition(), state).GetCompleted(activity).IsTrue();
}

bool PlexoLearner::HasPassed(PlexoIndex activity) const {
  return PlexoTrackingView(course->GetDefinition(), state).GetSatisfied(activity).IsTrue();
}

bool PlexoLearner::HasAttempted(PlexoIndex activity) const {
  return PlexoTrackingView(course->GetDefinition(), state).IsAttempted(activity);
}
