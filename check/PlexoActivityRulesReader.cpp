// SPDX-License-Identifier: Apache-2.0
#include "check/PlexoActivityRulesReader.h"

#include <unordered_map>
#include <utility>

namespace {

using enum PlexoVocabulary;
using Action = PlexoRuleAction;

constexpr PlexoNumberRange kMeasures{-1, 1};
constexpr PlexoNumberRange kShares{0, 1};
/// The schema wants weights up to 1, but only their proportions count.
constexpr PlexoNumberRange kWeights{0, 1'000'000};

constexpr PlexoWord<Action> kPreconditionActions[] = {
    {"skip", Action::Skip},
    {"disabled", Action::Disabled},
    {"hiddenFromChoice", Action::HiddenFromChoice},
    {"stopForwardTraversal", Action::StopForwardTraversal},
};
constexpr PlexoWord<Action> kExitActions[] = {{"exit", Action::Exit}};
constexpr PlexoWord<Action> kPostconditionActions[] = {
    {"exitParent", Action::ExitParent}, {"exitAll", Action::ExitAll},   {"retry", Action::Retry},
    {"retryAll", Action::RetryAll},     {"continue", Action::Continue}, {"previous", Action::Previous},
};
constexpr PlexoWord<PlexoCombination> kCombinations[] = {{"all", PlexoCombination::All},
                                                         {"any", PlexoCombination::Any}};
constexpr PlexoWord<bool> kOperators[] = {{"noOp", false}, {"not", true}};
constexpr PlexoWord<PlexoCondition> kConditions[] = {
    {"satisfied", PlexoCondition::Satisfied},
    {"objectiveStatusKnown", PlexoCondition::ObjectiveStatusKnown},
    {"objectiveMeasureKnown", PlexoCondition::ObjectiveMeasureKnown},
    {"objectiveMeasureGreaterThan", PlexoCondition::ObjectiveMeasureGreaterThan},
    {"objectiveMeasureLessThan", PlexoCondition::ObjectiveMeasureLessThan},
    {"completed", PlexoCondition::Completed},
    {"activityProgressKnown", PlexoCondition::ActivityProgressKnown},
    {"attempted", PlexoCondition::Attempted},
    {"attemptLimitExceeded", PlexoCondition::AttemptLimitExceeded},
    {"timeLimitExceeded", PlexoCondition::TimeLimitExceeded},
    {"outsideAvailableTimeRange", PlexoCondition::OutsideAvailableTimeRange},
    {"always", PlexoCondition::Always},
};
constexpr PlexoWord<PlexoCondition> kRollupConditions[] = {
    {"satisfied", PlexoCondition::Satisfied},
    {"objectiveStatusKnown", PlexoCondition::ObjectiveStatusKnown},
    {"objectiveMeasureKnown", PlexoCondition::ObjectiveMeasureKnown},
    {"completed", PlexoCondition::Completed},
    {"activityProgressKnown", PlexoCondition::ActivityProgressKnown},
    {"attempted", PlexoCondition::Attempted},
    {"attemptLimitExceeded", PlexoCondition::AttemptLimitExceeded},
    {"timeLimitExceeded", PlexoCondition::TimeLimitExceeded},
    {"outsideAvailableTimeRange", PlexoCondition::OutsideAvailableTimeRange},
};
constexpr PlexoWord<PlexoChildSet> kChildSets[] = {
    {"all", PlexoChildSet::All},
    {"any", PlexoChildSet::Any},
    {"none", PlexoChildSet::None},
    {"atLeastCount", PlexoChildSet::AtLeastCount},
    {"atLeastPercent", PlexoChildSet::AtLeastPercent},
};
constexpr PlexoWord<PlexoRollupAction> kRollupActions[] = {
    {"satisfied", PlexoRollupAction::Satisfied},
    {"notSatisfied", PlexoRollupAction::NotSatisfied},
    {"completed", PlexoRollupAction::Completed},
    {"incomplete", PlexoRollupAction::Incomplete},
};
constexpr PlexoWord<PlexoRequirement> kRequirements[] = {
    {"always", PlexoRequirement::Always},
    {"ifAttempted", PlexoRequirement::IfAttempted},
    {"ifNotSkipped", PlexoRequirement::IfNotSkipped},
    {"ifNotSuspended", PlexoRequirement::IfNotSuspended},
};
constexpr PlexoWord<PlexoTiming> kTimings[] = {
    {"never", PlexoTiming::Never},
    {"once", PlexoTiming::Once},
    {"onEachNewAttempt", PlexoTiming::OnEachNewAttempt},
};
/// The ends of the attributes' names, behind "read" and "write".
constexpr PlexoWord<PlexoSharedValue> kShared[] = {
    {"SatisfiedStatus", PlexoSharedValue::SatisfiedStatus},
    {"NormalizedMeasure", PlexoSharedValue::NormalizedMeasure},
};
constexpr PlexoWord<PlexoSharedValue> kAuxiliaryShared[] = {
    {"RawScore", PlexoSharedValue::RawScore},
    {"MinScore", PlexoSharedValue::MinScore},
    {"MaxScore", PlexoSharedValue::MaxScore},
    {"CompletionStatus", PlexoSharedValue::CompletionStatus},
    {"ProgressMeasure", PlexoSharedValue::ProgressMeasure},
};

}  // namespace

void PlexoActivityRulesReader::Read(PlexoActivityRules& rules) {
  ReadControls(rules);
  ReadSequencingRules(rules);
  if (const auto* limits = FindPart(Sequencing, "limitConditions"); limits != nullptr)
    values.ReadCount(*limits, "attemptLimit", rules.attemptLimit);
  ReadRollup(rules);
  ReadObjectives(rules);
  ReadAuxiliaryMaps(rules);
  ReadRandomization(rules);
  ReadDelivery(rules);
}

const PlexoManifestElement* PlexoActivityRulesReader::FindPart(PlexoVocabulary vocabulary,
                                                               std::string_view name) const {
  const PlexoManifestElement* part = own != nullptr ? own->Find(vocabulary, name) : nullptr;
  if (part == nullptr && shared != nullptr) part = shared->Find(vocabulary, name);
  return part;
}

void PlexoActivityRulesReader::ReadControls(PlexoActivityRules& rules) {
  if (const auto* modes = FindPart(Sequencing, "controlMode"); modes != nullptr) {
    PlexoControlModes& controls = rules.controls;
    values.ReadFlag(*modes, "choice", controls.choice);
    values.ReadFlag(*modes, "choiceExit", controls.choiceExit);
    values.ReadFlag(*modes, "flow", controls.flow);
    values.ReadFlag(*modes, "forwardOnly", controls.forwardOnly);
    values.ReadFlag(*modes, "useCurrentAttemptObjectiveInfo", controls.useCurrentAttemptObjectiveInfo);
    values.ReadFlag(*modes, "useCurrentAttemptProgressInfo", controls.useCurrentAttemptProgressInfo);
  }
  if (const auto* choice = FindPart(AdlSequencing, "constrainedChoiceConsiderations"); choice != nullptr) {
    values.ReadFlag(*choice, "constrainChoice", rules.constrainChoice);
    values.ReadFlag(*choice, "preventActivation", rules.preventActivation);
  }
}

void PlexoActivityRulesReader::ReadSequencingRules(PlexoActivityRules& rules) {
  const PlexoManifestElement* list = FindPart(Sequencing, "sequencingRules");
  if (list == nullptr) return;
  for (const PlexoManifestElement* element : list->children) {
    if (element->Is(Sequencing, "preConditionRule")) {
      ReadSequencingRule(*element, kPreconditionActions, rules);
    } else if (element->Is(Sequencing, "exitConditionRule")) {
      ReadSequencingRule(*element, kExitActions, rules);
    } else if (element->Is(Sequencing, "postConditionRule")) {
      ReadSequencingRule(*element, kPostconditionActions, rules);
    }
  }
}

// A rule that isn't understood in full is left out: without a condition it would apply at other times than
// its author meant.
template <std::size_t count>
void PlexoActivityRulesReader::ReadSequencingRule(const PlexoManifestElement& element,
                                                  const PlexoWord<PlexoRuleAction> (&actions)[count],
                                                  PlexoActivityRules& rules) {
  const PlexoManifestElement* conditions = element.Find(Sequencing, "ruleConditions");
  const PlexoManifestElement* action = element.Find(Sequencing, "ruleAction");
  PlexoSequencingRule rule;
  const bool isWhole =
      conditions != nullptr && action != nullptr && action->GetAttribute("action") != nullptr;
  if (isWhole && values.ReadWord(*action, "action", actions, rule.action) &&
      ReadConditions(*conditions, rule)) {
    rules.rules.push_back(std::move(rule));
  } else {
    notes.Add(element, "the '" + element.name + "' is incomplete or not understood; it is left out");
  }
}

bool PlexoActivityRulesReader::ReadConditions(const PlexoManifestElement& list, PlexoSequencingRule& rule) {
  bool isUnderstood = values.ReadWord(list, "conditionCombination", kCombinations, rule.combination);
  for (const PlexoManifestElement* element : list.FindAll(Sequencing, "ruleCondition")) {
    PlexoRuleCondition& condition = rule.conditions.emplace_back();
    isUnderstood &= element->GetAttribute("condition") != nullptr &&
                    values.ReadWord(*element, "condition", kConditions, condition.condition) &&
                    values.ReadWord(*element, "operator", kOperators, condition.isNegated);
    values.ReadNumber(*element, "measureThreshold", kMeasures, condition.measureThreshold);
    condition.referencedObjective = element->GetValue("referencedObjective");
  }
  return isUnderstood;
}

void PlexoActivityRulesReader::ReadRollup(PlexoActivityRules& rules) {
  PlexoRollupControls& controls = rules.rollup;
  if (const auto* list = FindPart(Sequencing, "rollupRules"); list != nullptr) {
    values.ReadFlag(*list, "rollupObjectiveSatisfied", controls.objectiveSatisfied);
    values.ReadFlag(*list, "rollupProgressCompletion", controls.progressCompletion);
    values.ReadNumber(*list, "objectiveMeasureWeight", kWeights, controls.objectiveMeasureWeight);
    for (const PlexoManifestElement* element : list->FindAll(Sequencing, "rollupRule"))
      ReadRollupRule(*element, rules);
  }
  if (const auto* counts = FindPart(AdlSequencing, "rollupConsiderations"); counts != nullptr) {
    values.ReadWord(*counts, "requiredForSatisfied", kRequirements, controls.requiredForSatisfied);
    values.ReadWord(*counts, "requiredForNotSatisfied", kRequirements, controls.requiredForNotSatisfied);
    values.ReadWord(*counts, "requiredForCompleted", kRequirements, controls.requiredForCompleted);
    values.ReadWord(*counts, "requiredForIncomplete", kRequirements, controls.requiredForIncomplete);
    values.ReadFlag(*counts, "measureSatisfactionIfActive", controls.measureSatisfactionIfActive);
  }
}

void PlexoActivityRulesReader::ReadRollupRule(const PlexoManifestElement& element,
                                              PlexoActivityRules& rules) {
  const PlexoManifestElement* conditions = element.Find(Sequencing, "rollupConditions");
  const PlexoManifestElement* action = element.Find(Sequencing, "rollupAction");
  PlexoRollupRule rule;
  values.ReadCount(element, "minimumCount", rule.minimumCount);
  values.ReadNumber(element, "minimumPercent", kShares, rule.minimumPercent);
  const bool isWhole =
      conditions != nullptr && action != nullptr && action->GetAttribute("action") != nullptr;
  if (isWhole && values.ReadWord(element, "childActivitySet", kChildSets, rule.childSet) &&
      values.ReadWord(*action, "action", kRollupActions, rule.action) &&
      ReadRollupConditions(*conditions, rule)) {
    rules.rollupRules.push_back(std::move(rule));
  } else {
    notes.Add(element, "the 'rollupRule' is incomplete or not understood; it is left out");
  }
}

bool PlexoActivityRulesReader::ReadRollupConditions(const PlexoManifestElement& list, PlexoRollupRule& rule) {
  bool isUnderstood = values.ReadWord(list, "conditionCombination", kCombinations, rule.combination);
  for (const PlexoManifestElement* element : list.FindAll(Sequencing, "rollupCondition")) {
    PlexoRollupCondition& condition = rule.conditions.emplace_back();
    isUnderstood &= element->GetAttribute("condition") != nullptr &&
                    values.ReadWord(*element, "condition", kRollupConditions, condition.condition) &&
                    values.ReadWord(*element, "operator", kOperators, condition.isNegated);
  }
  return isUnderstood;
}

void PlexoActivityRulesReader::ReadObjectives(PlexoActivityRules& rules) {
  const PlexoManifestElement* list = FindPart(Sequencing, "objectives");
  if (list == nullptr) return;
  // The primary objective comes first, wherever it stands; without one, there is one that says nothing.
  if (const auto* primary = list->Find(Sequencing, "primaryObjective"); primary != nullptr) {
    ReadObjective(*primary, rules);
  } else {
    rules.objectives.emplace_back();
  }
  for (const PlexoManifestElement* element : list->FindAll(Sequencing, "objective")) {
    if (element->GetValue("objectiveID").empty()) {
      notes.Add(*element, "the 'objective' has no 'objectiveID'; it is left out");
    } else {
      ReadObjective(*element, rules);
    }
  }
}

void PlexoActivityRulesReader::ReadObjective(const PlexoManifestElement& element, PlexoActivityRules& rules) {
  PlexoObjectiveDefinition& objective = rules.objectives.emplace_back();
  objective.identifier = element.GetValue("objectiveID");
  values.ReadFlag(element, "satisfiedByMeasure", objective.isSatisfiedByMeasure);
  if (const auto* least = element.Find(Sequencing, "minNormalizedMeasure"); least != nullptr)
    values.ReadNumber(*least, kMeasures, objective.minNormalizedMeasure);
  for (const PlexoManifestElement* map : element.FindAll(Sequencing, "mapInfo"))
    ReadMap(*map, kShared, objective);
}

void PlexoActivityRulesReader::ReadAuxiliaryMaps(PlexoActivityRules& rules) {
  const PlexoManifestElement* list = FindPart(AdlSequencing, "objectives");
  if (list == nullptr) return;
  std::unordered_map<std::string, std::size_t> positions;
  for (std::size_t at = 0; at < rules.objectives.size(); ++at)
    positions.try_emplace(rules.objectives[at].identifier, at);
  for (const PlexoManifestElement* element : list->FindAll(AdlSequencing, "objective")) {
    const std::string identifier = element->GetValue("objectiveID");
    const auto found = positions.find(identifier);
    if (identifier.empty() || found == positions.end()) {
      notes.Add(*element, "the activity declares no objective '" + identifier.substr(0, 100) +
                              "'; its maps are left out");
      continue;
    }
    for (const PlexoManifestElement* map : element->FindAll(AdlSequencing, "mapInfo"))
      ReadMap(*map, kAuxiliaryShared, rules.objectives[found->second]);
  }
}

void PlexoActivityRulesReader::ReadMap(const PlexoManifestElement& element,
                                       std::span<const PlexoWord<PlexoSharedValue>> shareable,
                                       PlexoObjectiveDefinition& objective) {
  PlexoMapInfo map;
  map.target = element.GetValue("targetObjectiveID");
  if (map.target.empty()) {
    notes.Add(element, "the 'mapInfo' has no 'targetObjectiveID'; it is left out");
    return;
  }
  for (const auto& [name, value] : shareable) {
    bool reads = true;
    bool writes = false;
    values.ReadFlag(element, "read" + std::string(name), reads);
    values.ReadFlag(element, "write" + std::string(name), writes);
    if (reads) map.reads |= PlexoMapInfo::Bit(value);
    if (writes) map.writes |= PlexoMapInfo::Bit(value);
  }
  objective.maps.push_back(std::move(map));
}

void PlexoActivityRulesReader::ReadRandomization(PlexoActivityRules& rules) {
  const PlexoManifestElement* controls = FindPart(Sequencing, "randomizationControls");
  if (controls == nullptr) return;
  PlexoRandomization& randomization = rules.randomization;
  values.ReadWord(*controls, "selectionTiming", kTimings, randomization.selectionTiming);
  values.ReadCount(*controls, "selectCount", randomization.selectCount);
  values.ReadWord(*controls, "randomizationTiming", kTimings, randomization.randomizationTiming);
  values.ReadFlag(*controls, "reorderChildren", randomization.reorderChildren);
}

void PlexoActivityRulesReader::ReadDelivery(PlexoActivityRules& rules) {
  const PlexoManifestElement* controls = FindPart(Sequencing, "deliveryControls");
  if (controls == nullptr) return;
  values.ReadFlag(*controls, "tracked", rules.delivery.tracked);
  values.ReadFlag(*controls, "completionSetByContent", rules.delivery.completionSetByContent);
  values.ReadFlag(*controls, "objectiveSetByContent", rules.delivery.objectiveSetByContent);
}
