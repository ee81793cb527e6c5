// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>

#include "sequencer/PlexoOutlook.h"

/// What a learner can't do any more.
class PlexoStandstill {
 public:
  /// True if nothing in the contents list can be chosen. The standard lets the course itself be chosen, but
  /// no LMS lists it.
  [[nodiscard]] static bool IsListClosed(const PlexoOutlook& outlook) {
    return std::none_of(outlook.choices.begin() + 1, outlook.choices.end(),
                        [](const PlexoProspect& choice) { return choice.IsOpen(); });
  }
  /// True if no request of the learner launches anything in this session. A course that was gone through to
  /// its last activity has ended, and doesn't stand still.
  [[nodiscard]] static bool IsIn(const PlexoOutlook& outlook) {
    return outlook.redirect == PlexoSequencingRequest::None && !outlook.onContinue.IsOpen() &&
           !outlook.onPrevious.IsOpen() && outlook.onContinue.reason.kind != PlexoReasonKind::EndOfCourse &&
           IsListClosed(outlook);
  }
};
