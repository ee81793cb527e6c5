// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "check/play/PlexoLearner.h"
#include "check/play/PlexoWitness.h"

enum class PlexoPlayedKind : std::uint8_t {
  /// Content that no learner can launch: the activities; why, or the content to blame.
  NeverReached,
  /// No learner can complete, or pass, the course.
  NeverCompleted,
  NeverPassed,
  /// After a visit nothing can be launched any more; or not before the course is started anew.
  Lost,
  LostInSession,
  /// The same as the first, for a learner who left the course without suspending it.
  LostLater,
  /// Who passed a pretest is still led to the content: the pretest, the content.
  PretestInVain,
  /// The course is complete before content was seen that is open.
  CompletedUnseen,
  /// Continue launches nothing behind content, though other content wasn't seen.
  ContinueStops,
  /// A new course, or one that was left, can't be started.
  StartLaunchesNothing,
  RestartLaunchesNothing,
  /// Who fails content at first can't pass the course afterwards.
  FailureSticks,
  /// Who suspends the course can't go on, or can't complete it.
  SuspensionLoses,
};

/// One finding of a play, with its proof.
struct PlexoPlayedFinding {
  PlexoPlayedKind kind = PlexoPlayedKind::NeverReached;
  /// What it is about, the most important one first; never empty.
  std::vector<PlexoIndex> activities;
  /// Content whose silence is to blame: kPlexoNone if the sequencing is.
  PlexoIndex silent = kPlexoNone;
  /// What was made of the last content, of Lost and LostInSession.
  PlexoVisit visit = PlexoVisit::Best;
  /// Of RestartLaunchesNothing: nor can the course be resumed, if it was suspended there.
  bool keepsFromResuming = false;
  /// Of NeverReached: no learner can complete the course for it.
  bool keepsFromCompleting = false;
  /// In the sequencer's words; may be empty.
  std::string reason;
  PlexoWitness witness;
};

struct PlexoPlayResult {
  /// At most one of each kind.
  std::vector<PlexoPlayedFinding> findings;
  std::size_t learners = 0;
  std::uint64_t requests = 0;
  std::size_t states = 0;
  /// False if the bound of the exploration was met: learners not played may find other ways.
  bool areAllStatesSeen = true;
  /// A learner's walk was stopped by its bound.
  bool isWalkStopped = false;
};

/// Plays a course as different learners would go through it, and says what none of them can do, or what
/// surprises one of them.
///
/// Each learner is one walk through the course, in time that grows with it; in between, every state that
/// learners can bring about is explored, breadth first and up to a bound (PlexoStateExploration). Children
/// that are selected or ordered at random are played in one order.
class PlexoCoursePlay {
 public:
  [[nodiscard]] static PlexoPlayResult Run(const PlexoPlayedCourse& course);
};
