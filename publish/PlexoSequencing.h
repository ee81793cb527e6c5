// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "publish/PlexoIdentifiers.h"
#include "publish/PlexoManifestTree.h"

/// The fragments of IMS Simple Sequencing 1.0 that courses are built from, and their values. Numbers of the
/// enumerations are those of the tables that the fragments are written by.
///
/// The children of an `imsss:sequencing` are always written in the schema's order: controlMode,
/// sequencingRules, rollupRules, objectives, deliveryControls.

enum class ChildActivitySet : std::uint32_t { All = 0, Any = 1, None = 2 };
enum class RollupOperator : std::uint32_t { Plain = 0, Not = 3 };
enum class RollupCondition : std::uint32_t {
  Satisfied = 0,
  ObjectiveStatusKnown = 1,
  ActivityProgressKnown = 3,
  Completed = 6
};
enum class RollupAction : std::uint32_t { Satisfied = 0, NotSatisfied = 1, Completed = 2, Incomplete = 3 };

/// "If <set> of the children are <operator> <condition>, the activity is <action>."
struct RollupRule {
  ChildActivitySet set;
  RollupOperator conditionOperator;
  RollupCondition condition;
  RollupAction action;
};

/// Whether an objective is satisfied by its measure; `Unsaid` leaves the standard's default.
enum class MeasureMode : std::uint32_t { False = 0, True = 1, Unsaid = 2 };

/// Which status goes between a local objective and a global one.
struct MapFlags {
  bool readSatisfied;
  bool readNormalized;
  bool writeSatisfied;
  bool writeNormalized;
};

inline constexpr MapFlags kReadMap{true, true, false, false};
inline constexpr MapFlags kSatisfiedOnlyReadMap{true, false, false, false};
inline constexpr MapFlags kMeasureOnlyReadMap{false, true, false, false};
inline constexpr MapFlags kWriteMap{true, true, true, true};
inline constexpr MapFlags kWriteOnlyMap{false, false, true, true};
inline constexpr MapFlags kSatisfiedWriteMap{true, true, true, false};

/// Which of a rule's conditions must hold, and one of them. An empty operator or objective is left out; the
/// standard then takes the condition as it is, and the activity's own objective.
enum class ConditionCombination : std::uint32_t { AllOf, AnyOf };

struct RuleCondition {
  std::string_view conditionOperator;
  std::string_view condition;
  TzString referencedObjective;
};

/// What an activity does when a rule's conditions hold: before it is tried, or after it ended.
enum class RuleMoment : std::uint32_t { PreCondition, PostCondition };

/// What an activity adds to the rollup of its parent.
struct RollupShare {
  bool objectiveSatisfied;
  bool progressCompletion;
  TzString measureWeight;
};

/// How learners may move among an activity's children.
struct ControlMode {
  bool forwardOnly;
  bool choice;
};

enum class ObjectiveRank { Primary, Other };

/// Writes the fragments into a manifest.
class PlexoSequencing {
 public:
  explicit PlexoSequencing(PlexoManifestTree& manifestTree) : tree(manifestTree) {}

  /// An objective under `imsss:objectives`.
  TzDOMNode WriteObjective(TzDOMNode objectives, ObjectiveRank rank, const TzString& objectiveId,
                           MeasureMode mode);
  /// A map of an objective to a global one. Flags at the standard's default write no attribute.
  TzDOMNode WriteMapInfo(TzDOMNode objective, const TzString& targetObjectiveId, const MapFlags& flags);
  void WriteRollupRule(TzDOMNode rollupRules, const RollupRule& rule);
  void WriteRollupRules(TzDOMNode sequencing, std::span<const RollupRule> rules);
  void WriteRollupRules(TzDOMNode sequencing, const RollupShare& share, std::span<const RollupRule> rules);
  /// A rule under `imsss:sequencingRules`.
  void WriteRule(TzDOMNode sequencingRules, RuleMoment moment, ConditionCombination combination,
                 std::span<const RuleCondition> conditions, std::string_view action);
  /// Keeps the activity disabled until the status of the one before it, its objective "obj-prior", is known.
  void WriteForcedPriorRule(TzDOMNode sequencing);
  /// Flow and leaving by choice are always on.
  void WriteControlMode(TzDOMNode sequencing, const ControlMode& mode);
  /// Free choice and flow, everything else at the standard's default.
  void WriteFreeControlMode(TzDOMNode sequencing);
  /// Leaves completion and satisfaction to the content.
  void WriteDeliveryControls(TzDOMNode sequencing);

  /// The sequencing of one item of a flat course, or of one content of a module whose content is taken in
  /// order. If forced, its objective is global, and every item but the first waits for the one before it.
  void WriteItemSequencing(TzDOMNode item, bool forced, std::uint32_t index, std::uint32_t moduleIndex,
                           ItemKind kind);

 private:
  PlexoManifestTree& tree;
};
