// SPDX-License-Identifier: Apache-2.0
#include "check/PlexoSequencingCheck.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <optional>

namespace {

using enum PlexoFindingId;
using enum PlexoVocabulary;

/// The parts of a sequencing in the order of its schema (IMS Simple Sequencing Binding 1.0).
constexpr std::array<std::string_view, 8> kOrder = {
    "controlMode", "sequencingRules", "limitConditions",       "auxiliaryResources",
    "rollupRules", "objectives",      "randomizationControls", "deliveryControls"};

constexpr std::array<std::string_view, 3> kRuleKinds = {"preConditionRule", "exitConditionRule",
                                                        "postConditionRule"};

/// At most four decimals, without zeros behind.
std::string FormatSum(double sum) {
  std::array<char, 32> digits = {};
  const auto end = std::to_chars(digits.begin(), digits.end(), std::round(sum * 10000) / 10000).ptr;
  return {digits.begin(), end};
}

class SequencingCheck {
 public:
  SequencingCheck(const PlexoActivityTree& activityTree, PlexoFindingList& list)
      : tree(activityTree), findings(list) {}

  void Run() {
    for (const PlexoActivity& activity : tree.GetActivities()) {
      CheckOrder(activity);
      CheckRules(activity);
      CheckGlobals(activity);
      CheckWeights(activity);
    }
  }

 private:
  void CheckOrder(const PlexoActivity& activity) {
    if (activity.sequencing == nullptr) return;
    std::size_t reached = 0;
    for (const PlexoManifestElement* part : activity.sequencing->children) {
      if (part->vocabulary != Sequencing) continue;
      const auto place =
          static_cast<std::size_t>(std::find(kOrder.begin(), kOrder.end(), part->name) - kOrder.begin());
      if (place == kOrder.size()) continue;
      if (place < reached) {
        findings.AddElement(SequencingOrder, *part,
                            {std::string(kOrder[place]), std::string(kOrder[reached])});
      }
      reached = std::max(reached, place);
    }
  }

  void CheckRules(const PlexoActivity& activity) {
    const PlexoManifestElement* rules = activity.FindPart("sequencingRules");
    if (rules == nullptr) return;
    for (const PlexoManifestElement* rule : rules->children) {
      if (std::find(kRuleKinds.begin(), kRuleKinds.end(), rule->name) == kRuleKinds.end()) continue;
      const PlexoManifestElement* list = rule->Find(Sequencing, "ruleConditions");
      if (list == nullptr) continue;
      for (const PlexoManifestElement* condition : list->FindAll(Sequencing, "ruleCondition")) {
        const std::string name = condition->GetValue("referencedObjective");
        if (name.empty() || activity.FindObjective(name) < activity.objectives.size()) continue;
        findings.AddElement(ObjectiveUnknown, *condition, {activity.identifier, name});
      }
    }
  }

  void CheckGlobals(const PlexoActivity& activity) {
    for (const PlexoObjective& objective : activity.objectives) {
      for (const PlexoObjectiveMap& map : objective.maps) {
        const bool isWritten = !tree.GetWriters(map.global).empty();
        if (!map.reads || isWritten) continue;
        findings.AddElement(GlobalNeverWritten, *map.element, {activity.identifier, map.global});
      }
    }
  }

  void CheckWeights(const PlexoActivity& activity) {
    double sum = 0;
    bool isShared = false;
    bool isWhole = true;
    for (const PlexoActivity* child : activity.children) {
      const std::optional<double> weight = child->GetWeight();
      if (!weight.has_value()) {
        const PlexoManifestElement& rollup = *child->FindPart("rollupRules");
        findings.AddElement(WeightMalformed, rollup,
                            {child->identifier, rollup.GetValue("objectiveMeasureWeight")});
        isWhole = false;
        continue;
      }
      sum += *weight;
      isShared = isShared || (*weight > 0 && *weight < 1);
    }
    // Weights of 1 and 0 alone only say which children count.
    constexpr double kTolerance = 0.0001;
    if (!isWhole || !isShared || std::abs(sum - 1) <= kTolerance) return;
    findings.AddElement(WeightsDontSum, *activity.element,
                        {activity.GetKind(), activity.identifier, FormatSum(sum)});
  }

  const PlexoActivityTree& tree;
  PlexoFindingList& findings;
};

}  // namespace

void PlexoSequencingCheck::Run(const PlexoActivityTree& tree, PlexoFindingList& findings) {
  SequencingCheck(tree, findings).Run();
}
