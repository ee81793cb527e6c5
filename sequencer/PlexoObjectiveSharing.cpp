// SPDX-License-Identifier: Apache-2.0
#include "sequencer/PlexoObjectiveSharing.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace {

/// Writes one value of an objective to the global ones that its maps name.
template <auto Member>
void WriteValue(PlexoSequencingRun& run, const PlexoObjectiveDefinition& rules, PlexoObjectiveState& local,
                PlexoSharedValue value) {
  const std::uint8_t bit = PlexoMapInfo::Bit(value);
  const bool isKnown = (local.*Member).IsKnown();
  if (!isKnown && (local.shared & bit) == 0) return;
  bool isWritten = false;
  for (const PlexoMapInfo& map : rules.maps) {
    if (!map.Writes(value)) continue;
    isWritten = true;
    if (run.state.globals[map.global].*Member == local.*Member) continue;
    run.state.globals[map.global].*Member = local.*Member;
    run.changedGlobals.push_back(map.global);
    ++run.changes;
  }
  local.shared = static_cast<std::uint8_t>(isWritten && isKnown ? local.shared | bit : local.shared & ~bit);
}

struct PlexoStaleMarks {
  bool objectives = false;
  bool progress = false;
  bool isBegun = false;
};

/// An activity that knows nothing has nothing to set aside, and takes no room in a stored state.
bool HasRecorded(const PlexoSequencingRun& run, PlexoIndex activity) {
  const PlexoActivityNode& node = run.definition.Get(activity);
  const auto first = run.state.objectives.begin() + node.firstObjective;
  return std::any_of(first, first + static_cast<std::ptrdiff_t>(node.rules.objectives.size()),
                     [](const PlexoObjectiveState& state) { return state != PlexoObjectiveState(); });
}

}  // namespace

void PlexoObjectiveSharing::Write(PlexoSequencingRun& run, PlexoIndex activity) {
  const PlexoActivityNode& node = run.definition.Get(activity);
  for (std::size_t at = 0; at < node.rules.objectives.size(); ++at) {
    const PlexoObjectiveDefinition& rules = node.rules.objectives[at];
    if (rules.maps.empty()) continue;
    PlexoObjectiveState& local = run.state.objectives[node.firstObjective + at];
    WriteValue<&PlexoObjectiveState::satisfied>(run, rules, local, PlexoSharedValue::SatisfiedStatus);
    WriteValue<&PlexoObjectiveState::measure>(run, rules, local, PlexoSharedValue::NormalizedMeasure);
    WriteValue<&PlexoObjectiveState::rawScore>(run, rules, local, PlexoSharedValue::RawScore);
    WriteValue<&PlexoObjectiveState::minScore>(run, rules, local, PlexoSharedValue::MinScore);
    WriteValue<&PlexoObjectiveState::maxScore>(run, rules, local, PlexoSharedValue::MaxScore);
    WriteValue<&PlexoObjectiveState::completed>(run, rules, local, PlexoSharedValue::CompletionStatus);
    WriteValue<&PlexoObjectiveState::progress>(run, rules, local, PlexoSharedValue::ProgressMeasure);
  }
}

void PlexoObjectiveSharing::ForgetAttempt(PlexoSequencingRun& run, PlexoIndex activity) {
  const PlexoActivityNode& node = run.definition.Get(activity);
  const auto first = run.state.objectives.begin() + node.firstObjective;
  std::fill_n(first, node.rules.objectives.size(), PlexoObjectiveState());
}

// The measures are computed anew by every rollup; statuses stay where no rule applies.
void PlexoObjectiveSharing::ForgetStale(PlexoSequencingRun& run, PlexoIndex activity) {
  PlexoActivityState& at = run.At(activity);
  PlexoObjectiveState& primary = run.state.objectives[run.definition.Get(activity).firstObjective];
  const auto forget = [&primary](PlexoSharedValue value) {
    primary.shared = static_cast<std::uint8_t>(primary.shared & ~PlexoMapInfo::Bit(value));
  };
  if (at.areObjectivesStale) {
    forget(PlexoSharedValue::SatisfiedStatus);
    forget(PlexoSharedValue::NormalizedMeasure);
    primary.satisfied = PlexoTruth::Unknown();
  }
  if (at.isProgressStale) {
    forget(PlexoSharedValue::CompletionStatus);
    forget(PlexoSharedValue::ProgressMeasure);
    primary.completed = PlexoTruth::Unknown();
  }
  at.areObjectivesStale = at.isProgressStale = false;
}

void PlexoObjectiveSharing::BeginChildrenAnew(PlexoSequencingRun& run, std::span<const PlexoIndex> begun) {
  if (begun.empty()) return;
  const PlexoIndex first = begun.front();
  if (first == 0 && !run.definition.AreGlobalsForSystem())
    std::fill(run.state.globals.begin(), run.state.globals.end(), PlexoObjectiveState());
  // Parents come before their children, so one pass carries the marks down: a mark goes on below an activity
  // that begins anew, and below one that got it in this pass.
  const PlexoIndex end = run.definition.Get(first).subtreeEnd;
  std::vector<PlexoStaleMarks> marks(end - first);
  for (const PlexoIndex at : begun) marks[at - first] = {true, true, true};
  for (PlexoIndex at = first + 1; at < end; ++at) {
    const PlexoIndex parent = run.GetParent(at);
    const PlexoControlModes& controls = run.GetControls(parent);
    PlexoStaleMarks& mark = marks[at - first];
    if (mark.isBegun) continue;
    mark.objectives = controls.useCurrentAttemptObjectiveInfo && marks[parent - first].objectives;
    mark.progress = controls.useCurrentAttemptProgressInfo && marks[parent - first].progress;
    if (!HasRecorded(run, at)) continue;
    if (mark.objectives) run.At(at).areObjectivesStale = true;
    if (mark.progress) run.At(at).isProgressStale = true;
  }
}
