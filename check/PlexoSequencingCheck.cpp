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

/// The conditions that come to hold for what was done.
constexpr std::array<std::string_view, 6> kDone = {"completed",
                                                   "attempted",
                                                   "satisfied",
                                                   "objectiveStatusKnown",
                                                   "objectiveMeasureKnown",
                                                   "activityProgressKnown"};

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
      if (activity.parent == nullptr) CheckStart(activity);
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

  /// Flow stops at what is disabled, so that nothing behind it is delivered either.
  void CheckStart(const PlexoActivity& organization) {
    for (const PlexoActivity* at = &organization; at->IsCluster();) {
      if (!at->IsOn("controlMode", "flow", false)) return;
      at = at->children.front();
      if (!ClosesWhenDone(*at)) continue;
      findings.AddElement(StartedOnce, *at->element, {at->GetKind(), at->identifier});
      return;
    }
  }

  [[nodiscard]] bool ClosesWhenDone(const PlexoActivity& activity) const {
    const PlexoManifestElement* rules = activity.FindPart("sequencingRules");
    if (rules == nullptr) return false;
    const auto closes = [&](const PlexoManifestElement* rule) {
      const PlexoManifestElement* action = rule->Find(Sequencing, "ruleAction");
      const PlexoManifestElement* list = rule->Find(Sequencing, "ruleConditions");
      if (list == nullptr || action == nullptr || action->GetValue("action") != "disabled") return false;
      const auto conditions = list->FindAll(Sequencing, "ruleCondition");
      const auto comesTrue = [&](const auto* condition) { return ComesTrue(activity, *condition); };
      return list->GetValue("conditionCombination", "all") == "any"
                 ? std::any_of(conditions.begin(), conditions.end(), comesTrue)
                 : !conditions.empty() && std::all_of(conditions.begin(), conditions.end(), comesTrue);
    };
    const auto all = rules->FindAll(Sequencing, "preConditionRule");
    return std::any_of(all.begin(), all.end(), closes);
  }

  /// True for what a learner makes true by going through the course.
  [[nodiscard]] bool ComesTrue(const PlexoActivity& activity, const PlexoManifestElement& condition) const {
    const bool isKnown =
        std::find(kDone.begin(), kDone.end(), condition.GetValue("condition")) != kDone.end();
    if (!isKnown || condition.GetValue("operator") == "not") return false;
    const std::string name = condition.GetValue("referencedObjective");
    const std::size_t index = activity.FindObjective(name);
    if (name.empty() || index == 0) return true;
    if (index == activity.objectives.size()) return false;
    const auto& maps = activity.objectives[index].maps;
    return std::any_of(maps.begin(), maps.end(), [this](const PlexoObjectiveMap& map) {
      return map.reads && !tree.GetWriters(map.global).empty();
    });
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
