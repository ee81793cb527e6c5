// SPDX-License-Identifier: Apache-2.0
#include "publish/PlexoSequencing.h"

#include <string_view>

namespace {

// An empty word leaves its attribute out. Numbers without a row are not in use.
constexpr std::string_view kChildActivitySets[] = {"all", "any", "none"};
constexpr std::string_view kOperators[] = {"", "and", "or", "not"};
constexpr std::string_view kConditions[] = {
    "satisfied", "objectiveStatusKnown", "", "activityProgressKnown", "", "", "completed",
};
constexpr std::string_view kActions[] = {"satisfied", "notSatisfied", "completed", "incomplete"};

template <std::size_t Count, typename Value>
std::string_view WordOf(const std::string_view (&words)[Count], Value value) {
  const auto number = static_cast<std::size_t>(value);
  return number < Count ? words[number] : std::string_view();
}

PlexoAttribute Optional(std::string_view name, std::string_view word) {
  return {word.empty() ? std::string_view() : name, word};
}

TzString BoolText(bool value) { return value ? "true" : "false"; }

}  // namespace

TzDOMNode PlexoSequencing::WriteObjective(TzDOMNode objectives, ObjectiveRank rank,
                                          const TzString& objectiveId, MeasureMode mode) {
  return tree.WriteNode(
      rank == ObjectiveRank::Primary ? "imsss:primaryObjective" : "imsss:objective", objectives,
      {
          {mode == MeasureMode::Unsaid ? "" : "satisfiedByMeasure", BoolText(mode == MeasureMode::True)},
          {"objectiveID", objectiveId},
      });
}

TzDOMNode PlexoSequencing::WriteMapInfo(TzDOMNode objective, const TzString& targetObjectiveId,
                                        const MapFlags& flags) {
  return tree.WriteNode("imsss:mapInfo", objective,
                        {
                            {flags.readSatisfied ? "" : "readSatisfiedStatus", "false"},
                            {flags.readNormalized ? "" : "readNormalizedMeasure", "false"},
                            {flags.writeSatisfied ? "writeSatisfiedStatus" : "", "true"},
                            {flags.writeNormalized ? "writeNormalizedMeasure" : "", "true"},
                            {"targetObjectiveID", targetObjectiveId},
                        });
}

void PlexoSequencing::WriteRollupRule(TzDOMNode rollupRules, const RollupRule& rule) {
  const TzDOMNode ruleNode = tree.WriteNode(
      "imsss:rollupRule", rollupRules, {Optional("childActivitySet", WordOf(kChildActivitySets, rule.set))});
  const TzDOMNode conditions = tree.WriteEmptyNode("imsss:rollupConditions", ruleNode);
  tree.WriteNode("imsss:rollupCondition", conditions,
                 {
                     Optional("operator", WordOf(kOperators, rule.conditionOperator)),
                     Optional("condition", WordOf(kConditions, rule.condition)),
                 });
  tree.WriteNode("imsss:rollupAction", ruleNode, {Optional("action", WordOf(kActions, rule.action))});
}

void PlexoSequencing::WriteRollupRules(TzDOMNode sequencing, std::span<const RollupRule> rules) {
  const TzDOMNode rollupRules = tree.WriteEmptyNode("imsss:rollupRules", sequencing);
  for (const RollupRule& rule : rules) WriteRollupRule(rollupRules, rule);
}

void PlexoSequencing::WriteRollupRules(TzDOMNode sequencing, const RollupShare& share,
                                       std::span<const RollupRule> rules) {
  const TzDOMNode rollupRules =
      tree.WriteNode("imsss:rollupRules", sequencing,
                     {
                         {"rollupObjectiveSatisfied", BoolText(share.objectiveSatisfied)},
                         {"rollupProgressCompletion", BoolText(share.progressCompletion)},
                         {"objectiveMeasureWeight", share.measureWeight},
                     });
  for (const RollupRule& rule : rules) WriteRollupRule(rollupRules, rule);
}

void PlexoSequencing::WriteRule(TzDOMNode sequencingRules, RuleMoment moment,
                                ConditionCombination combination, std::span<const RuleCondition> conditions,
                                std::string_view action) {
  const TzDOMNode rule = tree.WriteEmptyNode(
      moment == RuleMoment::PreCondition ? "imsss:preConditionRule" : "imsss:postConditionRule",
      sequencingRules);
  const TzDOMNode ruleConditions =
      tree.WriteNode("imsss:ruleConditions", rule,
                     {{"conditionCombination", combination == ConditionCombination::AllOf ? "all" : "any"}});
  for (const auto& [conditionOperator, condition, referencedObjective] : conditions) {
    tree.WriteNode("imsss:ruleCondition", ruleConditions,
                   {
                       Optional("operator", conditionOperator),
                       {referencedObjective.IsEmpty() ? "" : "referencedObjective", referencedObjective},
                       {"condition", condition},
                   });
  }
  tree.WriteNode("imsss:ruleAction", rule, {{"action", action}});
}

void PlexoSequencing::WriteForcedPriorRule(TzDOMNode sequencing) {
  const RuleCondition priorUnknown[] = {{"not", "objectiveStatusKnown", "obj-prior"}};
  WriteRule(tree.WriteEmptyNode("imsss:sequencingRules", sequencing), RuleMoment::PreCondition,
            ConditionCombination::AllOf, priorUnknown, "disabled");
}

void PlexoSequencing::WriteFreeControlMode(TzDOMNode sequencing) {
  tree.WriteNode("imsss:controlMode", sequencing, {{"flow", "true"}, {"choice", "true"}});
}

void PlexoSequencing::WriteControlMode(TzDOMNode sequencing, const ControlMode& mode) {
  tree.WriteNode("imsss:controlMode", sequencing,
                 {
                     {"forwardOnly", BoolText(mode.forwardOnly)},
                     {"choice", BoolText(mode.choice)},
                     {"flow", "true"},
                     {"choiceExit", "true"},
                 });
}

void PlexoSequencing::WriteDeliveryControls(TzDOMNode sequencing) {
  tree.WriteNode("imsss:deliveryControls", sequencing,
                 {{"objectiveSetByContent", "true"}, {"completionSetByContent", "true"}});
}

void PlexoSequencing::WriteItemSequencing(TzDOMNode item, bool forced, std::uint32_t index,
                                          std::uint32_t moduleIndex, ItemKind kind) {
  const TzDOMNode sequencing = tree.WriteEmptyNode("imsss:sequencing", item);
  const bool waits = forced && index != 0;
  if (waits) WriteForcedPriorRule(sequencing);
  // Items of a flat course weigh the same; contents of a module leave their weights to the module.
  if (kind == ItemKind::Item) {
    tree.WriteNode("imsss:rollupRules", sequencing, {{"objectiveMeasureWeight", "1"}});
  }
  const TzDOMNode objectives = tree.WriteEmptyNode("imsss:objectives", sequencing);
  const TzString primaryId = forced ? "obj-primary" : MakeIdentifier("obj", index, moduleIndex, kind);
  const TzDOMNode primary = WriteObjective(objectives, ObjectiveRank::Primary, primaryId, MeasureMode::False);
  if (!forced) return;
  WriteMapInfo(primary, MakeIdentifier("obj-global", index, moduleIndex, kind),
               kind == ItemKind::Item ? kWriteMap : kSatisfiedWriteMap);
  if (waits) {
    const TzDOMNode prior = WriteObjective(objectives, ObjectiveRank::Other, "obj-prior", MeasureMode::False);
    WriteMapInfo(prior, MakeIdentifier("obj-global", index - 1, moduleIndex, kind), kReadMap);
  }
  WriteDeliveryControls(sequencing);
}
