// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "sequencer/PlexoMeasure.h"
#include "sequencer/PlexoSequencingDefinition.h"
#include "sequencer/PlexoTruth.h"

/// What one objective, local or global, knows. Completion and progress of an activity's primary objective are
/// those of the attempt on the activity.
struct PlexoObjectiveState {
  PlexoMeasure measure;
  PlexoMeasure rawScore;
  PlexoMeasure minScore;
  PlexoMeasure maxScore;
  PlexoMeasure progress;
  PlexoTruth satisfied;
  PlexoTruth completed;
  /// Of local objectives, one bit a PlexoSharedValue: this attempt has written a known value to global
  /// objectives.
  std::uint8_t shared = 0;

  friend bool operator==(const PlexoObjectiveState&, const PlexoObjectiveState&) = default;
};

struct PlexoActivityState {
  std::uint32_t attemptCount = 0;
  /// The book's Activity Progress Status: an attempt has begun.
  bool isProgressKnown = false;
  bool isActive = false;
  bool isSuspended = false;
  /// Recorded before the current attempt on the parent, and the parent uses only what is recorded in it.
  bool areObjectivesStale = false;
  bool isProgressStale = false;

  friend bool operator==(const PlexoActivityState&, const PlexoActivityState&) = default;
};

/// Where one learner is in one course: a value. Copying it is all that stepping back, exploring and storing
/// take; two states are equal if the learner's way from here on is the same. PlexoSequencer changes it,
/// PlexoTrackingView reads statuses as sequencing sees them; what is stored here is the local information
/// alone.
struct PlexoSequencingState {
  PlexoSequencingState() = default;
  /// Nothing attempted, all children available in the order of the manifest.
  explicit PlexoSequencingState(const PlexoSequencingDefinition& definition);

  /// One an activity.
  std::vector<PlexoActivityState> activities;
  /// Of all activities; those of an activity begin at its firstObjective.
  std::vector<PlexoObjectiveState> objectives;
  /// One a global objective.
  std::vector<PlexoObjectiveState> globals;
  /// The available children in their order, in the slots of PlexoSequencingDefinition; kPlexoNone behind the
  /// last. Empty for a course without randomization, in which all children are available.
  std::vector<PlexoIndex> availableChildren;
  /// The slot of each activity among its parent's, likewise; kPlexoNone if it isn't available.
  std::vector<std::uint32_t> slots;
  PlexoIndex current = kPlexoNone;
  PlexoIndex suspended = kPlexoNone;
  /// Of the generator of random numbers.
  std::uint64_t random = 0;

  [[nodiscard]] bool IsSessionOpen() const { return current != kPlexoNone; }
  [[nodiscard]] std::size_t GetHash() const;
  friend bool operator==(const PlexoSequencingState&, const PlexoSequencingState&) = default;
};
