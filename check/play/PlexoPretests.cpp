// SPDX-License-Identifier: Apache-2.0
#include "check/play/PlexoPretests.h"

#include <algorithm>

PlexoPretests::PlexoPretests(const PlexoPlayedCourse& course)
    : definition(course.GetDefinition()), sparing(definition.GetCount()) {
  std::vector<std::vector<PlexoIndex>> writers(definition.GetGlobals().size());
  for (PlexoIndex activity = 0; activity < definition.GetCount(); ++activity) {
    // Only what comes before an activity can spare it.
    NoteSkips(activity, writers);
    if (!course.IsContent(activity)) continue;
    for (const PlexoMapInfo& map : definition.GetRules(activity).objectives.front().maps) {
      if (map.Writes(PlexoSharedValue::SatisfiedStatus)) writers[map.global].push_back(activity);
    }
  }
  std::sort(all.begin(), all.end());
  all.erase(std::unique(all.begin(), all.end()), all.end());
}

void PlexoPretests::NoteSkips(PlexoIndex activity, const std::vector<std::vector<PlexoIndex>>& writers) {
  const PlexoActivityRules& rules = definition.GetRules(activity);
  for (const PlexoSequencingRule& rule : rules.rules) {
    const bool isEnough = rule.combination == PlexoCombination::Any || rule.conditions.size() == 1;
    if (rule.action != PlexoRuleAction::Skip || !isEnough) continue;
    for (const PlexoRuleCondition& condition : rule.conditions) {
      if (condition.condition != PlexoCondition::Satisfied || condition.isNegated) continue;
      if (condition.objective == kPlexoNone) continue;
      for (const PlexoMapInfo& map : rules.objectives[condition.objective].maps) {
        if (!map.Reads(PlexoSharedValue::SatisfiedStatus)) continue;
        const auto& found = writers[map.global];
        sparing[activity].insert(sparing[activity].end(), found.begin(), found.end());
        all.insert(all.end(), found.begin(), found.end());
      }
    }
  }
}

bool PlexoPretests::IsPretest(PlexoIndex activity) const {
  return std::binary_search(all.begin(), all.end(), activity);
}

std::vector<PlexoIndex> PlexoPretests::GetSparing(PlexoIndex activity) const {
  std::vector<PlexoIndex> found;
  for (PlexoIndex at = activity; at != kPlexoNone; at = definition.Get(at).parent)
    found.insert(found.end(), sparing[at].begin(), sparing[at].end());
  return found;
}
