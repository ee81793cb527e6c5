// SPDX-License-Identifier: Apache-2.0
#include "check/PlexoActivityTree.h"

#include <algorithm>
#include <charconv>
#include <unordered_set>
#include <utility>

namespace {

using enum PlexoVocabulary;

bool IsTrue(const std::string* value, bool otherwise) {
  return value != nullptr ? *value == "true" || *value == "1" : otherwise;
}

PlexoObjective ReadObjective(const PlexoManifestElement& element) {
  PlexoObjective objective;
  objective.identifier = element.GetValue("objectiveID");
  objective.isPrimary = element.name == "primaryObjective";
  objective.isSatisfiedByMeasure = IsTrue(element.GetAttribute("satisfiedByMeasure"), false);
  for (const PlexoManifestElement* map : element.FindAll(Sequencing, "mapInfo")) {
    const auto isOn = [map](std::string_view name, bool otherwise) {
      return IsTrue(map->GetAttribute(name), otherwise);
    };
    objective.maps.push_back({map, map->GetValue("targetObjectiveID"),
                              isOn("readSatisfiedStatus", true) || isOn("readNormalizedMeasure", true),
                              isOn("writeSatisfiedStatus", false) || isOn("writeNormalizedMeasure", false)});
  }
  return objective;
}

bool IsNegated(const PlexoManifestElement& condition) {
  return condition.GetValue("operator", "noOp") == "not";
}

/// True for "has no status yet".
bool IsUnknownCondition(const PlexoManifestElement& condition) {
  const std::string name = condition.GetValue("condition");
  return IsNegated(condition) && (name == "objectiveStatusKnown" || name == "objectiveMeasureKnown");
}

/// True for a rule that keeps an activity closed, and not just out of the way.
bool Closes(const PlexoManifestElement& rule) {
  const PlexoManifestElement* action = rule.Find(Sequencing, "ruleAction");
  return action != nullptr && action->GetValue("action") == "disabled";
}

/// The objectives that the conditions ask to be satisfied: negated ones have to be, or else the conditions
/// hold.
std::unordered_set<std::string> GetSatisfied(const std::vector<const PlexoManifestElement*>& conditions,
                                             bool isNegated) {
  std::unordered_set<std::string> names;
  for (const PlexoManifestElement* condition : conditions) {
    if (condition->GetValue("condition") == "satisfied" && IsNegated(*condition) == isNegated) {
      names.insert(condition->GetValue("referencedObjective"));
    }
  }
  return names;
}

/// The gates of one rule: each "status unknown" that closes the activity alone, or together with nothing but
/// others of its kind.
void ReadGates(const PlexoManifestElement& rule, PlexoActivity& activity) {
  const PlexoManifestElement* list = rule.Find(Sequencing, "ruleConditions");
  if (list == nullptr || !Closes(rule)) return;
  const auto conditions = list->FindAll(Sequencing, "ruleCondition");
  const bool isAny = list->GetValue("conditionCombination", "all") == "any";
  const bool areAllUnknown = std::all_of(conditions.begin(), conditions.end(), [](const auto* condition) {
    return IsUnknownCondition(*condition);
  });
  if (!isAny && !areAllUnknown) return;
  const auto needed = isAny ? GetSatisfied(conditions, true) : std::unordered_set<std::string>();
  const auto closing = isAny ? GetSatisfied(conditions, false) : std::unordered_set<std::string>();
  for (const PlexoManifestElement* condition : conditions) {
    if (!IsUnknownCondition(*condition)) continue;
    const std::string name = condition->GetValue("referencedObjective");
    const std::size_t objective = name.empty() ? 0 : activity.FindObjective(name);
    if (objective == activity.objectives.size()) continue;
    activity.gates.push_back({objective, needed.contains(name), closing.contains(name)});
  }
}

/// Leaves one gate for each objective: the first, needing success if any of them does.
void JoinGates(std::vector<PlexoGate>& gates) {
  std::unordered_map<std::size_t, std::size_t> firsts;
  std::vector<PlexoGate> joined;
  for (const PlexoGate& gate : gates) {
    const auto [first, isNew] = firsts.try_emplace(gate.objective, joined.size());
    if (isNew) {
      joined.push_back(gate);
    } else {
      joined[first->second].needsSuccess |= gate.needsSuccess;
      joined[first->second].isForFailure |= gate.isForFailure;
    }
  }
  gates = std::move(joined);
}

}  // namespace

const PlexoManifestElement* PlexoActivity::FindPart(std::string_view name) const {
  const PlexoManifestElement* part = sequencing != nullptr ? sequencing->Find(Sequencing, name) : nullptr;
  if (part == nullptr && sharedSequencing != nullptr) part = sharedSequencing->Find(Sequencing, name);
  return part;
}

bool PlexoActivity::IsOn(std::string_view part, std::string_view attribute, bool otherwise) const {
  const PlexoManifestElement* found = FindPart(part);
  return IsTrue(found != nullptr ? found->GetAttribute(attribute) : nullptr, otherwise);
}

std::optional<double> PlexoActivity::GetWeight() const {
  const PlexoManifestElement* rollup = FindPart("rollupRules");
  const std::string* text = rollup != nullptr ? rollup->GetAttribute("objectiveMeasureWeight") : nullptr;
  if (text == nullptr) return 1;
  double value = 0;
  const char* const textEnd = text->data() + text->size();
  const auto [end, error] = std::from_chars(text->data(), textEnd, value, std::chars_format::fixed);
  const bool isWhole = error == std::errc() && end == textEnd;
  return isWhole && value >= 0 && value <= 1 ? std::optional(value) : std::nullopt;
}

std::size_t PlexoActivity::FindObjective(std::string_view name) const {
  const auto found = objectivesByName.find(name);
  return found != objectivesByName.end() ? found->second : objectives.size();
}

bool PlexoActivity::Holds(const PlexoActivity& other) const {
  for (const PlexoActivity* at = &other; at != nullptr; at = at->parent) {
    if (at == this) return true;
  }
  return false;
}

PlexoActivityTree::PlexoActivityTree(const PlexoCheckedPackage& checked) : package(checked) {
  const PlexoManifestElement& root = *checked.manifest.GetRoot();
  for (const PlexoManifestElement* collection : root.FindAll(Sequencing, "sequencingCollection")) {
    for (const PlexoManifestElement* shared : collection->FindAll(Sequencing, "sequencing")) {
      if (const auto* name = shared->GetAttribute("ID"); name != nullptr)
        sharedSequencing.try_emplace(*name, shared);
    }
  }
  for (const PlexoManifestElement* organization : checked.GetOrganizations())
    AddActivity(*organization, nullptr);
  for (const PlexoActivity& activity : activities) NoteWriters(activity);
}

void PlexoActivityTree::AddActivity(const PlexoManifestElement& element, PlexoActivity* parent) {
  PlexoActivity& activity = activities.emplace_back();
  activity.element = &element;
  activity.identifier = element.GetValue("identifier");
  activity.parent = parent;
  activity.position = activities.size();
  activity.resource = package.GetResourceOf(element);
  activity.sequencing = element.Find(Sequencing, "sequencing");
  if (activity.sequencing != nullptr) {
    const auto shared = sharedSequencing.find(activity.sequencing->GetValue("IDRef"));
    if (shared != sharedSequencing.end()) activity.sharedSequencing = shared->second;
  }
  if (parent != nullptr) parent->children.push_back(&activity);
  ReadObjectives(activity);
  if (const PlexoManifestElement* rules = activity.FindPart("sequencingRules"); rules != nullptr) {
    for (const PlexoManifestElement* rule : rules->FindAll(Sequencing, "preConditionRule"))
      ReadGates(*rule, activity);
    JoinGates(activity.gates);
  }
  for (const PlexoManifestElement* item : element.FindAll(Packaging, "item")) AddActivity(*item, &activity);
}

void PlexoActivityTree::ReadObjectives(PlexoActivity& activity) {
  const PlexoManifestElement* list = activity.FindPart("objectives");
  if (list != nullptr) {
    for (const PlexoManifestElement* child : list->children) {
      if (child->Is(Sequencing, "primaryObjective") || child->Is(Sequencing, "objective")) {
        activity.objectives.push_back(ReadObjective(*child));
      }
    }
  }
  const auto primary = std::find_if(activity.objectives.begin(), activity.objectives.end(),
                                    [](const PlexoObjective& objective) { return objective.isPrimary; });
  if (primary == activity.objectives.end()) {
    activity.objectives.insert(activity.objectives.begin(), PlexoObjective{{}, true, false, {}});
  } else {
    std::rotate(activity.objectives.begin(), primary, std::next(primary));
  }
  for (std::size_t index = 0; index < activity.objectives.size(); ++index)
    activity.objectivesByName.try_emplace(activity.objectives[index].identifier, index);
}

void PlexoActivityTree::NoteWriters(const PlexoActivity& activity) {
  for (const PlexoObjective& objective : activity.objectives) {
    for (const PlexoObjectiveMap& map : objective.maps) {
      if (!map.writes) continue;
      auto& list = writers[map.global];
      if (list.empty() || list.back() != &activity) list.push_back(&activity);
    }
  }
}

const std::vector<const PlexoActivity*>& PlexoActivityTree::GetWriters(const std::string& global) const {
  static const std::vector<const PlexoActivity*> kNone;
  const auto found = writers.find(global);
  return found != writers.end() ? found->second : kNone;
}

std::vector<const PlexoActivity*> PlexoActivityTree::GetOpeners(const PlexoActivity& gated,
                                                                const std::string& global) const {
  std::vector<const PlexoActivity*> earlier;
  std::vector<const PlexoActivity*> others;
  for (const PlexoActivity* writer : GetWriters(global)) {
    if (gated.Holds(*writer)) continue;
    others.push_back(writer);
    if (writer->position < gated.position && !writer->Holds(gated)) earlier.push_back(writer);
  }
  return earlier.empty() ? others : earlier;
}
