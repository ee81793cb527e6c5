// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "sequencer/PlexoMeasure.h"
#include "sequencer/PlexoSequencingException.h"
#include "sequencer/PlexoSequencingReason.h"
#include "sequencer/PlexoSequencingRules.h"
#include "sequencer/PlexoTruth.h"

/// What a learner, an LMS or content may ask for. Forward and Backward exist in the book only to be refused.
enum class PlexoNavigation : std::uint8_t {
  Start,
  ResumeAll,
  Continue,
  Previous,
  Forward,
  Backward,
  Choice,
  Jump,
  Exit,
  ExitAll,
  Abandon,
  AbandonAll,
  SuspendAll,
};

struct PlexoNavigationRequest {
  PlexoNavigation kind = PlexoNavigation::Start;
  /// Of Choice and Jump.
  PlexoIndex target = kPlexoNone;
};

/// What the sequencing request process was asked at last: what navigation led to, or what a postcondition
/// rule put in its place.
enum class PlexoSequencingRequest : std::uint8_t {
  None,
  Start,
  ResumeAll,
  Continue,
  Previous,
  Choice,
  Jump,
  Retry,
  Exit,
};

struct PlexoNavigationOutcome {
  /// Content to launch; kPlexoNone if there is none.
  PlexoIndex delivered = kPlexoNone;
  /// The sequencing session is over.
  bool hasEnded = false;
  /// Why nothing is delivered, for a request that should deliver. A request may fail after the attempt on the
  /// current activity has ended: the state is as the book leaves it.
  PlexoSequencingException exception = PlexoSequencingException::None;
  PlexoSequencingReason reason;
  PlexoSequencingRequest sequencing = PlexoSequencingRequest::None;
  /// The activity whose postcondition rule chose the sequencing request; kPlexoNone if none did.
  PlexoIndex redirectedBy = kPlexoNone;

  friend bool operator==(const PlexoNavigationOutcome&, const PlexoNavigationOutcome&) = default;
};

/// What content reports of one of its objectives. What isn't set stays as it is, "unknown" can be set, and a
/// measure that isn't from -1 to 1 or a progress that isn't from 0 to 1 is taken as not set.
struct PlexoObjectiveData {
  std::string identifier;
  std::optional<PlexoTruth> satisfied;
  std::optional<PlexoMeasure> measure;
  std::optional<PlexoMeasure> rawScore;
  std::optional<PlexoMeasure> minScore;
  std::optional<PlexoMeasure> maxScore;
  std::optional<PlexoTruth> completed;
  std::optional<PlexoMeasure> progress;
};

/// What content reports of itself, in the terms of tracking: cmi.success_status, cmi.score,
/// cmi.completion_status, cmi.progress_measure, cmi.objectives and cmi.exit.
struct PlexoRunTimeData {
  /// Of the content as a whole; its identifier isn't used.
  PlexoObjectiveData whole;
  /// By identifier. An objective that the activity doesn't declare has no meaning for sequencing and is
  /// ignored.
  std::vector<PlexoObjectiveData> objectives;
  /// cmi.exit is "suspend" (or isn't): the next end of the attempt suspends it.
  std::optional<bool> isSuspended;
};
