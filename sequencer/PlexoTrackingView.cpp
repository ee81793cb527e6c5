// SPDX-License-Identifier: Apache-2.0
#include "sequencer/PlexoTrackingView.h"

#include <algorithm>

const PlexoObjectiveState* PlexoTrackingView::FindLocal(PlexoIndex activity, PlexoIndex objective,
                                                        bool isProgress) const {
  const PlexoActivityNode& node = definition.Get(activity);
  const PlexoActivityState& at = state.activities[activity];
  if (!node.rules.delivery.tracked) return nullptr;
  if (isProgress ? at.isProgressStale : at.areObjectivesStale) return nullptr;
  return &state.objectives[node.firstObjective + objective];
}

const PlexoObjectiveState* PlexoTrackingView::FindRead(PlexoIndex activity, PlexoIndex objective,
                                                       PlexoSharedValue value) const {
  for (const PlexoMapInfo& map : definition.GetRules(activity).objectives[objective].maps) {
    if (map.Reads(value)) return &state.globals[map.global];
  }
  return nullptr;
}

// A global objective is read where the local one knows nothing, as the descriptions of the map attributes say
// ("when the progress for the local objective is undefined"; Sequencing Definition Model, objective map).
template <auto Member>
auto PlexoTrackingView::GetValue(PlexoIndex activity, PlexoIndex objective, PlexoSharedValue value) const {
  // Completion and progress of the primary objective are those of the attempt.
  const bool isProgress = objective == 0 && (value == PlexoSharedValue::CompletionStatus ||
                                             value == PlexoSharedValue::ProgressMeasure);
  if (const auto* local = FindLocal(activity, objective, isProgress);
      local != nullptr && (local->*Member).IsKnown())
    return local->*Member;
  const PlexoObjectiveState* global = FindRead(activity, objective, value);
  return global != nullptr ? global->*Member : decltype(global->*Member){};
}

PlexoTruth PlexoTrackingView::GetSatisfied(PlexoIndex activity, PlexoIndex objective) const {
  const PlexoObjectiveDefinition& rules = definition.GetRules(activity).objectives[objective];
  if (!rules.isSatisfiedByMeasure)
    return GetValue<&PlexoObjectiveState::satisfied>(activity, objective, PlexoSharedValue::SatisfiedStatus);
  // A measure takes the place of any other way to decide satisfaction, so a global status isn't looked at.
  if (const auto* local = FindLocal(activity, objective, false); local != nullptr && local->measure.IsKnown())
    return local->satisfied;
  const auto* global = FindRead(activity, objective, PlexoSharedValue::NormalizedMeasure);
  return global != nullptr ? global->measure.IsAtLeast(rules.minNormalizedMeasure) : PlexoTruth::Unknown();
}

PlexoMeasure PlexoTrackingView::GetMeasure(PlexoIndex activity, PlexoIndex objective) const {
  return GetValue<&PlexoObjectiveState::measure>(activity, objective, PlexoSharedValue::NormalizedMeasure);
}

PlexoTruth PlexoTrackingView::GetCompleted(PlexoIndex activity, PlexoIndex objective) const {
  return GetValue<&PlexoObjectiveState::completed>(activity, objective, PlexoSharedValue::CompletionStatus);
}

PlexoMeasure PlexoTrackingView::GetProgress(PlexoIndex activity, PlexoIndex objective) const {
  return GetValue<&PlexoObjectiveState::progress>(activity, objective, PlexoSharedValue::ProgressMeasure);
}

PlexoMeasure PlexoTrackingView::GetRawScore(PlexoIndex activity, PlexoIndex objective) const {
  return GetValue<&PlexoObjectiveState::rawScore>(activity, objective, PlexoSharedValue::RawScore);
}

PlexoMeasure PlexoTrackingView::GetMinScore(PlexoIndex activity, PlexoIndex objective) const {
  return GetValue<&PlexoObjectiveState::minScore>(activity, objective, PlexoSharedValue::MinScore);
}

PlexoMeasure PlexoTrackingView::GetMaxScore(PlexoIndex activity, PlexoIndex objective) const {
  return GetValue<&PlexoObjectiveState::maxScore>(activity, objective, PlexoSharedValue::MaxScore);
}

std::span<const PlexoIndex> PlexoTrackingView::GetAvailableChildren(PlexoIndex cluster) const {
  if (state.availableChildren.empty()) return definition.GetChildren(cluster);
  const PlexoActivityNode& node = definition.Get(cluster);
  const auto slots = std::span(state.availableChildren).subspan(node.firstChildSlot, node.childCount);
  const auto end = std::find(slots.begin(), slots.end(), kPlexoNone);
  return slots.first(static_cast<std::size_t>(end - slots.begin()));
}

bool PlexoTrackingView::IsAttempted(PlexoIndex activity) const {
  const PlexoActivityState& at = state.activities[activity];
  return at.isProgressKnown && at.attemptCount > 0;
}

bool PlexoTrackingView::IsAttemptLimitExceeded(PlexoIndex activity) const {
  const PlexoActivityState& at = state.activities[activity];
  const std::uint32_t limit = definition.GetRules(activity).attemptLimit;
  return limit != kPlexoNone && at.isProgressKnown && at.attemptCount >= limit;
}
