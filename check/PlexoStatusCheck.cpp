// SPDX-License-Identifier: Apache-2.0
#include "check/PlexoStatusCheck.h"

#include <algorithm>
#include <array>
#include <map>
#include <unordered_set>
#include <utility>

namespace {

using enum PlexoFindingId;
using enum PlexoVocabulary;

enum class Status { Completion, Success };

struct StatusNames {
  std::string_view rollupAction;
  /// The attribute by which a child takes no part in a rollup of this status.
  std::string_view takesPart;
  std::array<std::string_view, 3> conditions;
};

constexpr StatusNames kCompletion = {
    "completed", "rollupProgressCompletion", {"completed", "activityProgressKnown", "attempted"}};
constexpr StatusNames kSuccess = {
    "satisfied", "rollupObjectiveSatisfied", {"satisfied", "objectiveStatusKnown", "objectiveMeasureKnown"}};

const StatusNames& NamesOf(Status status) { return status == Status::Completion ? kCompletion : kSuccess; }

/// What one content tells the LMS.
struct Reports {
  bool completion = true;
  bool success = true;
  /// The LMS leaves a status to the content.
  bool ownsCompletion = false;
  bool ownsSuccess = false;

  [[nodiscard]] bool Lacks(Status status) const {
    return status == Status::Completion ? ownsCompletion && !completion : ownsSuccess && !success;
  }
};

class StatusCheck {
 public:
  StatusCheck(const PlexoActivityTree& activityTree, const PlexoScriptIndex& scriptIndex,
              PlexoFindingList& list)
      : tree(activityTree), scripts(scriptIndex), findings(list) {}

  void Run() {
    for (const PlexoActivity& activity : tree.GetActivities()) {
      for (const PlexoGate& gate : activity.gates) CheckGate(activity, gate);
    }
    for (const PlexoActivity& activity : tree.GetActivities()) CheckCompletion(activity);
    for (const PlexoActivity& activity : tree.GetActivities()) {
      if (activity.parent == nullptr) CheckCourse(activity);
    }
  }

 private:
  using Activities = std::vector<const PlexoActivity*>;

  [[nodiscard]] Reports GetReports(const PlexoActivity& leaf) const {
    Reports reports;
    if (leaf.resource == nullptr || !scripts.Knows(*leaf.resource)) return reports;
    const PlexoScriptWords words = scripts.GetWordsOf(*leaf.resource);
    reports.completion = words.ReportsCompletion();
    reports.success = words.ReportsSuccess() || (leaf.objectives.front().isSatisfiedByMeasure &&
                                                 words.Has(PlexoScriptWords::ScaledScore));
    reports.ownsCompletion = leaf.IsOn("deliveryControls", "completionSetByContent", false);
    reports.ownsSuccess = leaf.IsOn("deliveryControls", "objectiveSetByContent", false);
    return reports;
  }

  void CheckGate(const PlexoActivity& gated, const PlexoGate& gate) {
    for (const PlexoObjectiveMap& map : gated.objectives[gate.objective].maps) {
      if (!map.reads) continue;
      const Activities openers = tree.GetOpeners(gated, map.global);
      if (const PlexoActivity* silent = FindSilentAmong(openers); silent != nullptr)
        ReportSilent(*silent, gated);
    }
  }

  /// The first content whose silence is to blame, if none of the openers ever has a status; else null.
  const PlexoActivity* FindSilentAmong(const Activities& openers) {
    const PlexoActivity* first = nullptr;
    for (const PlexoActivity* opener : openers) {
      const PlexoActivity* silent = FindSilent(*opener, Status::Success);
      if (silent == nullptr) return nullptr;
      if (first == nullptr) first = silent;
    }
    return first;
  }

  void ReportSilent(const PlexoActivity& leaf, const PlexoActivity& waiting) {
    if (!reported.insert(&leaf).second) return;
    const Reports reports = GetReports(leaf);
    if (reports.completion && reports.success) return;
    PlexoFindingId id = reports.completion ? NeverSuccess : NeverReports;
    if (reports.success) id = CompletionAwaited;
    findings.AddElement(id, *leaf.element, {leaf.identifier, waiting.identifier});
  }

  void CheckCompletion(const PlexoActivity& activity) {
    if (activity.IsCluster() || !activity.IsOn("rollupRules", "rollupProgressCompletion", true)) return;
    const Reports reports = GetReports(activity);
    if (!reports.Lacks(Status::Completion) || !reports.success || reported.contains(&activity)) return;
    reported.insert(&activity);
    findings.AddElement(NeverComplete, *activity.element, {activity.identifier});
  }

  void CheckCourse(const PlexoActivity& organization) {
    const auto report = [&](PlexoFindingId id, const PlexoActivity* silent) {
      if (silent == nullptr || !reported.insert(silent).second) return;
      findings.AddElement(id, *silent->element,
                          {silent->identifier, organization.GetKind(), organization.identifier});
    };
    report(CourseNeverComplete, FindSilent(organization, Status::Completion));
    report(CourseNeverPassed, FindSilent(organization, Status::Success));
  }

  /// The first content whose silence keeps an activity from ever having the status; null if there is none.
  const PlexoActivity* FindSilent(const PlexoActivity& activity, Status status) {
    const auto [known, isNew] = silentContents.try_emplace({&activity, status}, nullptr);
    if (!isNew) return known->second;
    const PlexoActivity* silent = nullptr;
    if (!activity.IsCluster()) {
      silent = GetReports(activity).Lacks(status) ? &activity : nullptr;
    } else {
      silent = FindSilentBelow(activity, status);
    }
    silentContents[{&activity, status}] = silent;
    return silent;
  }

  const PlexoActivity* FindSilentBelow(const PlexoActivity& cluster, Status status) {
    // The score decides.
    if (status == Status::Success && cluster.objectives.front().isSatisfiedByMeasure) return nullptr;
    const PlexoManifestElement* list = cluster.FindPart("rollupRules");
    const PlexoActivity* silent = nullptr;
    bool hasRule = false;
    if (list != nullptr) {
      for (const PlexoManifestElement* rule : list->FindAll(Sequencing, "rollupRule")) {
        const PlexoManifestElement* action = rule->Find(Sequencing, "rollupAction");
        if (action == nullptr || action->GetValue("action") != NamesOf(status).rollupAction) continue;
        hasRule = true;
        const PlexoActivity* found = FindSilentByRule(cluster, *rule, status);
        if (found == nullptr) return nullptr;
        if (silent == nullptr) silent = found;
      }
    }
    // Without a rule of its own a cluster has the status when all its children have it.
    return hasRule ? silent : FindSilentChild(cluster, status, status, false);
  }

  /// What keeps a rollup rule from ever holding. Rules with conditions other than a status are left alone.
  const PlexoActivity* FindSilentByRule(const PlexoActivity& cluster, const PlexoManifestElement& rule,
                                        Status status) {
    const PlexoManifestElement* list = rule.Find(Sequencing, "rollupConditions");
    const auto conditions = list != nullptr ? list->FindAll(Sequencing, "rollupCondition")
                                            : std::vector<const PlexoManifestElement*>();
    if (conditions.size() != 1 || conditions.front()->GetValue("operator") == "not") return nullptr;
    const std::string condition = conditions.front()->GetValue("condition");
    const std::string set = rule.GetValue("childActivitySet", "all");
    if (set != "all" && set != "any") return nullptr;
    for (const Status needed : {Status::Completion, Status::Success}) {
      const auto& names = NamesOf(needed).conditions;
      if (std::find(names.begin(), names.end(), condition) == names.end()) continue;
      return FindSilentChild(cluster, status, needed, set == "any");
    }
    return nullptr;
  }

  /// Among the children that take part in the rollup of a status: the first that never has the one needed;
  /// with `allOfThem`, only if none of them ever has it.
  const PlexoActivity* FindSilentChild(const PlexoActivity& cluster, Status rolledUp, Status needed,
                                       bool allOfThem) {
    const PlexoActivity* first = nullptr;
    for (const PlexoActivity* child : cluster.children) {
      if (!child->IsOn("rollupRules", NamesOf(rolledUp).takesPart, true)) continue;
      const PlexoActivity* silent = FindSilent(*child, needed);
      if (silent == nullptr && allOfThem) return nullptr;
      if (first == nullptr) first = silent;
    }
    return first;
  }

  const PlexoActivityTree& tree;
  const PlexoScriptIndex& scripts;
  PlexoFindingList& findings;
  std::map<std::pair<const PlexoActivity*, Status>, const PlexoActivity*> silentContents;
  std::unordered_set<const PlexoActivity*> reported;
};

}  // namespace

void PlexoStatusCheck::Run(const PlexoActivityTree& tree, const PlexoScriptIndex& scripts,
                           PlexoFindingList& findings) {
  StatusCheck(tree, scripts, findings).Run();
}
