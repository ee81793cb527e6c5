// SPDX-License-Identifier: Apache-2.0
#include "check/PlexoSequencingCheck.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <optional>
#include <unordered_set>

namespace {

using enum PlexoFindingId;
using enum PlexoVocabulary;

/// The parts of a sequencing in the order of its schema (IMS Simple Sequencing Binding 1.0).
constexpr std::array<std::string_view, 8> kOrder = {
    "controlMode", "sequencingRules", "limitConditions",       "auxiliaryResources",
    "rollupRules", "objectives",      "randomizationControls", "deliveryControls"};

constexpr std::array<std::string_view, 3> kRuleKinds = {"preConditionRule", "exitConditionRule",
                                                        "postConditionRule"};

/// A plain number from 0 to 1; none for any other text.
std::optional<double> ReadWeight(std::string_view text) {
  double value = 0;
  const auto [end, error] =
      std::from_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed);
  const bool isWhole = error == std::errc() && end == text.data() + text.size();
  return isWhole && value >= 0 && value <= 1 ? std::optional(value) : std::nullopt;
}

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
      CheckGates(activity);
      CheckGlobals(activity);
      CheckControlMode(activity);
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

  void CheckGates(const PlexoActivity& activity) {
    for (const PlexoGate& gate : activity.gates) {
      const PlexoObjective& objective = activity.objectives[gate.objective];
      // What the closed activity would write itself can't open it.
      const bool isSet = std::any_of(objective.maps.begin(), objective.maps.end(), [&](const auto& map) {
        const auto& writers = tree.GetWriters(map.global);
        return map.reads && std::any_of(writers.begin(), writers.end(),
                                        [&](const auto* writer) { return !activity.Holds(*writer); });
      });
      if (isSet) continue;
      for (const PlexoObjectiveMap& map : objective.maps) explained.insert(map.element);
      findings.AddElement(GateNeverOpens, *gate.rule, {activity.identifier, objective.identifier});
    }
  }

  void CheckGlobals(const PlexoActivity& activity) {
    for (const PlexoObjective& objective : activity.objectives) {
      for (const PlexoObjectiveMap& map : objective.maps) {
        const bool isWritten = !tree.GetWriters(map.global).empty();
        if (!map.reads || isWritten || explained.contains(map.element)) continue;
        findings.AddElement(GlobalNeverWritten, *map.element, {activity.identifier, map.global});
      }
    }
  }

  void CheckControlMode(const PlexoActivity& activity) {
    if (!activity.IsCluster() || activity.IsOn("controlMode", "flow", false)) return;
    const bool isReachable = activity.IsOn("controlMode", "choice", true);
    // The only item of a course without sequencing is started by every LMS.
    const bool isPlain = activity.parent == nullptr && activity.sequencing == nullptr &&
                         activity.children.size() == 1 && !activity.children.front()->IsCluster();
    if (isPlain) return;
    findings.AddElement(isReachable ? FlowOff : NothingReachable, *activity.element,
                        {activity.GetKind(), activity.identifier});
  }

  void CheckWeights(const PlexoActivity& activity) {
    double sum = 0;
    bool isShared = false;
    bool isWhole = true;
    for (const PlexoActivity* child : activity.children) {
      const PlexoManifestElement* rollup = child->FindPart("rollupRules");
      const std::string* text = rollup != nullptr ? rollup->GetAttribute("objectiveMeasureWeight") : nullptr;
      const std::optional<double> weight = text != nullptr ? ReadWeight(*text) : std::optional(1.0);
      if (!weight.has_value()) {
        findings.AddElement(WeightMalformed, *rollup, {child->identifier, *text});
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
  /// What has a finding of its own already.
  std::unordered_set<const PlexoManifestElement*> explained;
};

}  // namespace

void PlexoSequencingCheck::Run(const PlexoActivityTree& tree, PlexoFindingList& findings) {
  SequencingCheck(tree, findings).Run();
}
