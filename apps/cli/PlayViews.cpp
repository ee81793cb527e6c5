// SPDX-License-Identifier: Apache-2.0
#include "apps/cli/PlayViews.h"

#include <utility>

#include "apps/cli/CommandOutput.h"
#include "apps/cli/PlayWords.h"
#include "sequencer/PlexoTrackingView.h"

namespace {

using Json = PlayWords::Json;

constexpr std::pair<std::uint8_t, std::string_view> kControls[] = {
    {kPlexoHidesPrevious, "previous"},
    {kPlexoHidesContinue, "continue"},
    {kPlexoHidesExit, "exit"},
    {kPlexoHidesExitAll, "exitAll"},
    {kPlexoHidesAbandon, "abandon"},
    {kPlexoHidesAbandonAll, "abandonAll"},
    {kPlexoHidesSuspendAll, "suspendAll"},
};

std::vector<std::string> ListHidden(std::uint8_t controls) {
  std::vector<std::string> hidden;
  for (const auto& [bit, name] : kControls) {
    if ((controls & bit) != 0) hidden.emplace_back(name);
  }
  return hidden;
}

/// A status as people say it; "-" while it is unknown.
std::string Say(PlexoTruth truth, const char* whenTrue, const char* whenFalse) {
  if (!truth.IsKnown()) return "-";
  return truth.IsTrue() ? whenTrue : whenFalse;
}

std::string WriteBriefly(PlexoMeasure measure) { return measure.IsKnown() ? PlayWords::Write(measure) : "-"; }

}  // namespace

const PlexoProspect& PlayViews::Get(const PlexoOutlook& outlook, const PlexoNavigationRequest& request) {
  if (request.kind == PlexoNavigation::Continue) return outlook.onContinue;
  if (request.kind == PlexoNavigation::Previous) return outlook.onPrevious;
  return outlook.choices[request.target];
}

std::string PlayViews::WriteProspect(const PlexoOutlook& outlook, const PlexoProspect& prospect) const {
  if (prospect.IsOpen()) return "delivers " + PlayWords::Name(definition, prospect.delivers);
  const std::string reason =
      PlayWords::WriteReason(definition, outlook.seen, prospect.reason, prospect.exception);
  return (PlayWords::IsOpen(prospect) ? "ends the course: " : "closed: ") + reason;
}

PlayAnswer PlayViews::ShowContents() const {
  const PlexoOutlook outlook = sequencer.Look(state);
  const PlexoTrackingView tracking(definition, state);
  std::vector<std::vector<std::string>> rows;
  Json items = Json::array();
  for (PlexoIndex at = 0; at < definition.GetCount(); ++at) {
    const PlexoActivityNode& node = definition.Get(at);
    if (!node.rules.isVisible) continue;
    const PlexoProspect& choice = outlook.choices[at];
    const std::string mark = at == state.current ? "> " : "  ";
    rows.push_back({mark + std::string(std::size_t{2} * node.depth, ' ') + PlayWords::Name(definition, at),
                    Say(tracking.GetCompleted(at), "completed", "incomplete"),
                    Say(tracking.GetSatisfied(at), "passed", "failed"),
                    choice.IsOpen() ? "open" : WriteProspect(outlook, choice)});
    Json item = {{"id", node.rules.identifier},
                 {"title", node.rules.title},
                 {"depth", node.depth},
                 {"current", at == state.current},
                 {"completed", PlayWords::Describe(tracking.GetCompleted(at))},
                 {"satisfied", PlayWords::Describe(tracking.GetSatisfied(at))}};
    item.update(PlayWords::Describe(definition, outlook, choice));
    items.push_back(std::move(item));
  }
  PlayAnswer answer;
  answer.text = AlignColumns(rows);
  answer.text.push_back("continue: " + WriteProspect(outlook, outlook.onContinue));
  answer.text.push_back("previous: " + WriteProspect(outlook, outlook.onPrevious));
  const auto hidden = outlook.current != kPlexoNone
                          ? ListHidden(definition.GetRules(outlook.current).hiddenControls)
                          : std::vector<std::string>();
  if (!hidden.empty()) {
    std::string list;
    for (const std::string& control : hidden) list += (list.empty() ? "" : ", ") + control;
    answer.text.push_back("hidden controls of the LMS: " + list);
  }
  if (outlook.redirect != PlexoSequencingRequest::None) {
    answer.text.push_back("whatever is asked, a postcondition rule makes it: " +
                          std::string(PlayWords::Write(outlook.redirect)));
  }
  answer.fields = {{"toc", std::move(items)},
                   {"continue", PlayWords::Describe(definition, outlook, outlook.onContinue)},
                   {"previous", PlayWords::Describe(definition, outlook, outlook.onPrevious)},
                   {"hidden", hidden},
                   {"redirect", PlayWords::Write(outlook.redirect)}};
  return answer;
}

std::string PlayViews::WriteFlags(PlexoIndex activity) const {
  const PlexoActivityState& at = state.activities[activity];
  std::string flags;
  const auto add = [&flags](bool isSet, const char* name) {
    if (isSet) flags += (flags.empty() ? "" : ", ") + std::string(name);
  };
  add(activity == state.current, "current");
  add(at.isActive, "active");
  add(at.isSuspended, "suspended");
  add(!definition.GetRules(activity).delivery.tracked, "not tracked");
  add(!definition.GetRules(activity).isVisible, "invisible");
  return flags;
}

Json PlayViews::DescribeTracking(PlexoIndex activity) const {
  const PlexoTrackingView tracking(definition, state);
  const PlexoActivityNode& node = definition.Get(activity);
  const PlexoActivityState& at = state.activities[activity];
  Json objectives = Json::array();
  for (PlexoIndex index = 1; index < node.rules.objectives.size(); ++index) {
    objectives.push_back({{"id", node.rules.objectives[index].identifier},
                          {"satisfied", PlayWords::Describe(tracking.GetSatisfied(activity, index))},
                          {"measure", PlayWords::Describe(tracking.GetMeasure(activity, index))}});
  }
  return {{"id", node.rules.identifier},
          {"title", node.rules.title},
          {"depth", node.depth},
          {"completed", PlayWords::Describe(tracking.GetCompleted(activity))},
          {"satisfied", PlayWords::Describe(tracking.GetSatisfied(activity))},
          {"measure", PlayWords::Describe(tracking.GetMeasure(activity))},
          {"progress", PlayWords::Describe(tracking.GetProgress(activity))},
          {"attempts", at.attemptCount},
          {"current", activity == state.current},
          {"active", at.isActive},
          {"suspended", at.isSuspended},
          {"objectives", std::move(objectives)}};
}

PlayAnswer PlayViews::ShowTree() const {
  const PlexoTrackingView tracking(definition, state);
  std::vector<std::vector<std::string>> rows = {
      {"", "completed", "satisfied", "measure", "progress", "attempts"}};
  Json activities = Json::array();
  for (PlexoIndex at = 0; at < definition.GetCount(); ++at) {
    const PlexoActivityNode& node = definition.Get(at);
    const std::string indent(std::size_t{2} * node.depth, ' ');
    rows.push_back({indent + PlayWords::Name(definition, at), PlayWords::Write(tracking.GetCompleted(at)),
                    PlayWords::Write(tracking.GetSatisfied(at)), WriteBriefly(tracking.GetMeasure(at)),
                    WriteBriefly(tracking.GetProgress(at)), std::to_string(state.activities[at].attemptCount),
                    WriteFlags(at)});
    for (PlexoIndex index = 1; index < node.rules.objectives.size(); ++index) {
      rows.push_back({indent + "  objective '" + node.rules.objectives[index].identifier + "'", "",
                      PlayWords::Write(tracking.GetSatisfied(at, index)),
                      WriteBriefly(tracking.GetMeasure(at, index))});
    }
    activities.push_back(DescribeTracking(at));
  }
  return {AlignColumns(rows), {{"tree", std::move(activities)}}, true, {}};
}

PlayAnswer PlayViews::ShowGlobals() const {
  std::vector<std::vector<std::string>> rows = {{"", "satisfied", "measure", "completed", "progress"}};
  Json list = Json::array();
  for (std::size_t at = 0; at < definition.GetGlobals().size(); ++at) {
    const PlexoObjectiveState& global = state.globals[at];
    const std::string& identifier = definition.GetGlobals()[at];
    rows.push_back({identifier, PlayWords::Write(global.satisfied), WriteBriefly(global.measure),
                    PlayWords::Write(global.completed), WriteBriefly(global.progress)});
    list.push_back({{"id", identifier},
                    {"satisfied", PlayWords::Describe(global.satisfied)},
                    {"measure", PlayWords::Describe(global.measure)},
                    {"completed", PlayWords::Describe(global.completed)},
                    {"progress", PlayWords::Describe(global.progress)},
                    {"raw", PlayWords::Describe(global.rawScore)},
                    {"min", PlayWords::Describe(global.minScore)},
                    {"max", PlayWords::Describe(global.maxScore)}});
  }
  const bool hasAny = !list.empty();
  return {hasAny ? AlignColumns(rows) : std::vector<std::string>{"the course has no global objectives"},
          {{"globals", std::move(list)}},
          true,
          {}};
}

PlayAnswer PlayViews::Explain(const PlexoNavigationRequest& request) const {
  const PlexoOutlook outlook = sequencer.Look(state);
  const PlexoProspect& prospect = Get(outlook, request);
  PlayAnswer answer;
  answer.text.push_back(WriteProspect(outlook, prospect));
  answer.fields = PlayWords::Describe(definition, outlook, prospect);
  Json conditions = Json::array();
  for (const PlexoSeenCondition& seen :
       PlexoReasonText::GetSeenConditions(definition, outlook.seen, prospect.reason)) {
    conditions.push_back({{"condition", PlexoReasonText::GetName(seen.condition.condition)},
                          {"not", seen.condition.isNegated},
                          {"objective", seen.condition.referencedObjective},
                          {"result", PlayWords::Describe(seen.result)},
                          {"measure", PlayWords::Describe(seen.measure)}});
  }
  answer.fields["conditions"] = std::move(conditions);
  return answer;
}
