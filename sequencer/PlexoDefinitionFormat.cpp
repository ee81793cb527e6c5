// SPDX-License-Identifier: Apache-2.0
#include "sequencer/PlexoDefinitionFormat.h"

#include <array>
#include <utility>

#include "sequencer/PlexoByteReader.h"
#include "sequencer/PlexoByteWriter.h"

// The form, in the terms of PlexoByteWriter: "PXD" and the version, edition, whether globals are for the
// system, the number of activities, then the activities in preorder. An activity is its depth, identifier,
// title, its switches, and the parts that its bits of kPart announce; a part that isn't announced has the
// defaults of the standard. Enumerators are bytes in the order of their declaration; kPlexoNone is 0 where it
// is allowed, other numbers there are one more. Another order, or another enumerator before an existing one,
// takes another version.
namespace {

constexpr std::array<std::uint8_t, 3> kMark{'P', 'X', 'D'};
enum kPart : std::uint8_t {
  kRules = 1,
  kRollupRules = 2,
  kRollupControls = 4,
  kCompletion = 8,
  kObjectives = 16,
  kRandomization = 32,
  kAttemptLimit = 64,
};

constexpr unsigned kSwitchCount = 12;

/// Visits the yes-or-no attributes of an activity, in the order of their bits.
template <typename Rules, typename Visit>
void VisitSwitches(Rules& rules, const Visit& visit) {
  visit(rules.isVisible);
  visit(rules.controls.choice);
  visit(rules.controls.choiceExit);
  visit(rules.controls.flow);
  visit(rules.controls.forwardOnly);
  visit(rules.controls.useCurrentAttemptObjectiveInfo);
  visit(rules.controls.useCurrentAttemptProgressInfo);
  visit(rules.constrainChoice);
  visit(rules.preventActivation);
  visit(rules.delivery.tracked);
  visit(rules.delivery.completionSetByContent);
  visit(rules.delivery.objectiveSetByContent);
}

std::uint64_t GetSwitches(const PlexoActivityRules& rules) {
  std::uint64_t bits = 0;
  unsigned at = 0;
  VisitSwitches(rules, [&](bool isOn) { bits |= std::uint64_t{isOn} << at++; });
  return bits;
}

void SetSwitches(PlexoActivityRules& rules, std::uint64_t bits) {
  VisitSwitches(rules, [&bits](bool& isOn) {
    isOn = (bits & 1U) != 0;
    bits >>= 1;
  });
}

template <typename Enum>
void WriteChoice(PlexoByteWriter& writer, Enum value) {
  writer.Byte(static_cast<std::uint8_t>(value));
}

void WriteOptional(PlexoByteWriter& writer, std::uint32_t number) {
  writer.Whole(number == kPlexoNone ? 0 : std::uint64_t{number} + 1);
}

std::uint32_t ReadOptional(PlexoByteReader& reader) {
  return static_cast<std::uint32_t>(reader.Whole(kPlexoNone) - 1);
}

void Write(PlexoByteWriter& writer, const PlexoSequencingRule& rule) {
  WriteChoice(writer, rule.action);
  WriteChoice(writer, rule.combination);
  writer.Whole(rule.conditions.size());
  for (const PlexoRuleCondition& condition : rule.conditions) {
    WriteChoice(writer, condition.condition);
    writer.Byte(condition.isNegated ? 1 : 0);
    writer.Real(condition.measureThreshold);
    writer.Text(condition.referencedObjective);
  }
}

PlexoSequencingRule ReadRule(PlexoByteReader& reader) {
  PlexoSequencingRule rule;
  rule.action = reader.Choice(PlexoRuleAction::Previous);
  rule.combination = reader.Choice(PlexoCombination::Any);
  for (std::uint32_t left = reader.Count(); left > 0 && !reader.HasFailed(); --left) {
    PlexoRuleCondition& condition = rule.conditions.emplace_back();
    condition.condition = reader.Choice(PlexoCondition::Always);
    condition.isNegated = reader.Whole(1) == 1;
    condition.measureThreshold = reader.Real();
    condition.referencedObjective = reader.Text();
  }
  return rule;
}

void Write(PlexoByteWriter& writer, const PlexoRollupRule& rule) {
  WriteChoice(writer, rule.childSet);
  writer.Whole(rule.minimumCount);
  writer.Real(rule.minimumPercent);
  WriteChoice(writer, rule.combination);
  WriteChoice(writer, rule.action);
  writer.Whole(rule.conditions.size());
  for (const PlexoRollupCondition& condition : rule.conditions) {
    WriteChoice(writer, condition.condition);
    writer.Byte(condition.isNegated ? 1 : 0);
  }
}

PlexoRollupRule ReadRollupRule(PlexoByteReader& reader) {
  PlexoRollupRule rule;
  rule.childSet = reader.Choice(PlexoChildSet::AtLeastPercent);
  rule.minimumCount = static_cast<std::uint32_t>(reader.Whole(UINT32_MAX));
  rule.minimumPercent = reader.Real();
  rule.combination = reader.Choice(PlexoCombination::Any);
  rule.action = reader.Choice(PlexoRollupAction::Incomplete);
  for (std::uint32_t left = reader.Count(); left > 0 && !reader.HasFailed(); --left) {
    PlexoRollupCondition& condition = rule.conditions.emplace_back();
    condition.condition = reader.Choice(PlexoCondition::Always);
    condition.isNegated = reader.Whole(1) == 1;
  }
  return rule;
}

void Write(PlexoByteWriter& writer, const PlexoRollupControls& rollup) {
  writer.Byte(static_cast<std::uint8_t>((rollup.objectiveSatisfied ? 1 : 0) |
                                        (rollup.progressCompletion ? 2 : 0) |
                                        (rollup.measureSatisfactionIfActive ? 4 : 0)));
  writer.Real(rollup.objectiveMeasureWeight);
  WriteChoice(writer, rollup.requiredForSatisfied);
  WriteChoice(writer, rollup.requiredForNotSatisfied);
  WriteChoice(writer, rollup.requiredForCompleted);
  WriteChoice(writer, rollup.requiredForIncomplete);
}

PlexoRollupControls ReadRollupControls(PlexoByteReader& reader) {
  PlexoRollupControls rollup;
  const std::uint64_t bits = reader.Whole(7);
  rollup.objectiveSatisfied = (bits & 1U) != 0;
  rollup.progressCompletion = (bits & 2U) != 0;
  rollup.measureSatisfactionIfActive = (bits & 4U) != 0;
  rollup.objectiveMeasureWeight = reader.Real();
  rollup.requiredForSatisfied = reader.Choice(PlexoRequirement::IfNotSuspended);
  rollup.requiredForNotSatisfied = reader.Choice(PlexoRequirement::IfNotSuspended);
  rollup.requiredForCompleted = reader.Choice(PlexoRequirement::IfNotSuspended);
  rollup.requiredForIncomplete = reader.Choice(PlexoRequirement::IfNotSuspended);
  return rollup;
}

void Write(PlexoByteWriter& writer, const PlexoObjectiveDefinition& objective) {
  writer.Text(objective.identifier);
  writer.Byte(objective.isSatisfiedByMeasure ? 1 : 0);
  writer.Real(objective.minNormalizedMeasure);
  writer.Whole(objective.maps.size());
  for (const PlexoMapInfo& map : objective.maps) {
    writer.Text(map.target);
    writer.Byte(map.reads);
    writer.Byte(map.writes);
  }
}

PlexoObjectiveDefinition ReadObjective(PlexoByteReader& reader) {
  PlexoObjectiveDefinition objective;
  objective.identifier = reader.Text();
  objective.isSatisfiedByMeasure = reader.Whole(1) == 1;
  objective.minNormalizedMeasure = reader.Real();
  for (std::uint32_t left = reader.Count(); left > 0 && !reader.HasFailed(); --left) {
    PlexoMapInfo& map = objective.maps.emplace_back();
    map.target = reader.Text();
    map.reads = reader.Byte() & (PlexoMapInfo::kStatusAndMeasure | PlexoMapInfo::kAuxiliary);
    map.writes = reader.Byte() & (PlexoMapInfo::kStatusAndMeasure | PlexoMapInfo::kAuxiliary);
  }
  return objective;
}

template <typename Part>
void WriteAll(PlexoByteWriter& writer, const std::vector<Part>& parts) {
  writer.Whole(parts.size());
  for (const Part& part : parts) Write(writer, part);
}

template <typename Part>
void ReadAll(PlexoByteReader& reader, std::vector<Part>& parts, Part (*read)(PlexoByteReader&)) {
  for (std::uint32_t left = reader.Count(); left > 0 && !reader.HasFailed(); --left)
    parts.push_back(read(reader));
}

std::uint8_t GetParts(const PlexoActivityRules& rules) {
  static const std::vector<PlexoObjectiveDefinition> kDefaultObjectives(1);
  std::uint8_t parts = 0;
  const auto note = [&parts](bool isThere, kPart part) {
    if (isThere) parts = static_cast<std::uint8_t>(parts | part);
  };
  note(!rules.rules.empty(), kRules);
  note(!rules.rollupRules.empty(), kRollupRules);
  note(rules.rollup != PlexoRollupControls(), kRollupControls);
  note(rules.completion != PlexoCompletionThreshold(), kCompletion);
  note(rules.objectives != kDefaultObjectives, kObjectives);
  note(rules.randomization != PlexoRandomization(), kRandomization);
  note(rules.attemptLimit != kPlexoNone, kAttemptLimit);
  return parts;
}

void Write(PlexoByteWriter& writer, const PlexoActivityRules& rules) {
  writer.Text(rules.identifier);
  writer.Text(rules.title);
  writer.Whole(GetSwitches(rules));
  writer.Byte(rules.hiddenControls);
  const std::uint8_t parts = GetParts(rules);
  writer.Byte(parts);
  if ((parts & kRules) != 0) WriteAll(writer, rules.rules);
  if ((parts & kRollupRules) != 0) WriteAll(writer, rules.rollupRules);
  if ((parts & kRollupControls) != 0) Write(writer, rules.rollup);
  if ((parts & kCompletion) != 0) {
    writer.Byte(rules.completion.isByMeasure ? 1 : 0);
    writer.Real(rules.completion.minProgressMeasure);
    writer.Real(rules.completion.progressWeight);
  }
  if ((parts & kObjectives) != 0) WriteAll(writer, rules.objectives);
  if ((parts & kRandomization) != 0) {
    WriteChoice(writer, rules.randomization.selectionTiming);
    WriteOptional(writer, rules.randomization.selectCount);
    WriteChoice(writer, rules.randomization.randomizationTiming);
    writer.Byte(rules.randomization.reorderChildren ? 1 : 0);
  }
  if ((parts & kAttemptLimit) != 0) writer.Whole(rules.attemptLimit);
}

PlexoActivityRules ReadRules(PlexoByteReader& reader) {
  PlexoActivityRules rules;
  rules.identifier = reader.Text();
  rules.title = reader.Text();
  SetSwitches(rules, reader.Whole((1U << kSwitchCount) - 1));
  rules.hiddenControls = reader.Byte();
  const std::uint8_t parts = reader.Byte();
  if ((parts & kRules) != 0) ReadAll(reader, rules.rules, ReadRule);
  if ((parts & kRollupRules) != 0) ReadAll(reader, rules.rollupRules, ReadRollupRule);
  if ((parts & kRollupControls) != 0) rules.rollup = ReadRollupControls(reader);
  if ((parts & kCompletion) != 0) {
    rules.completion.isByMeasure = reader.Whole(1) == 1;
    rules.completion.minProgressMeasure = reader.Real();
    rules.completion.progressWeight = reader.Real();
  }
  if ((parts & kObjectives) != 0) ReadAll(reader, rules.objectives, ReadObjective);
  if ((parts & kRandomization) != 0) {
    rules.randomization.selectionTiming = reader.Choice(PlexoTiming::OnEachNewAttempt);
    rules.randomization.selectCount = ReadOptional(reader);
    rules.randomization.randomizationTiming = reader.Choice(PlexoTiming::OnEachNewAttempt);
    rules.randomization.reorderChildren = reader.Whole(1) == 1;
  }
  if ((parts & kAttemptLimit) != 0)
    rules.attemptLimit = static_cast<std::uint32_t>(reader.Whole(kPlexoNone - 1));
  return rules;
}

}  // namespace

std::vector<std::uint8_t> PlexoDefinitionFormat::Write(const PlexoSequencingDefinition& definition) {
  PlexoByteWriter writer;
  for (const std::uint8_t byte : kMark) writer.Byte(byte);
  writer.Byte(kVersion);
  WriteChoice(writer, definition.GetEdition());
  writer.Byte(definition.AreGlobalsForSystem() ? 1 : 0);
  writer.Whole(definition.GetCount());
  for (PlexoIndex activity = 0; activity < definition.GetCount(); ++activity) {
    writer.Whole(definition.Get(activity).depth);
    ::Write(writer, definition.GetRules(activity));
  }
  return writer.Take();
}

PlexoReadDefinition PlexoDefinitionFormat::Read(std::span<const std::uint8_t> bytes) {
  PlexoByteReader reader(bytes);
  for (const std::uint8_t byte : kMark) {
    if (reader.Byte() != byte) reader.Fail();
  }
  if (reader.Byte() != kVersion) reader.Fail();
  PlexoDefinitionBuilder builder(reader.Choice(PlexoSequencingEdition::Fourth));
  builder.SetGlobalsForSystem(reader.Whole(1) == 1);
  const std::uint32_t count = reader.Count();
  std::uint32_t depth = 0;
  for (std::uint32_t index = 0; index < count && !reader.HasFailed(); ++index) {
    const auto next = static_cast<std::uint32_t>(reader.Whole(PlexoSequencingDefinition::kMaxDepth + 1));
    // One step down at most; the root, at depth 0, has nothing before it that would have to end.
    if (next > depth) reader.Fail();
    for (; index > 0 && depth > next; --depth) builder.Close();
    PlexoActivityRules rules = ReadRules(reader);
    if (reader.HasFailed()) break;
    builder.Open(std::move(rules));
    if (builder.GetFault() != PlexoDefinitionFault::None) return {nullptr, builder.GetFault()};
    ++depth;
  }
  if (reader.HasFailed() || !reader.IsAtEnd()) return {};
  for (; depth > 0; --depth) builder.Close();
  auto definition = builder.Build();
  return {std::move(definition), builder.GetFault()};
}
