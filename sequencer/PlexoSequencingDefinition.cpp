// SPDX-License-Identifier: Apache-2.0
#include "sequencer/PlexoSequencingDefinition.h"

#include <algorithm>

PlexoIndex PlexoSequencingDefinition::Find(std::string_view identifier) const {
  const auto found = std::lower_bound(
      activitiesByName.begin(), activitiesByName.end(), identifier,
      [this](PlexoIndex at, std::string_view name) { return GetRules(at).identifier < name; });
  return found != activitiesByName.end() && GetRules(*found).identifier == identifier ? *found : kPlexoNone;
}

std::span<const PlexoIndex> PlexoSequencingDefinition::GetChildren(PlexoIndex activity) const {
  const PlexoActivityNode& node = activities[activity];
  return std::span(children).subspan(node.firstChildSlot, node.childCount);
}

PlexoIndex PlexoSequencingDefinition::FindObjective(PlexoIndex activity, std::string_view identifier) const {
  const auto& objectives = GetRules(activity).objectives;
  const auto found = std::find_if(objectives.begin(), objectives.end(),
                                  [&](const auto& objective) { return objective.identifier == identifier; });
  return found != objectives.end() ? static_cast<PlexoIndex>(found - objectives.begin()) : kPlexoNone;
}

PlexoIndex PlexoSequencingDefinition::FindGlobal(std::string_view identifier) const {
  const auto found =
      std::lower_bound(globalsByName.begin(), globalsByName.end(), identifier,
                       [this](PlexoIndex at, std::string_view name) { return globals[at] < name; });
  return found != globalsByName.end() && globals[*found] == identifier ? *found : kPlexoNone;
}

std::span<const PlexoIndex> PlexoSequencingDefinition::GetPrimaryReaders(PlexoIndex global) const {
  const std::uint32_t start = readerStarts[global];
  return std::span(readers).subspan(start, readerStarts[global + 1] - start);
}

PlexoIndex PlexoSequencingDefinition::FindCommonAncestor(PlexoIndex left, PlexoIndex right) const {
  while (!Holds(left, right)) left = activities[left].parent;
  return left;
}
