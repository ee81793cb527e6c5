// SPDX-License-Identifier: Apache-2.0
#include "sequencer/PlexoDefinitionBuilder.h"

#include <algorithm>
#include <numeric>
#include <string>
#include <unordered_map>
#include <utility>

#include "sequencer/PlexoDefinitionFormat.h"
#include "sequencer/PlexoMeasure.h"

namespace {

constexpr double kMaxWeight = 1'000'000;
constexpr std::size_t kMaxText = 65'535;

/// The first fault among numbers and texts.
class PlexoPartCheck {
 public:
  void Number(double number, double least, double most) {
    if (!PlexoMeasure(number).IsKnown()) {
      Note(PlexoDefinitionFault::NotANumber);
    } else if (number < least || number > most) {
      Note(PlexoDefinitionFault::NumberOutOfRange);
    }
  }
  void Text(const std::string& text) {
    if (text.size() > kMaxText) Note(PlexoDefinitionFault::TooLongText);
  }
  [[nodiscard]] PlexoDefinitionFault GetFault() const { return fault; }

 private:
  void Note(PlexoDefinitionFault found) {
    if (fault == PlexoDefinitionFault::None) fault = found;
  }
  PlexoDefinitionFault fault = PlexoDefinitionFault::None;
};

PlexoDefinitionFault FindFault(const PlexoActivityRules& rules) {
  PlexoPartCheck check;
  check.Text(rules.identifier);
  check.Text(rules.title);
  for (const PlexoSequencingRule& rule : rules.rules) {
    for (const PlexoRuleCondition& condition : rule.conditions) {
      check.Number(condition.measureThreshold, -1, 1);
      check.Text(condition.referencedObjective);
    }
  }
  for (const PlexoRollupRule& rule : rules.rollupRules) check.Number(rule.minimumPercent, 0, 1);
  check.Number(rules.rollup.objectiveMeasureWeight, 0, kMaxWeight);
  check.Number(rules.completion.minProgressMeasure, 0, 1);
  check.Number(rules.completion.progressWeight, 0, kMaxWeight);
  for (const PlexoObjectiveDefinition& objective : rules.objectives) {
    check.Text(objective.identifier);
    check.Number(objective.minNormalizedMeasure, -1, 1);
    for (const PlexoMapInfo& map : objective.maps) check.Text(map.target);
  }
  return check.GetFault();
}

std::uint64_t GetHash(const std::vector<std::uint8_t>& bytes) {
  std::uint64_t hash = 0xcbf29ce484222325U;
  for (const std::uint8_t byte : bytes) hash = (hash ^ byte) * 0x100000001b3U;
  return hash;
}

}  // namespace

PlexoDefinitionBuilder::PlexoDefinitionBuilder(PlexoSequencingEdition edition)
    : definition(new PlexoSequencingDefinition) {
  definition->edition = edition;
}

PlexoDefinitionBuilder::~PlexoDefinitionBuilder() = default;

void PlexoDefinitionBuilder::SetGlobalsForSystem(bool areGlobalsForSystem) {
  if (definition != nullptr) definition->areGlobalsForSystem = areGlobalsForSystem;
}

PlexoIndex PlexoDefinitionBuilder::Open(PlexoActivityRules rules) {
  if (fault != PlexoDefinitionFault::None || definition == nullptr) return kPlexoNone;
  auto& activities = definition->activities;
  const auto index = static_cast<PlexoIndex>(activities.size());
  if (index == PlexoSequencingDefinition::kMaxActivities)
    Fail(PlexoDefinitionFault::TooManyActivities, index);
  else if (open.empty() && index > 0)
    Fail(PlexoDefinitionFault::SecondRoot, index);
  else if (open.size() > PlexoSequencingDefinition::kMaxDepth)
    Fail(PlexoDefinitionFault::TooDeep, index);
  else if (const PlexoDefinitionFault found = FindFault(rules); found != PlexoDefinitionFault::None)
    Fail(found, index);
  CountParts(rules);
  if (parts > PlexoSequencingDefinition::kMaxParts) Fail(PlexoDefinitionFault::TooManyParts, index);
  if (fault != PlexoDefinitionFault::None) return kPlexoNone;

  if (rules.objectives.empty()) rules.objectives.emplace_back();
  PlexoActivityNode& node = activities.emplace_back();
  node.parent = open.empty() ? kPlexoNone : open.back();
  node.depth = static_cast<std::uint32_t>(open.size());
  node.firstObjective = definition->objectiveCount;
  definition->objectiveCount += static_cast<std::uint32_t>(rules.objectives.size());
  node.rules = std::move(rules);
  open.push_back(index);
  return index;
}

void PlexoDefinitionBuilder::Close() {
  if (fault != PlexoDefinitionFault::None || definition == nullptr) return;
  if (open.empty()) return Fail(PlexoDefinitionFault::NothingToClose, kPlexoNone);
  definition->activities[open.back()].subtreeEnd = definition->GetCount();
  open.pop_back();
}

std::shared_ptr<const PlexoSequencingDefinition> PlexoDefinitionBuilder::Build() {
  if (definition == nullptr) return nullptr;
  if (fault == PlexoDefinitionFault::None && definition->activities.empty())
    Fail(PlexoDefinitionFault::NoActivity, kPlexoNone);
  if (fault == PlexoDefinitionFault::None && !open.empty())
    Fail(PlexoDefinitionFault::ActivityNotClosed, open.back());
  if (fault != PlexoDefinitionFault::None) {
    definition = nullptr;
    return nullptr;
  }
  ResolveNames();
  LinkChildren();
  LinkReaders();
  SortActivities();
  definition->fingerprint = GetHash(PlexoDefinitionFormat::Write(*definition));
  return std::exchange(definition, nullptr);
}

void PlexoDefinitionBuilder::Fail(PlexoDefinitionFault reason, PlexoIndex activity) {
  if (fault != PlexoDefinitionFault::None) return;
  fault = reason;
  faultyActivity = activity;
}

void PlexoDefinitionBuilder::CountParts(const PlexoActivityRules& rules) {
  parts += rules.rules.size() + rules.rollupRules.size() + rules.objectives.size() + 1;
  for (const PlexoSequencingRule& rule : rules.rules) parts += rule.conditions.size();
  for (const PlexoRollupRule& rule : rules.rollupRules) parts += rule.conditions.size();
  for (const PlexoObjectiveDefinition& objective : rules.objectives) parts += objective.maps.size();
}

void PlexoDefinitionBuilder::ResolveNames() {
  std::unordered_map<std::string_view, PlexoIndex> globals;
  std::vector<std::string_view> names;
  for (PlexoActivityNode& node : definition->activities) {
    std::unordered_map<std::string_view, PlexoIndex> objectives;
    PlexoIndex position = 0;
    for (PlexoObjectiveDefinition& objective : node.rules.objectives) {
      objectives.try_emplace(objective.identifier, position++);
      for (PlexoMapInfo& map : objective.maps) {
        if (definition->edition != PlexoSequencingEdition::Fourth) {
          map.reads &= PlexoMapInfo::kStatusAndMeasure;
          map.writes &= PlexoMapInfo::kStatusAndMeasure;
        }
        const auto [at, isNew] = globals.try_emplace(map.target, static_cast<PlexoIndex>(globals.size()));
        if (isNew) names.push_back(map.target);
        map.global = at->second;
      }
    }
    for (PlexoSequencingRule& rule : node.rules.rules) {
      for (PlexoRuleCondition& condition : rule.conditions) {
        if (condition.referencedObjective.empty()) continue;
        const auto found = objectives.find(condition.referencedObjective);
        condition.objective = found != objectives.end() ? found->second : kPlexoNone;
      }
    }
  }
  definition->globals.assign(names.begin(), names.end());
}

void PlexoDefinitionBuilder::LinkChildren() {
  auto& activities = definition->activities;
  for (const PlexoActivityNode& node : activities) {
    if (node.parent != kPlexoNone) ++activities[node.parent].childCount;
  }
  std::uint32_t slots = 0;
  for (PlexoActivityNode& node : activities) {
    node.firstChildSlot = slots;
    slots += node.childCount;
  }
  definition->children.resize(slots);
  std::vector<std::uint32_t> filled(activities.size());
  for (PlexoIndex index = 1; index < definition->GetCount(); ++index) {
    PlexoActivityNode& node = activities[index];
    PlexoActivityNode& parent = activities[node.parent];
    node.slot = parent.firstChildSlot + filled[node.parent]++;
    definition->children[node.slot] = index;
    const PlexoRollupControls& rollup = node.rules.rollup;
    for (const PlexoRequirement requirement : {rollup.requiredForSatisfied, rollup.requiredForNotSatisfied,
                                               rollup.requiredForCompleted, rollup.requiredForIncomplete}) {
      if (requirement == PlexoRequirement::IfNotSkipped) parent.hasSkipRequirement = true;
    }
    const PlexoRandomization& randomization = parent.rules.randomization;
    if (randomization.selectionTiming != PlexoTiming::Never ||
        randomization.randomizationTiming != PlexoTiming::Never)
      definition->hasRandomization = true;
  }
}

void PlexoDefinitionBuilder::LinkReaders() {
  std::vector<std::vector<PlexoIndex>> readers(definition->globals.size());
  for (PlexoIndex index = 1; index < definition->GetCount(); ++index) {
    for (const PlexoMapInfo& map : definition->GetRules(index).objectives.front().maps) {
      auto& list = readers[map.global];
      if (map.reads != 0 && (list.empty() || list.back() != index)) list.push_back(index);
    }
  }
  for (const auto& list : readers) {
    definition->readerStarts.push_back(static_cast<std::uint32_t>(definition->readers.size()));
    definition->readers.insert(definition->readers.end(), list.begin(), list.end());
  }
  definition->readerStarts.push_back(static_cast<std::uint32_t>(definition->readers.size()));
}

void PlexoDefinitionBuilder::SortActivities() {
  const auto sort = [](std::vector<PlexoIndex>& list, std::size_t count, const auto& getName) {
    list.resize(count);
    std::iota(list.begin(), list.end(), 0U);
    std::stable_sort(list.begin(), list.end(),
                     [&](PlexoIndex left, PlexoIndex right) { return getName(left) < getName(right); });
  };
  sort(definition->activitiesByName, definition->activities.size(),
       [this](PlexoIndex at) -> const std::string& { return definition->GetRules(at).identifier; });
  sort(definition->globalsByName, definition->globals.size(),
       [this](PlexoIndex at) -> const std::string& { return definition->globals[at]; });
}

std::string_view PlexoDefinitionBuilder::GetText(PlexoDefinitionFault fault) {
  switch (fault) {
    case PlexoDefinitionFault::None:
      return "";
    case PlexoDefinitionFault::NoActivity:
      return "there is no activity";
    case PlexoDefinitionFault::SecondRoot:
      return "there is a second root activity";
    case PlexoDefinitionFault::ActivityNotClosed:
      return "the activity doesn't end";
    case PlexoDefinitionFault::NothingToClose:
      return "an activity ends that didn't begin";
    case PlexoDefinitionFault::TooDeep:
      return "activities are nested too deep";
    case PlexoDefinitionFault::TooManyActivities:
      return "there are too many activities";
    case PlexoDefinitionFault::TooManyParts:
      return "there are too many rules and objectives";
    case PlexoDefinitionFault::TooLongText:
      return "an identifier or title is too long";
    case PlexoDefinitionFault::NotANumber:
      return "a number isn't finite";
    case PlexoDefinitionFault::NumberOutOfRange:
      return "a number is out of its range";
  }
  return "";
}
