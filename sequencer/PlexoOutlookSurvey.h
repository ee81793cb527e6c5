// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

#include "sequencer/PlexoNavigationProcesses.h"
#include "sequencer/PlexoOutlook.h"
#include "sequencer/PlexoSequencingRun.h"

/// Makes an outlook: what PlexoNavigationProcesses, PlexoChoiceProcesses, PlexoFlowProcesses and
/// PlexoDeliveryProcesses would say to a choice of every activity. Asking them one by one would walk the tree
/// once an activity. The survey walks it once: what ancestors say is handed down, what a flow meets is handed
/// from the activities behind to those before.
class PlexoOutlookSurvey {
 public:
  PlexoOutlookSurvey(const PlexoSequencingDefinition& course, const PlexoSequencingState& state);
  [[nodiscard]] PlexoOutlook Make();

 private:
  /// What the walk down the tree has found for one activity.
  struct Node {
    /// The path from the root: not available, or hidden.
    PlexoProspect path;
    /// Disabled on the path from the root, as a delivery would find it.
    PlexoProspect delivery;
    /// What it has in common with the current activity.
    PlexoIndex common = kPlexoNone;
    /// From the common ancestor down to here, inclusive: what stops a descent, forward and backward.
    PlexoProspect descentForward;
    PlexoProspect descentBackward;
    /// Its place in a forward preorder traversal of the available tree.
    PlexoIndex order = kPlexoNone;
    /// Where a flow goes on that passes it by.
    PlexoIndex after = kPlexoNone;
    /// Where a forward flow that enters it ends.
    PlexoProspect flow;
  };

  /// Ends the attempt on the current activity, as a request does first. False if the termination itself
  /// fails.
  [[nodiscard]] bool EndCurrent();
  void NoteWayUp();
  void NoteSiblings();
  void WalkDown();
  void Enter(PlexoIndex activity);
  void WalkFlowsBack();
  [[nodiscard]] PlexoProspect GetFlowInto(PlexoIndex cluster) const;
  [[nodiscard]] PlexoProspect Judge(PlexoIndex target) const;
  /// What the navigation request process says, before anything ends.
  [[nodiscard]] PlexoProspect FindNavigationObstacle(PlexoIndex target) const;
  [[nodiscard]] PlexoProspect FindObstacleByPlace(PlexoIndex target) const;
  [[nodiscard]] PlexoProspect FindConstraint(PlexoIndex target) const;
  [[nodiscard]] PlexoProspect Step(const PlexoNavigationPlan& plan, const PlexoProspect& refusal) const;
  [[nodiscard]] PlexoProspect GetRefusal() const { return {run.exception, run.reason}; }

  const PlexoSequencingState& original;
  PlexoOutlook outlook;
  PlexoSequencingRun run;
  std::vector<Node> nodes;
  std::vector<PlexoIndex> visited;
  /// The current activity after the end of its attempt; kPlexoNone outside a session.
  PlexoIndex current = kPlexoNone;
  bool isEnded = false;
  PlexoProspect failedEnd;
  /// The lowest activities on the way up from the current one that can't be left: the first before its
  /// attempt ends because it is active, the second at any time; and the lowest that constrains choice.
  PlexoIndex closedActive = kPlexoNone;
  PlexoIndex closed = kPlexoNone;
  PlexoIndex constrained = kPlexoNone;
  PlexoIndex consideredForward = kPlexoNone;
  PlexoIndex consideredBackward = kPlexoNone;
  /// The first sibling from the current activity on that stops a traversal forward.
  PlexoProspect siblingStop;
  PlexoIndex stoppingSibling = kPlexoNone;
};
