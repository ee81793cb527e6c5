// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "sequencer/PlexoSequencingException.h"
#include "sequencer/PlexoSequencingRules.h"

/// The processes of the book, in its order.
enum class PlexoProcess : std::uint8_t {
  OverallSequencing,
  NavigationRequest,
  SequencingExitActionRules,
  SequencingPostConditionRules,
  TerminationRequest,
  MeasureRollup,
  CompletionMeasureRollup,
  ObjectiveRollupUsingMeasure,
  ObjectiveRollupUsingRules,
  ActivityProgressRollupUsingMeasure,
  ActivityProgressRollupUsingRules,
  RollupRuleCheck,
  OverallRollup,
  SelectChildren,
  RandomizeChildren,
  FlowTreeTraversal,
  FlowActivityTraversal,
  Flow,
  ChoiceActivityTraversal,
  StartSequencingRequest,
  ResumeAllSequencingRequest,
  ContinueSequencingRequest,
  PreviousSequencingRequest,
  ChoiceSequencingRequest,
  ChoiceFlow,
  RetrySequencingRequest,
  ExitSequencingRequest,
  SequencingRequest,
  JumpSequencingRequest,
  DeliveryRequest,
  ContentDeliveryEnvironment,
  ClearSuspendedActivity,
  LimitConditionsCheck,
  SequencingRulesCheck,
  TerminateDescendentAttempts,
  EndAttempt,
  CheckActivity,
};

/// One process that ran: on which activity, and what came of it.
struct PlexoTraceStep {
  PlexoProcess process = PlexoProcess::OverallSequencing;
  /// kPlexoNone if it concerns none.
  PlexoIndex activity = kPlexoNone;
  /// The rule that applied, of sequencing or of rollup as the process is; kPlexoNone if none did.
  PlexoIndex rule = kPlexoNone;
  PlexoSequencingException exception = PlexoSequencingException::None;

  friend bool operator==(const PlexoTraceStep&, const PlexoTraceStep&) = default;
};

/// The processes that one request passed, in the order in which they began. It holds at most kMaxSteps; what
/// comes after is counted only.
class PlexoSequencingTrace {
 public:
  static constexpr std::size_t kMaxSteps = 100'000;

  /// Notes that a process begins, and returns the step's number for End.
  std::size_t Begin(PlexoProcess process, PlexoIndex activity);
  void End(std::size_t step, PlexoSequencingException exception, PlexoIndex rule = kPlexoNone);
  [[nodiscard]] const std::vector<PlexoTraceStep>& GetSteps() const { return steps; }
  [[nodiscard]] std::size_t GetDropped() const { return dropped; }
  void Clear();

  /// "Flow Activity Traversal Subprocess" and "SB.2.2".
  [[nodiscard]] static std::string_view GetName(PlexoProcess process);
  [[nodiscard]] static std::string_view GetNumber(PlexoProcess process);

 private:
  std::vector<PlexoTraceStep> steps;
  std::size_t dropped = 0;
};
