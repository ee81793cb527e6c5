// SPDX-License-Identifier: Apache-2.0
#include "sequencer/PlexoSequencingState.h"

#include <bit>

namespace {

class PlexoStateHash {
 public:
  void Add(std::uint64_t value) {
    hash = (hash ^ value) * 0x9e3779b97f4a7c15U;
    hash ^= hash >> 32;
  }
  void Add(PlexoTruth truth) { Add(truth.IsKnown() ? (truth.IsTrue() ? 2U : 1U) : 0U); }
  /// Adding zero makes negative zero positive, as equality takes them for one.
  void Add(PlexoMeasure measure) {
    Add(measure.IsKnown() ? std::bit_cast<std::uint64_t>(measure.GetValue() + 0.0) : 1U);
  }
  void Add(const PlexoObjectiveState& objective) {
    Add(objective.measure);
    Add(objective.rawScore);
    Add(objective.minScore);
    Add(objective.maxScore);
    Add(objective.progress);
    Add(objective.satisfied);
    Add(objective.completed);
    Add(std::uint64_t{objective.shared});
  }
  [[nodiscard]] std::size_t Get() const { return static_cast<std::size_t>(hash); }

 private:
  std::uint64_t hash = 0x51ed270b;
};

}  // namespace

PlexoSequencingState::PlexoSequencingState(const PlexoSequencingDefinition& definition)
    : activities(definition.GetCount()),
      objectives(definition.GetObjectiveCount()),
      globals(definition.GetGlobals().size()) {
  if (!definition.HasRandomization()) return;
  availableChildren.resize(definition.GetCount() - 1);
  slots.resize(definition.GetCount(), kPlexoNone);
  for (PlexoIndex child = 1; child < definition.GetCount(); ++child) {
    const std::uint32_t slot = definition.Get(child).slot;
    availableChildren[slot] = child;
    slots[child] = slot;
  }
}

std::size_t PlexoSequencingState::GetHash() const {
  PlexoStateHash hash;
  for (const PlexoActivityState& activity : activities) {
    hash.Add(std::uint64_t{activity.attemptCount} << 8 | (activity.isProgressKnown ? 1U : 0U) |
             (activity.isActive ? 2U : 0U) | (activity.isSuspended ? 4U : 0U) |
             (activity.areObjectivesStale ? 8U : 0U) | (activity.isProgressStale ? 16U : 0U));
  }
  for (const PlexoObjectiveState& objective : objectives) hash.Add(objective);
  for (const PlexoObjectiveState& global : globals) hash.Add(global);
  for (const PlexoIndex child : availableChildren) hash.Add(std::uint64_t{child});
  hash.Add(std::uint64_t{current} << 32 | suspended);
  hash.Add(random);
  return hash.Get();
}
