// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

#include "sequencer/PlexoNavigation.h"
#include "sequencer/PlexoSequencingState.h"

/// What one request would come to.
struct PlexoProspect {
  /// None if the request would deliver content.
  PlexoSequencingException exception = PlexoSequencingException::None;
  PlexoSequencingReason reason;
  PlexoIndex delivers = kPlexoNone;

  [[nodiscard]] bool IsOpen() const { return delivers != kPlexoNone; }
  friend bool operator==(const PlexoProspect&, const PlexoProspect&) = default;
};

/// What a learner may do next: for every activity whether it may be chosen, and for Continue and Previous
/// what they deliver. It is made in one walk over the tree.
///
/// A request first ends the attempt on the current activity, which changes statuses, so everything here is
/// seen from the state after that end. Where a postcondition rule of the current activity would then put a
/// request of its own in place of the learner's, the prospects say what the learner's would have come to, and
/// "redirect" what happens instead.
struct PlexoOutlook {
  /// One an activity.
  std::vector<PlexoProspect> choices;
  PlexoProspect onContinue;
  PlexoProspect onPrevious;
  /// None if the learner's own request is processed.
  PlexoSequencingRequest redirect = PlexoSequencingRequest::None;
  /// The activity that was current, for its hidden controls; kPlexoNone outside a session.
  PlexoIndex current = kPlexoNone;
  /// The state that the rules were seen in, for PlexoReasonText.
  PlexoSequencingState seen;
};
