// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "sequencer/PlexoSequencingRules.h"
#include "sequencer/PlexoSequencingState.h"

/// What keeps a request from being fulfilled. The order is that of the table of texts.
enum class PlexoReasonKind : std::uint8_t {
  None,
  NoSession,
  SessionOpen,
  NothingSuspended,
  AlreadyTerminated,
  UnknownTarget,
  NotSupported,
  /// The activity isn't among the selected children of its parent.
  NotSelected,
  FlowOff,
  ForwardOnly,
  ChoiceOff,
  /// Its "choiceExit" is off, so that the learner can't choose a way out of it.
  ChoiceExitOff,
  ChoiceConstrained,
  ActivationPrevented,
  RuleSkips,
  RuleDisables,
  RuleHides,
  RuleStopsForward,
  AttemptLimit,
  NoChildren,
  NothingBefore,
  /// Going on past the last activity, which ends the course.
  EndOfCourse,
  NotALeaf,
  StillActive,
};

/// Which activity says no, and by which rule.
struct PlexoSequencingReason {
  PlexoReasonKind kind = PlexoReasonKind::None;
  PlexoIndex activity = kPlexoNone;
  /// The index of one of its sequencing rules; kPlexoNone if no rule says so.
  PlexoIndex rule = kPlexoNone;

  friend bool operator==(const PlexoSequencingReason&, const PlexoSequencingReason&) = default;
};

/// One condition of a rule with what it saw.
struct PlexoSeenCondition {
  PlexoRuleCondition condition;
  /// With the negation applied.
  PlexoTruth result;
  /// Of the measure conditions, and of others on an objective that has a measure.
  PlexoMeasure measure;
  std::uint32_t attemptCount = 0;
};

/// Reasons in words. A pattern has parameters: {activity}, {rule}, {limit}.
class PlexoReasonText {
 public:
  /// "{activity} is disabled: {rule}"
  [[nodiscard]] static std::string_view GetPattern(PlexoReasonKind kind);
  /// The conditions of the reason's rule with the values that they see in a state; none for a reason without
  /// rule.
  [[nodiscard]] static std::vector<PlexoSeenCondition> GetSeenConditions(
      const PlexoSequencingDefinition& definition, const PlexoSequencingState& state,
      const PlexoSequencingReason& reason);
  /// The whole text, with titles (identifiers where there is no title) in 'quotes' and the values seen.
  [[nodiscard]] static std::string Write(const PlexoSequencingDefinition& definition,
                                         const PlexoSequencingState& state,
                                         const PlexoSequencingReason& reason);
  /// A condition word as manifests write it: "objectiveStatusKnown".
  [[nodiscard]] static std::string_view GetName(PlexoCondition condition);
  [[nodiscard]] static std::string_view GetName(PlexoRuleAction action);
};
