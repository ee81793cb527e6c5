// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>
#include <string>
#include <vector>

#include "check/play/PlexoContentAbility.h"
#include "sequencer/PlexoSequencer.h"

/// What a learner makes of the content that a request launches.
enum class PlexoVisit : std::uint8_t {
  /// Reads to the end and passes, as far as the content can report that.
  Best,
  /// Reads to the end and fails; the best visit to content that can't report a failure.
  Failing,
  /// Leaves half-read content.
  Unfinished,
  /// Does nothing in it.
  Idle,
};

/// One request of a learner, what came of it, and what the learner then did.
struct PlexoLearnerStep {
  PlexoNavigationRequest request;
  PlexoVisit visit = PlexoVisit::Best;
  PlexoIndex delivered = kPlexoNone;
  bool hasEnded = false;
};

/// A course to play: how it sequences, and what the content of each activity can report.
struct PlexoPlayedCourse {
  PlexoSequencer sequencer;
  std::vector<PlexoContentAbility> abilities;

  [[nodiscard]] const PlexoSequencingDefinition& GetDefinition() const { return sequencer.GetDefinition(); }
  [[nodiscard]] bool IsContent(PlexoIndex activity) const {
    return GetDefinition().Get(activity).IsLeaf() && abilities[activity].launches;
  }
  /// What the content of an activity reports in such a visit.
  [[nodiscard]] PlexoRunTimeData GetReport(PlexoIndex activity, PlexoVisit visit) const;
};

/// One learner in a course, with all steps from the first session on. A value: a copy tries what else might
/// come next.
class PlexoLearner {
 public:
  explicit PlexoLearner(const PlexoPlayedCourse& played);

  /// Makes the request and the visit. False if nothing was launched; the step counts all the same.
  bool Ask(PlexoNavigationRequest request, PlexoVisit visit = PlexoVisit::Best);
  /// The same, but a request that launches nothing isn't made.
  bool Try(PlexoNavigationRequest request, PlexoVisit visit = PlexoVisit::Best);
  /// Makes another visit of the last one, which must have been idle.
  void Visit(PlexoVisit visit);

  [[nodiscard]] const PlexoPlayedCourse& GetCourse() const { return *course; }
  [[nodiscard]] const PlexoSequencingState& GetState() const { return state; }
  [[nodiscard]] const std::vector<PlexoLearnerStep>& GetSteps() const { return steps; }
  /// What was launched last; kPlexoNone if the last request launched nothing.
  [[nodiscard]] PlexoIndex GetLaunched() const { return steps.empty() ? kPlexoNone : steps.back().delivered; }
  [[nodiscard]] PlexoOutlook Look() const { return course->sequencer.Look(state); }
  [[nodiscard]] bool HasCompleted(PlexoIndex activity = 0) const;
  [[nodiscard]] bool HasPassed(PlexoIndex activity = 0) const;
  [[nodiscard]] bool HasAttempted(PlexoIndex activity) const;

 private:
  const PlexoPlayedCourse* course;
  PlexoSequencingState state;
  std::vector<PlexoLearnerStep> steps;
};
