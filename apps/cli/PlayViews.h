// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "apps/cli/PlayAnswer.h"
#include "sequencer/PlexoSequencer.h"

/// What `plexo play` shows of a course and a learner in it. Both must outlive the views.
class PlayViews {
 public:
  PlayViews(const PlexoSequencer& course, const PlexoSequencingState& learner)
      : sequencer(course), definition(course.GetDefinition()), state(learner) {}

  /// The table of contents that a learner has: visible activities, their status, what may be chosen, and the
  /// controls of the LMS.
  [[nodiscard]] PlayAnswer ShowContents() const;
  /// Every activity with all that is tracked of it.
  [[nodiscard]] PlayAnswer ShowTree() const;
  [[nodiscard]] PlayAnswer ShowGlobals() const;
  /// Whether a Continue, a Previous or a choice is open; if not, which activity says so and why.
  [[nodiscard]] PlayAnswer Explain(const PlexoNavigationRequest& request) const;

  /// The prospect of one of these requests.
  [[nodiscard]] static const PlexoProspect& Get(const PlexoOutlook& outlook,
                                                const PlexoNavigationRequest& request);

 private:
  [[nodiscard]] std::string WriteProspect(const PlexoOutlook& outlook, const PlexoProspect& prospect) const;
  [[nodiscard]] std::string WriteFlags(PlexoIndex activity) const;
  [[nodiscard]] nlohmann::ordered_json DescribeTracking(PlexoIndex activity) const;

  const PlexoSequencer& sequencer;
  const PlexoSequencingDefinition& definition;
  const PlexoSequencingState& state;
};
