// SPDX-License-Identifier: Apache-2.0
#include "check/PlexoResultCheck.h"

#include <algorithm>
#include <array>
#include <string>
#include <vector>

namespace {

using enum PlexoFindingId;
using enum PlexoVocabulary;

constexpr std::array<std::string_view, 3> kOfSuccess = {"satisfied", "objectiveStatusKnown",
                                                        "objectiveMeasureKnown"};

/// One gate of a course that stands for all that are alike.
struct Example {
  const PlexoActivity* gated = nullptr;
  const PlexoActivity* opener = nullptr;
  std::size_t count = 0;
};

enum class Scoring { Reported, Never, Unknown };

class ResultCheck {
 public:
  ResultCheck(const PlexoActivityTree& activityTree, const PlexoScriptIndex& scriptIndex,
              PlexoFindingList& list)
      : tree(activityTree), scripts(scriptIndex), findings(list) {}

  void Run() {
    for (const PlexoActivity& activity : tree.GetActivities()) {
      if (activity.parent == nullptr) ReportExamples();
      for (const PlexoGate& gate : activity.gates) CheckGate(activity, gate);
      CheckScores(activity);
    }
    ReportExamples();
  }

 private:
  using Activities = std::vector<const PlexoActivity*>;

  void CheckGate(const PlexoActivity& gated, const PlexoGate& gate) {
    for (const PlexoObjectiveMap& map : gated.objectives[gate.objective].maps) {
      if (!map.reads) continue;
      const Activities openers = tree.GetOpeners(gated, map.global);
      if (gate.needsSuccess) {
        NoteTakenBack(gated, openers);
      } else if (!gate.isForFailure && !CheckPretest(gated, openers)) {
        NoteFailing(gated, openers);
      }
    }
  }

  /// Of two tests side by side that report to one objective, the first is a pretest.
  bool CheckPretest(const PlexoActivity& gated, const Activities& openers) {
    for (std::size_t index = 1; index < openers.size(); ++index) {
      const PlexoActivity& first = *openers[index - 1];
      const PlexoActivity& second = *openers[index];
      if (first.IsCluster() || second.IsCluster() || first.parent != second.parent) continue;
      findings.AddElement(FailedPretestOpens, *gated.element, {gated.identifier, first.identifier});
      return true;
    }
    return false;
  }

  void NoteFailing(const PlexoActivity& gated, const Activities& openers) {
    const auto opener =
        std::find_if(openers.begin(), openers.end(), [this](const auto* other) { return CanFail(*other); });
    if (opener != openers.end()) Note(failing, gated, **opener);
  }

  void NoteTakenBack(const PlexoActivity& gated, const Activities& openers) {
    for (const PlexoActivity* opener : openers) {
      if (!opener->IsCluster() || !IsFailedByIncomplete(*opener)) continue;
      if (const PlexoActivity* content = FindIncomplete(*opener); content != nullptr) {
        Note(takenBack, gated, *content);
        return;
      }
    }
  }

  static void Note(Example& example, const PlexoActivity& gated, const PlexoActivity& opener) {
    if (++example.count > 1) return;
    example.gated = &gated;
    example.opener = &opener;
  }

  /// Those of one course, so that a long one has no finding for each of its items.
  void ReportExamples() {
    Report(FailingOpens, failing);
    Report(ResultTakenBack, takenBack);
  }

  void Report(PlexoFindingId id, Example& example) {
    if (example.count == 0) return;
    std::string more;
    if (example.count > 1) more = "; likewise " + std::to_string(example.count - 1) + " more";
    findings.AddElement(id, *example.gated->element,
                        {example.gated->identifier, example.opener->identifier, more});
    example = {};
  }

  [[nodiscard]] bool Knows(const PlexoActivity& leaf) const {
    return leaf.resource != nullptr && scripts.Knows(*leaf.resource);
  }

  /// True where a failure of content becomes one of the activity.
  [[nodiscard]] bool CanFail(const PlexoActivity& activity) const {
    if (!activity.IsCluster()) {
      if (!Knows(activity)) return false;
      const PlexoScriptWords words = scripts.GetWordsOf(*activity.resource);
      const bool isByMeasure = activity.objectives.front().isSatisfiedByMeasure;
      return words.ReportsFailure() || (isByMeasure && words.Has(PlexoScriptWords::ScaledScore));
    }
    if (!IsSatisfiedBySuccess(activity)) return false;
    return std::any_of(activity.children.begin(), activity.children.end(), [this](const auto* child) {
      return child->IsOn("rollupRules", "rollupObjectiveSatisfied", true) && CanFail(*child);
    });
  }

  /// Calls the function with each rollup rule of this action: its set of children and its conditions.
  template <typename Function>
  static void ForEachRule(const PlexoActivity& cluster, std::string_view wanted, Function use) {
    const PlexoManifestElement* rules = cluster.FindPart("rollupRules");
    if (rules == nullptr) return;
    for (const PlexoManifestElement* rule : rules->FindAll(Sequencing, "rollupRule")) {
      const PlexoManifestElement* action = rule->Find(Sequencing, "rollupAction");
      const PlexoManifestElement* list = rule->Find(Sequencing, "rollupConditions");
      if (action == nullptr || list == nullptr || action->GetValue("action") != wanted) continue;
      use(rule->GetValue("childActivitySet", "all"), list->FindAll(Sequencing, "rollupCondition"));
    }
  }

  /// False if the completion of the children alone satisfies the cluster.
  static bool IsSatisfiedBySuccess(const PlexoActivity& cluster) {
    bool hasRule = false;
    bool isBySuccess = false;
    ForEachRule(cluster, "satisfied", [&](const std::string&, const auto& conditions) {
      hasRule = true;
      isBySuccess = isBySuccess || std::any_of(conditions.begin(), conditions.end(), [](const auto* one) {
                      return std::find(kOfSuccess.begin(), kOfSuccess.end(), one->GetValue("condition")) !=
                             kOfSuccess.end();
                    });
    });
    return !hasRule || isBySuccess;
  }

  /// True if one incomplete child is enough for the cluster to count as failed.
  static bool IsFailedByIncomplete(const PlexoActivity& cluster) {
    bool isFailed = false;
    ForEachRule(cluster, "notSatisfied", [&](const std::string& set, const auto& conditions) {
      isFailed = isFailed || (set == "any" && conditions.size() == 1 &&
                              conditions.front()->GetValue("condition") == "completed" &&
                              conditions.front()->GetValue("operator") == "not");
    });
    return isFailed;
  }

  /// The first content in a cluster whose scripts can set it to incomplete; null if there is none.
  [[nodiscard]] const PlexoActivity* FindIncomplete(const PlexoActivity& activity) const {
    if (!activity.IsCluster()) {
      const bool isFound =
          Knows(activity) && scripts.GetWordsOf(*activity.resource).Has(PlexoScriptWords::Incomplete);
      return isFound ? &activity : nullptr;
    }
    for (const PlexoActivity* child : activity.children) {
      if (const PlexoActivity* found = FindIncomplete(*child); found != nullptr) return found;
    }
    return nullptr;
  }

  void CheckScores(const PlexoActivity& cluster) {
    if (!Counts(cluster)) return;
    const PlexoActivity* scored = nullptr;
    std::size_t silent = 0;
    std::size_t all = 0;
    for (const PlexoActivity* child : cluster.children) {
      if (child->IsCluster() || child->GetWeight() == 0.0) continue;
      ++all;
      const Scoring scoring = GetScoring(*child);
      if (scoring == Scoring::Never) ++silent;
      if (scoring == Scoring::Reported && scored == nullptr) scored = child;
    }
    if (silent == 0 || scored == nullptr) return;
    findings.AddElement(ScoreDiluted, *cluster.element,
                        {cluster.GetKind(), cluster.identifier, std::to_string(silent), std::to_string(all),
                         scored->identifier});
  }

  /// False if the score of the cluster has no weight in that of the course.
  static bool Counts(const PlexoActivity& cluster) {
    for (const PlexoActivity* at = &cluster; at != nullptr; at = at->parent) {
      if (at->GetWeight() == 0.0) return false;
    }
    return true;
  }

  [[nodiscard]] Scoring GetScoring(const PlexoActivity& leaf) const {
    if (!Knows(leaf)) return Scoring::Unknown;
    const PlexoScriptWords words = scripts.GetWordsOf(*leaf.resource);
    if (words.ReportsScore()) return Scoring::Reported;
    return words.Has(PlexoScriptWords::Assembled) ? Scoring::Unknown : Scoring::Never;
  }

  const PlexoActivityTree& tree;
  const PlexoScriptIndex& scripts;
  PlexoFindingList& findings;
  /// Of the course at hand.
  Example failing;
  Example takenBack;
};

}  // namespace

void PlexoResultCheck::Run(const PlexoActivityTree& tree, const PlexoScriptIndex& scripts,
                           PlexoFindingList& findings) {
  ResultCheck(tree, scripts, findings).Run();
}
