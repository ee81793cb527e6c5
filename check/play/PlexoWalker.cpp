// SPDX-License-Identifier: Apache-2.0
#include "check/play/PlexoWalker.h"

#include <algorithm>
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
  chosen = order == Order::Backward ? static_cast<PlexoIndex>(visits.size()) : 0;
  bool guesses = true;
  while (!IsOver()) {
    // Looking at everything is worth it only where what comes next isn't open.
    const PlexoIndex next = guesses ? GuessNext(order, wanted) : kPlexoNone;
    if (next != kPlexoNone && Make({PlexoNavigation::Choice, next})) {
      chosen = next;
      continue;
    }
    // From the last to the first, a course in forced order is closed at every step.
    guesses = order != Order::Backward;
    chosen = FindOpen(learner.Look(), order, wanted);
    if (chosen == kPlexoNone || !Make({PlexoNavigation::Choice, chosen})) return;
  }
}

bool PlexoWalker::IsWanted(PlexoIndex content, Wanted wanted) const {
  const PlexoPlayedCourse& course = learner.GetCourse();
  if (!course.IsContent(content)) return false;
  if (visits[content] == 0) return true;
  constexpr std::uint32_t kMostAttempts = 20;
  const std::uint32_t limit = course.GetDefinition().GetRules(content).attemptLimit;
  if (wanted == Wanted::Limited)
    return limit != kPlexoNone && visits[content] < std::min(limit, kMostAttempts);
  return wanted == Wanted::Failed && visits[content] < kMostVisits && course.abilities[content].passes &&
         !learner.HasPassed(content);
}

PlexoIndex PlexoWalker::GuessNext(Order order, Wanted wanted) const {
  if (order == Order::Mixed) return kPlexoNone;
  const auto count = static_cast<PlexoIndex>(visits.size());
  if (order == Order::Forward) {
    for (PlexoIndex next = chosen + 1; next < count; ++next) {
      if (IsWanted(next, wanted)) return next;
    }
    return kPlexoNone;
  }
  for (PlexoIndex next = chosen; next-- > 1;) {
    if (IsWanted(next, wanted)) return next;
  }
  return kPlexoNone;
}

PlexoIndex PlexoWalker::FindOpen(const PlexoOutlook& outlook, Order order, Wanted wanted) const {
  const auto count = static_cast<PlexoIndex>(outlook.choices.size());
  // An arbitrary start is enough of a mixture, and is the same in every run.
  constexpr PlexoIndex kStride = 7919;
  const PlexoIndex first =
      order == Order::Mixed ? static_cast<PlexoIndex>(learner.GetSteps().size()) * kStride % count : 0;
  for (PlexoIndex index = 0; index < count; ++index) {
    const PlexoIndex target = order == Order::Backward ? count - 1 - index : (first + index) % count;
    const PlexoIndex delivers = outlook.choices[target].delivers;
    if (target != 0 && delivers != kPlexoNone && IsWanted(delivers, wanted)) return target;
  }
  return kPlexoNone;
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
