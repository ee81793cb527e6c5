// SPDX-License-Identifier: Apache-2.0
#include "sequencer/PlexoOutlookSurvey.h"

#include <utility>

#include "sequencer/PlexoChoiceProcesses.h"
#include "sequencer/PlexoDeliveryProcesses.h"
#include "sequencer/PlexoNavigationProcesses.h"
#include "sequencer/PlexoSequencingProcesses.h"
#include "sequencer/PlexoTerminationProcesses.h"
#include "sequencer/PlexoUtilityProcesses.h"

namespace {

using Code = PlexoSequencingException;
using Kind = PlexoReasonKind;

bool IsObstacle(const PlexoProspect& prospect) { return prospect.reason.kind != Kind::None; }

PlexoProspect Refuse(Code code, Kind kind, PlexoIndex activity, PlexoIndex rule = kPlexoNone) {
  return {code, {kind, activity, rule}};
}

}  // namespace

PlexoOutlookSurvey::PlexoOutlookSurvey(const PlexoSequencingDefinition& course,
                                       const PlexoSequencingState& state)
    : original(state), run(course, outlook.seen, nullptr) {
  outlook.seen = state;
  outlook.current = state.current;
}

PlexoOutlook PlexoOutlookSurvey::Make() {
  NoteWayUp();
  const auto planContinue = PlexoNavigationProcesses::Plan(run, {PlexoNavigation::Continue});
  const PlexoProspect noContinue = GetRefusal();
  const auto planPrevious = PlexoNavigationProcesses::Plan(run, {PlexoNavigation::Previous});
  const PlexoProspect noPrevious = GetRefusal();
  isEnded = EndCurrent();
  current = outlook.seen.current;
  if (isEnded) {
    nodes.resize(run.definition.GetCount());
    NoteSiblings();
    WalkDown();
    WalkFlowsBack();
  }
  for (PlexoIndex target = 0; target < run.definition.GetCount(); ++target)
    outlook.choices.push_back(Judge(target));
  outlook.onContinue = Step(planContinue, noContinue);
  outlook.onPrevious = Step(planPrevious, noPrevious);
  return std::move(outlook);
}

bool PlexoOutlookSurvey::EndCurrent() {
  if (original.current == kPlexoNone || !run.At(original.current).isActive) return true;
  const PlexoTerminationResult ended = PlexoTerminationProcesses::Terminate(run, PlexoTermination::Exit);
  outlook.redirect = ended.sequencing;
  if (!ended.isValid) failedEnd = GetRefusal();
  return ended.isValid;
}

/// Before the end of the attempt, for the navigation request process looks at what is active then.
void PlexoOutlookSurvey::NoteWayUp() {
  for (PlexoIndex at = original.current; at != kPlexoNone; at = run.GetParent(at)) {
    if (closedActive == kPlexoNone && run.At(at).isActive && !run.GetControls(at).choiceExit)
      closedActive = at;
  }
}

void PlexoOutlookSurvey::NoteSiblings() {
  for (PlexoIndex at = current; at != kPlexoNone; at = run.GetParent(at)) {
    if (closed == kPlexoNone && !run.GetControls(at).choiceExit) closed = at;
    if (constrained == kPlexoNone && run.GetRules(at).constrainChoice) constrained = at;
  }
  if (constrained != kPlexoNone) {
    consideredForward = PlexoChoiceProcesses::FindConsidered(run, constrained, PlexoDirection::Forward);
    consideredBackward = PlexoChoiceProcesses::FindConsidered(run, constrained, PlexoDirection::Backward);
  }
  if (current == kPlexoNone || current == 0) return;
  for (PlexoIndex at = current; at != kPlexoNone; at = run.GetNext(at)) {
    const PlexoIndex stop = PlexoUtilityProcesses::FindRule(run, at, {PlexoRuleAction::StopForwardTraversal});
    if (stop == kPlexoNone) continue;
    stoppingSibling = at;
    siblingStop = Refuse(Code::SB_2_4_1, Kind::RuleStopsForward, at, stop);
    return;
  }
}

/// In preorder of the available tree; what isn't available is entered last, only to be refused.
void PlexoOutlookSurvey::WalkDown() {
  visited.reserve(nodes.size());
  std::vector<PlexoIndex> ahead{0};
  while (!ahead.empty()) {
    const PlexoIndex activity = ahead.back();
    ahead.pop_back();
    nodes[activity].order = static_cast<PlexoIndex>(visited.size());
    visited.push_back(activity);
    Enter(activity);
    const auto children = run.GetAvailableChildren(activity);
    ahead.insert(ahead.end(), children.rbegin(), children.rend());
  }
  for (PlexoIndex activity = 0; activity < nodes.size(); ++activity) {
    if (nodes[activity].order == kPlexoNone) Enter(activity);
  }
}

void PlexoOutlookSurvey::Enter(PlexoIndex activity) {
  Node& node = nodes[activity];
  const PlexoIndex parent = run.GetParent(activity);
  const bool holdsCurrent = current != kPlexoNone && run.definition.Holds(activity, current);
  if (parent != kPlexoNone) {
    const Node& above = nodes[parent];
    node.path = above.path;
    node.delivery = above.delivery;
    node.common = holdsCurrent ? activity : above.common;
    node.after = run.GetNext(activity) != kPlexoNone ? run.GetNext(activity) : above.after;
    if (node.common != activity) {
      node.descentForward = above.descentForward;
      node.descentBackward = above.descentBackward;
    }
  } else {
    node.common = 0;
  }
  if (!IsObstacle(node.path)) {
    const PlexoIndex hide =
        PlexoUtilityProcesses::FindRule(run, activity, {PlexoRuleAction::HiddenFromChoice});
    if (!run.IsAvailable(activity))
      node.path = Refuse(Code::SB_2_9_2, Kind::NotSelected, activity);
    else if (hide != kPlexoNone)
      node.path = Refuse(Code::SB_2_9_3, Kind::RuleHides, activity, hide);
  }
  if (!IsObstacle(node.delivery) && !PlexoUtilityProcesses::IsAllowed(run, activity, Code::DB_1_1_3))
    node.delivery = GetRefusal();
  if (run.IsLeaf(activity)) return;
  const PlexoIndex stop =
      PlexoUtilityProcesses::FindRule(run, activity, {PlexoRuleAction::StopForwardTraversal});
  const bool isPrevented =
      !run.At(activity).isActive && activity != node.common && run.GetRules(activity).preventActivation;
  const PlexoProspect prevented =
      isPrevented ? Refuse(Code::SB_2_9_6, Kind::ActivationPrevented, activity) : PlexoProspect();
  if (!IsObstacle(node.descentBackward)) node.descentBackward = prevented;
  if (!IsObstacle(node.descentForward))
    node.descentForward =
        stop != kPlexoNone ? Refuse(Code::SB_2_4_1, Kind::RuleStopsForward, activity, stop) : prevented;
}

/// From the last activity to the first: a flow goes forward only.
void PlexoOutlookSurvey::WalkFlowsBack() {
  for (auto at = visited.rbegin(); at != visited.rend() && *at != 0; ++at) {
    const PlexoIndex activity = *at;
    Node& node = nodes[activity];
    const PlexoIndex parent = run.GetParent(activity);
    if (!run.GetControls(parent).flow) {
      node.flow = Refuse(Code::SB_2_2_1, Kind::FlowOff, parent);
    } else if (PlexoUtilityProcesses::FindRule(run, activity, {PlexoRuleAction::Skip}) != kPlexoNone) {
      node.flow = node.after != kPlexoNone ? nodes[node.after].flow
                                           : Refuse(Code::None, Kind::EndOfCourse, kPlexoNone);
    } else if (!PlexoUtilityProcesses::IsAllowed(run, activity, Code::SB_2_2_2)) {
      node.flow = GetRefusal();
    } else if (run.IsLeaf(activity)) {
      node.flow.delivers = activity;
    } else {
      node.flow = GetFlowInto(activity);
    }
  }
}

PlexoProspect PlexoOutlookSurvey::GetFlowInto(PlexoIndex cluster) const {
  const PlexoIndex first = run.GetFirst(cluster);
  if (first != kPlexoNone) return nodes[first].flow;
  return run.IsLastInTree(cluster) ? Refuse(Code::None, Kind::EndOfCourse, kPlexoNone)
                                   : Refuse(Code::SB_2_1_2, Kind::NoChildren, cluster);
}

PlexoProspect PlexoOutlookSurvey::Judge(PlexoIndex target) const {
  if (const PlexoProspect obstacle = FindNavigationObstacle(target); IsObstacle(obstacle)) return obstacle;
  if (!isEnded) return failedEnd;
  if (IsObstacle(nodes[target].path)) return nodes[target].path;
  if (const PlexoProspect obstacle = FindObstacleByPlace(target); IsObstacle(obstacle)) return obstacle;
  PlexoIndex delivered = target;
  if (!run.IsLeaf(target)) {
    const PlexoProspect flow = GetFlowInto(target);
    if (!flow.IsOpen()) return {Code::SB_2_9_9, flow.reason};
    delivered = flow.delivers;
  }
  if (IsObstacle(nodes[delivered].delivery)) return nodes[delivered].delivery;
  return {Code::None, {}, delivered};
}

PlexoProspect PlexoOutlookSurvey::FindNavigationObstacle(PlexoIndex target) const {
  const PlexoIndex parent = run.GetParent(target);
  if (parent != kPlexoNone && !run.GetControls(parent).choice)
    return Refuse(Code::NB_2_1_10, Kind::ChoiceOff, parent);
  const bool leavesClosed = closedActive != kPlexoNone &&
                            (closedActive == original.current || !run.definition.Holds(closedActive, target));
  return leavesClosed ? Refuse(Code::NB_2_1_8, Kind::ChoiceExitOff, closedActive) : PlexoProspect();
}

PlexoProspect PlexoOutlookSurvey::FindObstacleByPlace(PlexoIndex target) const {
  const PlexoIndex parent = run.GetParent(target);
  const PlexoIndex common = nodes[target].common;
  if (current == target) return {};
  if (current != kPlexoNone && current != 0 && target != 0 && parent == run.GetParent(current)) {
    const bool isForward = nodes[target].order > nodes[current].order;
    if (isForward && stoppingSibling != kPlexoNone && nodes[stoppingSibling].order < nodes[target].order)
      return siblingStop;
    if (!isForward && run.GetControls(parent).forwardOnly)
      return Refuse(Code::SB_2_4_2, Kind::ForwardOnly, parent);
    return {};
  }
  if (current == kPlexoNone || current == common)
    return target == common ? PlexoProspect() : nodes[parent].descentForward;
  if (closed != kPlexoNone && !run.definition.Holds(closed, common))
    return Refuse(Code::SB_2_9_7, Kind::ChoiceExitOff, closed);
  if (target == common) return {};
  if (const PlexoProspect constraint = FindConstraint(target); IsObstacle(constraint)) return constraint;
  const bool isForward = nodes[target].order > nodes[current].order;
  return isForward ? nodes[parent].descentForward : nodes[parent].descentBackward;
}

PlexoProspect PlexoOutlookSurvey::FindConstraint(PlexoIndex target) const {
  if (constrained == kPlexoNone || run.definition.Holds(constrained, target)) return {};
  const bool isForward = nodes[target].order > nodes[constrained].order;
  const PlexoIndex considered = isForward ? consideredForward : consideredBackward;
  if (run.definition.Holds(considered, target)) return {};
  return Refuse(Code::SB_2_9_8, Kind::ChoiceConstrained, constrained);
}

/// Continue or Previous, planned before the end of the attempt and taken after it.
PlexoProspect PlexoOutlookSurvey::Step(const PlexoNavigationPlan& plan, const PlexoProspect& refusal) const {
  if (!plan.isValid) return refusal;
  if (!isEnded) return failedEnd;
  PlexoSequencingState after = outlook.seen;
  PlexoSequencingRun stepping(run.definition, after, nullptr);
  const PlexoIndex delivery =
      PlexoSequencingProcesses::Process(stepping, plan.sequencing, kPlexoNone).delivery;
  if (delivery == kPlexoNone || !PlexoDeliveryProcesses::CanDeliver(stepping, delivery))
    return {stepping.exception, stepping.reason};
  return {Code::None, {}, delivery};
}
