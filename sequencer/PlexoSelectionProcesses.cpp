// SPDX-License-Identifier: Apache-2.0
#include "sequencer/PlexoSelectionProcesses.h"

#include <utility>
#include <vector>

namespace {

/// A number below the bound, from the state's own generator (SplitMix64). The bound is far below 2^32, so
/// that the remainder's bias doesn't matter.
std::uint32_t Draw(PlexoSequencingState& state, std::uint32_t bound) {
  state.random += 0x9e3779b97f4a7c15U;
  std::uint64_t mixed = state.random;
  mixed = (mixed ^ (mixed >> 30)) * 0xbf58476d1ce4e5b9U;
  mixed = (mixed ^ (mixed >> 27)) * 0x94d049bb133111ebU;
  return static_cast<std::uint32_t>((mixed ^ (mixed >> 31)) % bound);
}

void SetChildren(PlexoSequencingRun& run, PlexoIndex cluster, const std::vector<PlexoIndex>& chosen) {
  const PlexoActivityNode& node = run.definition.Get(cluster);
  for (const PlexoIndex child : run.definition.GetChildren(cluster)) run.state.slots[child] = kPlexoNone;
  for (std::uint32_t place = 0; place < node.childCount; ++place) {
    const std::uint32_t slot = node.firstChildSlot + place;
    const PlexoIndex child = place < chosen.size() ? chosen[place] : kPlexoNone;
    run.state.availableChildren[slot] = child;
    if (child != kPlexoNone) run.state.slots[child] = slot;
  }
}

/// Select Children Process [SR.1]. The relative order of the children stays.
void SelectChildren(PlexoSequencingRun& run, PlexoIndex cluster) {
  run.Begin(PlexoProcess::SelectChildren, cluster);
  const auto children = run.definition.GetChildren(cluster);
  std::uint32_t wanted = run.GetRules(cluster).randomization.selectCount;
  if (wanted >= children.size()) return SetChildren(run, cluster, {children.begin(), children.end()});
  std::vector<PlexoIndex> chosen;
  auto left = static_cast<std::uint32_t>(children.size());
  for (const PlexoIndex child : children) {
    if (wanted > 0 && Draw(run.state, left) < wanted) {
      chosen.push_back(child);
      --wanted;
    }
    --left;
  }
  SetChildren(run, cluster, chosen);
}

/// Randomize Children Process [SR.2].
void RandomizeChildren(PlexoSequencingRun& run, PlexoIndex cluster) {
  if (!run.GetRules(cluster).randomization.reorderChildren) return;
  run.Begin(PlexoProcess::RandomizeChildren, cluster);
  const auto available = run.GetAvailableChildren(cluster);
  std::vector<PlexoIndex> order(available.begin(), available.end());
  for (auto left = static_cast<std::uint32_t>(order.size()); left > 1; --left)
    std::swap(order[left - 1], order[Draw(run.state, left)]);
  SetChildren(run, cluster, order);
}

}  // namespace

void PlexoSelectionProcesses::PrepareFirstAttempts(PlexoSequencingRun& run) {
  if (!run.definition.HasRandomization()) return;
  for (PlexoIndex cluster = 0; cluster < run.definition.GetCount(); ++cluster) {
    const PlexoRandomization& randomization = run.GetRules(cluster).randomization;
    if (run.IsLeaf(cluster)) continue;
    if (randomization.selectionTiming != PlexoTiming::Never) SelectChildren(run, cluster);
    if (randomization.randomizationTiming != PlexoTiming::Never) RandomizeChildren(run, cluster);
  }
}

void PlexoSelectionProcesses::PrepareNextAttempt(PlexoSequencingRun& run, PlexoIndex cluster) {
  const PlexoRandomization& randomization = run.GetRules(cluster).randomization;
  if (run.IsLeaf(cluster) || run.At(cluster).isSuspended) return;
  if (randomization.selectionTiming == PlexoTiming::OnEachNewAttempt) SelectChildren(run, cluster);
  if (randomization.randomizationTiming == PlexoTiming::OnEachNewAttempt) RandomizeChildren(run, cluster);
}
