// SPDX-License-Identifier: Apache-2.0
#include "check/play/PlexoStateExploration.h"

#include <algorithm>
#include <utility>

#include "check/play/PlexoStandstill.h"
#include "sequencer/PlexoTrackingView.h"

PlexoStateExploration::PlexoStateExploration(const PlexoPlayedCourse& played, PlexoSightings& all)
    : course(played), sightings(all) {}

void PlexoStateExploration::Run() {
  Node beginning;
  beginning.state = course.sequencer.NewState();
  Add(std::move(beginning));
  for (std::size_t index = 0; index < nodes.size(); ++index) {
    if (nodes.size() >= kMostStates || work >= kMostWork) {
      isComplete = false;
      return;
    }
    Expand(index);
  }
}

std::vector<PlexoVisit> PlexoStateExploration::GetVisits(PlexoIndex content) const {
  const PlexoContentAbility& ability = course.abilities[content];
  std::vector<PlexoVisit> visits = {PlexoVisit::Best};
  if (ability.fails) visits.push_back(PlexoVisit::Failing);
  if (ability.isLeftIncomplete && ability.completes) visits.push_back(PlexoVisit::Unfinished);
  return visits;
}

void PlexoStateExploration::Expand(std::size_t index) {
  const PlexoIndex current = nodes[index].state.current;
  if (current == kPlexoNone) {
    const Leaving outside{index, PlexoVisit::Idle, nodes[index].state};
    Follow(outside, {PlexoNavigation::Start});
    Leave(outside);
    return;
  }
  for (const PlexoVisit visit : GetVisits(current)) {
    Leaving leaving{index, visit, nodes[index].state};
    course.sequencer.Record(leaving.state, course.GetReport(current, visit));
    Leave(leaving);
    Follow(leaving, {PlexoNavigation::ExitAll});
  }
}

void PlexoStateExploration::Leave(const Leaving& leaving) {
  const PlexoOutlook outlook = course.sequencer.Look(leaving.state);
  work += outlook.choices.size();
  std::optional<PlexoLearner>& found = nodes[leaving.node].isFirstSession ? lost : lostLater;
  if (!found && PlexoStandstill::IsIn(outlook) && IsLost(leaving)) found = Replay(leaving);
  if (outlook.onContinue.IsOpen()) Follow(leaving, {PlexoNavigation::Continue});
  if (outlook.onPrevious.IsOpen()) Follow(leaving, {PlexoNavigation::Previous});
  for (PlexoIndex target = 1; target < outlook.choices.size(); ++target) {
    const PlexoIndex delivers = outlook.choices[target].delivers;
    // A cluster leads to what can be chosen itself, as a rule.
    if (delivers == kPlexoNone || (delivers != target && outlook.choices[delivers].IsOpen())) continue;
    Follow(leaving, {PlexoNavigation::Choice, target});
  }
}

void PlexoStateExploration::Follow(const Leaving& leaving, PlexoNavigationRequest request) {
  const bool isFirstSession = nodes[leaving.node].isFirstSession && request.kind != PlexoNavigation::ExitAll;
  Node next{leaving.state, leaving.node, isFirstSession, leaving.visit, request};
  const PlexoNavigationOutcome outcome = course.sequencer.Request(next.state, request);
  ++sightings.requests;
  work += course.GetDefinition().GetCount();
  if (outcome.delivered == kPlexoNone && !outcome.hasEnded) return;
  if (outcome.delivered != kPlexoNone) sightings.isReached[outcome.delivered] = true;
  const PlexoTrackingView view(course.GetDefinition(), next.state);
  sightings.isCompleted = sightings.isCompleted || view.GetCompleted(0).IsTrue();
  sightings.isPassed = sightings.isPassed || view.GetSatisfied(0).IsTrue();
  Normalize(next.state);
  Add(std::move(next));
}

void PlexoStateExploration::Add(Node node) {
  const std::size_t hash = node.state.GetHash();
  const auto [first, last] = byHash.equal_range(hash);
  if (std::any_of(first, last, [&](const auto& known) { return nodes[known.second].state == node.state; }))
    return;
  byHash.emplace(hash, nodes.size());
  nodes.push_back(std::move(node));
}

void PlexoStateExploration::Normalize(PlexoSequencingState& state) const {
  for (PlexoIndex activity = 0; activity < state.activities.size(); ++activity) {
    const std::uint32_t limit = course.GetDefinition().GetRules(activity).attemptLimit;
    std::uint32_t& attempts = state.activities[activity].attemptCount;
    attempts = std::min(attempts, limit == kPlexoNone ? 1U : std::max(limit, 1U));
  }
}

bool PlexoStateExploration::IsLost(const Leaving& leaving) const {
  PlexoSequencingState state = leaving.state;
  course.sequencer.Request(state, {PlexoNavigation::ExitAll});
  if (PlexoTrackingView(course.GetDefinition(), state).GetCompleted(0).IsTrue()) return false;
  if (!PlexoStandstill::IsListClosed(course.sequencer.Look(state))) return false;
  return course.sequencer.Request(state, {PlexoNavigation::Start}).delivered == kPlexoNone;
}

PlexoLearner PlexoStateExploration::Replay(const Leaving& leaving) const {
  std::vector<std::size_t> way;
  for (std::size_t at = leaving.node; at != 0; at = nodes[at].before) way.push_back(at);
  std::reverse(way.begin(), way.end());
  PlexoLearner learner(course);
  for (const std::size_t at : way) {
    if (learner.GetLaunched() != kPlexoNone) learner.Visit(nodes[at].visit);
    learner.Ask(nodes[at].request, PlexoVisit::Idle);
  }
  if (learner.GetLaunched() != kPlexoNone) learner.Visit(leaving.visit);
  return learner;
}
