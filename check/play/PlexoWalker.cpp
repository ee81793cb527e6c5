// SPDX-License-Identifier: Apache-2.0
#include "check/play/PlexoWalker.h"

#include <utility>

void PlexoSightings::Note(const PlexoLearner& learner) {
  ++requests;
  if (learner.GetLaunched() != kPlexoNone) isReached[learner.GetLaunched()] = true;
  isCompleted = isCompleted || learner.HasCompleted();
  isPassed = isPassed || learner.HasPassed();
}

PlexoWalker::PlexoWalker(const PlexoPlayedCourse& course, PlexoSightings& all, Policy toVisit)
    : learner(course),
      sightings(all),
      policy(std::move(toVisit)),
      visits(course.GetDefinition().GetCount(), 0) {}

bool PlexoWalker::Make(PlexoNavigationRequest request) {
  if (!learner.Try(request, PlexoVisit::Idle)) {
    ++sightings.requests;
    return false;
  }
  sightings.Note(learner);
  ++visits[GetLaunched()];
  learner.Visit(policy(*this));
  return true;
}

bool PlexoWalker::Start() { return Make({PlexoNavigation::Start}); }

void PlexoWalker::Continue() {
  while (!IsOver() && Make({PlexoNavigation::Continue})) {
    if (visits[GetLaunched()] > kMostVisits) return;
  }
}

void PlexoWalker::Choose(Order order, Wanted wanted) {
  while (!IsOver()) {
    const PlexoNavigationRequest request = FindOpen(learner.Look(), order, wanted);
    if (request.target == kPlexoNone || !Make(request)) return;
  }
}

bool PlexoWalker::IsWanted(PlexoIndex content, Wanted wanted) const {
  if (!learner.GetCourse().IsContent(content)) return false;
  if (visits[content] == 0) return true;
  return wanted == Wanted::Failed && visits[content] < kMostVisits &&
         learner.GetCourse().abilities[content].passes && !learner.HasPassed(content);
}

PlexoNavigationRequest PlexoWalker::FindOpen(const PlexoOutlook& outlook, Order order, Wanted wanted) const {
  const auto count = static_cast<PlexoIndex>(outlook.choices.size());
  // An arbitrary start is enough of a mixture, and is the same in every run.
  constexpr PlexoIndex kStride = 7919;
  const PlexoIndex first =
      order == Order::Mixed ? static_cast<PlexoIndex>(learner.GetSteps().size()) * kStride % count : 0;
  for (PlexoIndex index = 0; index < count; ++index) {
    PlexoIndex target = (first + index) % count;
    if (order == Order::Backward) target = count - 1 - index;
    // A rule of the content at hand would put another request in place of a choice of something else.
    const PlexoIndex delivers = outlook.choices[target].delivers;
    if (delivers != kPlexoNone && IsWanted(delivers, wanted)) return {PlexoNavigation::Choice, target};
  }
  return {PlexoNavigation::Choice, kPlexoNone};
}

bool PlexoWalker::Ask(PlexoNavigation request) {
  const bool launches = learner.Ask({request}, PlexoVisit::Idle);
  sightings.Note(learner);
  return launches;
}

void PlexoWalker::Leave() {
  if (learner.GetState().IsSessionOpen()) Ask(PlexoNavigation::ExitAll);
}

bool PlexoWalker::HasUnseen() const {
  for (PlexoIndex activity = 0; activity < visits.size(); ++activity) {
    if (visits[activity] == 0 && learner.GetCourse().IsContent(activity)) return true;
  }
  return false;
}

bool PlexoWalker::IsOver() {
  if (learner.GetSteps().size() < kStepsAnActivity * visits.size()) return false;
  sightings.isStopped = true;
  return true;
}
