// SPDX-License-Identifier: Apache-2.0
#include "sequencer/PlexoSequencingRun.h"

#include <algorithm>

#include "sequencer/PlexoTrackingView.h"

std::uint32_t PlexoSequencingRun::GetSlot(PlexoIndex activity) const {
  return state.slots.empty() ? definition.Get(activity).slot : state.slots[activity];
}

bool PlexoSequencingRun::IsAvailable(PlexoIndex activity) const {
  return activity == 0 || GetSlot(activity) != kPlexoNone;
}

std::span<const PlexoIndex> PlexoSequencingRun::GetAvailableChildren(PlexoIndex cluster) const {
  return PlexoTrackingView(definition, state).GetAvailableChildren(cluster);
}

// The offset may be "minus one": unsigned numbers wrap around, and a slot outside the parent's is none.
PlexoIndex PlexoSequencingRun::GetSibling(PlexoIndex activity, std::uint32_t offset) const {
  if (activity == 0 || !IsAvailable(activity)) return kPlexoNone;
  const PlexoActivityNode& parent = definition.Get(GetParent(activity));
  const std::uint32_t place = GetSlot(activity) + offset - parent.firstChildSlot;
  if (place >= parent.childCount) return kPlexoNone;
  if (state.availableChildren.empty()) return definition.GetChildren(GetParent(activity))[place];
  return state.availableChildren[parent.firstChildSlot + place];
}

PlexoIndex PlexoSequencingRun::GetNext(PlexoIndex activity) const { return GetSibling(activity, 1); }
PlexoIndex PlexoSequencingRun::GetPrevious(PlexoIndex activity) const {
  return GetSibling(activity, UINT32_MAX);
}

PlexoIndex PlexoSequencingRun::GetFirst(PlexoIndex cluster) const {
  const auto children = GetAvailableChildren(cluster);
  return children.empty() ? kPlexoNone : children.front();
}

PlexoIndex PlexoSequencingRun::GetLast(PlexoIndex cluster) const {
  const auto children = GetAvailableChildren(cluster);
  return children.empty() ? kPlexoNone : children.back();
}

bool PlexoSequencingRun::IsLastInTree(PlexoIndex activity) const {
  if (GetFirst(activity) != kPlexoNone) return false;
  for (; activity != 0; activity = GetParent(activity)) {
    if (GetNext(activity) != kPlexoNone) return false;
  }
  return true;
}

bool PlexoSequencingRun::IsAfter(PlexoIndex activity, PlexoIndex other) const {
  if (state.slots.empty()) return activity > other;
  if (definition.Holds(activity, other)) return false;
  if (definition.Holds(other, activity)) return true;
  const PlexoIndex common = definition.FindCommonAncestor(activity, other);
  return GetSlot(GetPath(common, activity).front()) > GetSlot(GetPath(common, other).front());
}

std::vector<PlexoIndex> PlexoSequencingRun::GetPath(PlexoIndex ancestor, PlexoIndex activity) const {
  std::vector<PlexoIndex> path;
  for (; activity != ancestor; activity = GetParent(activity)) path.push_back(activity);
  std::reverse(path.begin(), path.end());
  return path;
}

bool PlexoSequencingRun::Refuse(PlexoSequencingException code, PlexoReasonKind kind, PlexoIndex activity,
                                PlexoIndex rule) {
  exception = code;
  reason = {kind, activity, rule};
  return false;
}

std::size_t PlexoSequencingRun::Begin(PlexoProcess process, PlexoIndex activity) {
  return trace != nullptr ? trace->Begin(process, activity) : 0;
}

void PlexoSequencingRun::End(std::size_t step, PlexoSequencingException code, PlexoIndex rule) {
  if (trace != nullptr) trace->End(step, code, rule);
}
