// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>

#include "sequencer/PlexoSequencingState.h"

/// The tracking information as rules and rollup see it: local information if this attempt (or an earlier one,
/// where the parent uses it) has recorded some, else that of the global objectives that the objective reads.
/// An activity that isn't tracked knows nothing. Both arguments must outlive the view.
class PlexoTrackingView {
 public:
  PlexoTrackingView(const PlexoSequencingDefinition& course, const PlexoSequencingState& learner)
      : definition(course), state(learner) {}

  /// Of an objective by its index among the activity's own; 0 is the primary one.
  [[nodiscard]] PlexoTruth GetSatisfied(PlexoIndex activity, PlexoIndex objective = 0) const;
  [[nodiscard]] PlexoMeasure GetMeasure(PlexoIndex activity, PlexoIndex objective = 0) const;
  [[nodiscard]] PlexoTruth GetCompleted(PlexoIndex activity, PlexoIndex objective = 0) const;
  [[nodiscard]] PlexoMeasure GetProgress(PlexoIndex activity, PlexoIndex objective = 0) const;
  [[nodiscard]] PlexoMeasure GetRawScore(PlexoIndex activity, PlexoIndex objective = 0) const;
  [[nodiscard]] PlexoMeasure GetMinScore(PlexoIndex activity, PlexoIndex objective = 0) const;
  [[nodiscard]] PlexoMeasure GetMaxScore(PlexoIndex activity, PlexoIndex objective = 0) const;
  /// The children of a cluster that are selected for this learner, in their order for this learner.
  [[nodiscard]] std::span<const PlexoIndex> GetAvailableChildren(PlexoIndex cluster) const;
  [[nodiscard]] bool IsAttempted(PlexoIndex activity) const;
  [[nodiscard]] bool IsAttemptLimitExceeded(PlexoIndex activity) const;

 private:
  [[nodiscard]] const PlexoObjectiveState* FindLocal(PlexoIndex activity, PlexoIndex objective,
                                                     bool isProgress) const;
  /// The global objective that a value of an objective is read from; null without one.
  [[nodiscard]] const PlexoObjectiveState* FindRead(PlexoIndex activity, PlexoIndex objective,
                                                    PlexoSharedValue value) const;
  template <auto Member>
  [[nodiscard]] auto GetValue(PlexoIndex activity, PlexoIndex objective, PlexoSharedValue value) const;

  const PlexoSequencingDefinition& definition;
  const PlexoSequencingState& state;
};
