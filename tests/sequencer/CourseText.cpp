// SPDX-License-Identifier: Apache-2.0
#include "sequencer/CourseText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>
#include <sstream>

#include "sequencer/PlexoDefinitionBuilder.h"
#include "sequencer/PlexoSequencingReason.h"

namespace {

template <typename Enum, typename Get>
Enum FindByName(const std::string& name, Enum last, Get getName) {
  for (unsigned at = 0; at <= static_cast<unsigned>(last); ++at) {
    if (getName(static_cast<Enum>(at)) == name) return static_cast<Enum>(at);
  }
  ADD_FAILURE() << "unknown word: " << name;
  return last;
}

PlexoRequirement ReadRequirement(const std::string& word) {
  static const std::map<std::string, PlexoRequirement> kWords = {
      {"ifAttempted", PlexoRequirement::IfAttempted},
      {"ifNotSkipped", PlexoRequirement::IfNotSkipped},
      {"ifNotSuspended", PlexoRequirement::IfNotSuspended}};
  return kWords.at(word);
}

PlexoTiming ReadTiming(const std::string& word) {
  return word == "once" ? PlexoTiming::Once : PlexoTiming::OnEachNewAttempt;
}

using Setter = std::function<void(PlexoActivityRules&, const std::string&)>;
const std::map<std::string, Setter>& GetSetters() {
  static const std::map<std::string, Setter> kSetters = {
      {"flow", [](auto& r, auto&) { r.controls.flow = true; }},
      {"nochoice", [](auto& r, auto&) { r.controls.choice = false; }},
      {"nochoiceExit", [](auto& r, auto&) { r.controls.choiceExit = false; }},
      {"forwardOnly", [](auto& r, auto&) { r.controls.forwardOnly = true; }},
      {"anyAttemptObjectives", [](auto& r, auto&) { r.controls.useCurrentAttemptObjectiveInfo = false; }},
      {"anyAttemptProgress", [](auto& r, auto&) { r.controls.useCurrentAttemptProgressInfo = false; }},
      {"constrain", [](auto& r, auto&) { r.constrainChoice = true; }},
      {"prevent", [](auto& r, auto&) { r.preventActivation = true; }},
      {"invisible", [](auto& r, auto&) { r.isVisible = false; }},
      {"untracked", [](auto& r, auto&) { r.delivery.tracked = false; }},
      {"bycontent",
       [](auto& r, auto&) { r.delivery.completionSetByContent = r.delivery.objectiveSetByContent = true; }},
      {"limit", [](auto& r, auto& v) { r.attemptLimit = static_cast<std::uint32_t>(std::stoul(v)); }},
      {"weight", [](auto& r, auto& v) { r.rollup.objectiveMeasureWeight = std::stod(v); }},
      {"noSatisfiedRollup", [](auto& r, auto&) { r.rollup.objectiveSatisfied = false; }},
      {"noProgressRollup", [](auto& r, auto&) { r.rollup.progressCompletion = false; }},
      {"notIfActive", [](auto& r, auto&) { r.rollup.measureSatisfactionIfActive = false; }},
      {"forSatisfied", [](auto& r, auto& v) { r.rollup.requiredForSatisfied = ReadRequirement(v); }},
      {"forNotSatisfied", [](auto& r, auto& v) { r.rollup.requiredForNotSatisfied = ReadRequirement(v); }},
      {"forCompleted", [](auto& r, auto& v) { r.rollup.requiredForCompleted = ReadRequirement(v); }},
      {"forIncomplete", [](auto& r, auto& v) { r.rollup.requiredForIncomplete = ReadRequirement(v); }},
      {"threshold",
       [](auto& r, auto& v) {
         r.completion.isByMeasure = true;
         r.completion.minProgressMeasure = std::stod(v);
       }},
      {"progressWeight", [](auto& r, auto& v) { r.completion.progressWeight = std::stod(v); }},
      {"select",
       [](auto& r, auto& v) { r.randomization.selectCount = static_cast<std::uint32_t>(std::stoul(v)); }},
      {"selectTiming", [](auto& r, auto& v) { r.randomization.selectionTiming = ReadTiming(v); }},
      {"shuffle",
       [](auto& r, auto& v) {
         r.randomization.reorderChildren = true;
         r.randomization.randomizationTiming = ReadTiming(v);
       }},
  };
  return kSetters;
}

/// "not satisfied of o1" or "measure > 0.5".
PlexoRuleCondition ReadCondition(std::istringstream words) {
  PlexoRuleCondition condition;
  std::string word;
  words >> word;
  if (word == "not") {
    condition.isNegated = true;
    words >> word;
  }
  if (word == "measure") {
    words >> word >> condition.measureThreshold;
    condition.condition =
        word == ">" ? PlexoCondition::ObjectiveMeasureGreaterThan : PlexoCondition::ObjectiveMeasureLessThan;
  } else {
    condition.condition = FindByName(word, PlexoCondition::Always,
                                     [](PlexoCondition one) { return PlexoReasonText::GetName(one); });
  }
  if (words >> word && word == "of") words >> condition.referencedObjective;
  return condition;
}

/// "any a, b": the combination if it is said, and the conditions.
std::vector<PlexoRuleCondition> ReadConditions(std::string text, PlexoCombination& combination) {
  const auto takeFirst = [&text](const std::string& word) {
    if (text.rfind(word, 0) != 0) return false;
    text.erase(0, word.size());
    return true;
  };
  takeFirst(" ");
  if (takeFirst("any ")) combination = PlexoCombination::Any;
  if (takeFirst("all ")) combination = PlexoCombination::All;
  std::vector<PlexoRuleCondition> conditions;
  std::istringstream parts(text);
  for (std::string part; std::getline(parts, part, ',');)
    conditions.push_back(ReadCondition(std::istringstream(part)));
  return conditions;
}

/// "any not satisfied, completed any => incomplete": set, count, conditions ("combined all" before them),
/// action.
PlexoRollupRule ReadRollupRule(std::istringstream& words) {
  static const std::map<std::string, PlexoChildSet> kSets = {
      {"all", PlexoChildSet::All},
      {"any", PlexoChildSet::Any},
      {"none", PlexoChildSet::None},
      {"atLeastCount", PlexoChildSet::AtLeastCount},
      {"atLeastPercent", PlexoChildSet::AtLeastPercent}};
  static const std::map<std::string, PlexoRollupAction> kActions = {
      {"satisfied", PlexoRollupAction::Satisfied},
      {"notSatisfied", PlexoRollupAction::NotSatisfied},
      {"completed", PlexoRollupAction::Completed},
      {"incomplete", PlexoRollupAction::Incomplete}};
  PlexoRollupRule rule;
  std::string word;
  words >> word;
  rule.childSet = kSets.at(word);
  if (rule.childSet == PlexoChildSet::AtLeastCount) words >> rule.minimumCount;
  if (rule.childSet == PlexoChildSet::AtLeastPercent) words >> rule.minimumPercent;
  std::string text;
  while (words >> word && word != "=>") text += (text.empty() ? "" : " ") + word;
  words >> word;
  rule.action = kActions.at(word);
  if (text.rfind("combined ", 0) == 0) text.erase(0, 9);
  for (const PlexoRuleCondition& condition : ReadConditions(text, rule.combination))
    rule.conditions.push_back({condition.condition, condition.isNegated});
  return rule;
}

PlexoObjectiveDefinition ReadObjective(std::istringstream& words, std::string word) {
  PlexoObjectiveDefinition objective;
  do {
    if (word.rfind("byMeasure=", 0) == 0) {
      objective.isSatisfiedByMeasure = true;
      objective.minNormalizedMeasure = std::stod(word.substr(10));
    } else if (word == "read" || word == "write") {
      static const std::string kLetters = "smrnxcp";
      PlexoMapInfo& map = objective.maps.emplace_back();
      std::string letters;
      words >> letters >> map.target;
      for (const char letter : letters) {
        const auto bit = static_cast<std::uint8_t>(1U << kLetters.find(letter));
        (word == "read" ? map.reads : map.writes) |= bit;
      }
    } else {
      objective.identifier = word;
    }
  } while (words >> word);
  return objective;
}

void ReadPart(PlexoActivityRules& rules, const std::string& text) {
  std::istringstream words(text);
  std::string word;
  words >> word;
  if (word == "rollup") {
    rules.rollupRules.push_back(ReadRollupRule(words));
  } else if (word == "primary") {
    words >> word;
    if (rules.objectives.empty()) rules.objectives.emplace_back();
    rules.objectives.front() = ReadObjective(words, word);
  } else if (word == "objective") {
    words >> word;
    if (rules.objectives.empty()) rules.objectives.emplace_back();
    rules.objectives.push_back(ReadObjective(words, word));
  } else {
    PlexoSequencingRule rule;
    rule.action = FindByName(word, PlexoRuleAction::Previous,
                             [](PlexoRuleAction one) { return PlexoReasonText::GetName(one); });
    words >> word;
    std::string conditions;
    std::getline(words, conditions);
    rule.conditions = ReadConditions(conditions, rule.combination);
    rules.rules.push_back(rule);
  }
}

PlexoActivityRules ReadActivity(const std::string& text) {
  std::istringstream words(text);
  PlexoActivityRules rules;
  words >> rules.identifier;
  for (std::string word; words >> word;) {
    const std::size_t equals = word.find('=');
    const auto setter = GetSetters().find(word.substr(0, equals));
    if (setter == GetSetters().end()) {
      ADD_FAILURE() << "unknown attribute: " << word;
      continue;
    }
    setter->second(rules, equals == std::string::npos ? "" : word.substr(equals + 1));
  }
  return rules;
}

}  // namespace

std::shared_ptr<const PlexoSequencingDefinition> CourseText::Parse(const std::vector<std::string>& lines) {
  auto edition = PlexoSequencingEdition::Third;
  bool areGlobalsForSystem = true;
  std::vector<std::pair<std::size_t, PlexoActivityRules>> activities;
  for (const std::string& line : lines) {
    const std::size_t indent = line.find_first_not_of(' ');
    const std::string text = line.substr(indent);
    if (text == "edition 4") {
      edition = PlexoSequencingEdition::Fourth;
    } else if (text == "scoped") {
      areGlobalsForSystem = false;
    } else if (text[0] == '|') {
      ReadPart(activities.back().second, text.substr(1));
    } else {
      activities.emplace_back(indent / 2, ReadActivity(text));
    }
  }
  PlexoDefinitionBuilder builder(edition);
  builder.SetGlobalsForSystem(areGlobalsForSystem);
  std::size_t open = 0;
  for (auto& [depth, rules] : activities) {
    for (; open > depth; --open) builder.Close();
    builder.Open(std::move(rules));
    ++open;
  }
  for (; open > 0; --open) builder.Close();
  auto definition = builder.Build();
  EXPECT_NE(definition, nullptr) << PlexoDefinitionBuilder::GetText(builder.GetFault());
  return definition;
}
