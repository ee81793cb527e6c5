// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// Which activity or objective is meant, as an index.
using PlexoIndex = std::uint32_t;
/// "None", where an index may be missing.
inline constexpr PlexoIndex kPlexoNone = UINT32_MAX;

/// The condition words of sequencing rules and rollup rules, with one table for both (IMS Simple
/// Sequencing 1.0, sections 3.2 and 3.4). A rollup rule uses neither the measure thresholds nor Always.
enum class PlexoCondition : std::uint8_t {
  Satisfied,
  ObjectiveStatusKnown,
  ObjectiveMeasureKnown,
  ObjectiveMeasureGreaterThan,
  ObjectiveMeasureLessThan,
  Completed,
  ActivityProgressKnown,
  Attempted,
  AttemptLimitExceeded,
  /// The engine has no clock, and SCORM requires no limits of time: these two are always unknown.
  TimeLimitExceeded,
  OutsideAvailableTimeRange,
  Always,
};

enum class PlexoCombination : std::uint8_t { All, Any };

/// The actions of precondition, exit and postcondition rules.
enum class PlexoRuleAction : std::uint8_t {
  Skip,
  Disabled,
  HiddenFromChoice,
  StopForwardTraversal,
  Exit,
  ExitParent,
  ExitAll,
  Retry,
  RetryAll,
  Continue,
  Previous,
};

struct PlexoRuleCondition {
  PlexoCondition condition = PlexoCondition::Always;
  bool isNegated = false;
  /// Of the two measure conditions.
  double measureThreshold = 0;
  /// The identifier of an objective of the same activity; empty for its primary objective.
  std::string referencedObjective;
  /// Set by the builder: the objective's index, kPlexoNone if the activity has none of this identifier. A
  /// condition on an objective that doesn't exist is unknown.
  PlexoIndex objective = 0;

  friend bool operator==(const PlexoRuleCondition&, const PlexoRuleCondition&) = default;
};

struct PlexoSequencingRule {
  PlexoRuleAction action = PlexoRuleAction::Skip;
  PlexoCombination combination = PlexoCombination::All;
  /// A rule without conditions never applies.
  std::vector<PlexoRuleCondition> conditions;

  friend bool operator==(const PlexoSequencingRule&, const PlexoSequencingRule&) = default;
};

enum class PlexoChildSet : std::uint8_t { All, Any, None, AtLeastCount, AtLeastPercent };
enum class PlexoRollupAction : std::uint8_t { Satisfied, NotSatisfied, Completed, Incomplete };

struct PlexoRollupCondition {
  PlexoCondition condition = PlexoCondition::Satisfied;
  bool isNegated = false;

  friend bool operator==(const PlexoRollupCondition&, const PlexoRollupCondition&) = default;
};

struct PlexoRollupRule {
  PlexoChildSet childSet = PlexoChildSet::All;
  /// Of AtLeastCount.
  std::uint32_t minimumCount = 0;
  /// Of AtLeastPercent, from 0 to 1.
  double minimumPercent = 0;
  PlexoCombination combination = PlexoCombination::Any;
  std::vector<PlexoRollupCondition> conditions;
  PlexoRollupAction action = PlexoRollupAction::Satisfied;

  friend bool operator==(const PlexoRollupRule&, const PlexoRollupRule&) = default;
};
