// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "sequencer/PlexoSequencingRules.h"

/// The editions of SCORM 2004 that sequence differently. The second is played as the third.
enum class PlexoSequencingEdition : std::uint8_t { Second, Third, Fourth };

struct PlexoControlModes {
  bool choice = true;
  bool choiceExit = true;
  bool flow = false;
  bool forwardOnly = false;
  bool useCurrentAttemptObjectiveInfo = true;
  bool useCurrentAttemptProgressInfo = true;

  friend bool operator==(const PlexoControlModes&, const PlexoControlModes&) = default;
};

/// When a child counts in its parent's rollup (adlseq:rollupConsiderations).
enum class PlexoRequirement : std::uint8_t { Always, IfAttempted, IfNotSkipped, IfNotSuspended };

/// What an activity contributes to its parent's rollup.
struct PlexoRollupControls {
  bool objectiveSatisfied = true;
  bool progressCompletion = true;
  double objectiveMeasureWeight = 1;
  PlexoRequirement requiredForSatisfied = PlexoRequirement::Always;
  PlexoRequirement requiredForNotSatisfied = PlexoRequirement::Always;
  PlexoRequirement requiredForCompleted = PlexoRequirement::Always;
  PlexoRequirement requiredForIncomplete = PlexoRequirement::Always;
  /// Of the activity itself: whether a measure decides satisfaction while the activity is active.
  bool measureSatisfactionIfActive = true;

  friend bool operator==(const PlexoRollupControls&, const PlexoRollupControls&) = default;
};

/// adlcp:completionThreshold. The 3rd Edition knows only the threshold of a SCO; its reader sets isByMeasure
/// and minProgressMeasure.
struct PlexoCompletionThreshold {
  bool isByMeasure = false;
  double minProgressMeasure = 1;
  double progressWeight = 1;

  friend bool operator==(const PlexoCompletionThreshold&, const PlexoCompletionThreshold&) = default;
};

/// What an objective can share with a global one. The first two are imsss:mapInfo, the others the 4th
/// Edition's adlseq:mapInfo.
enum class PlexoSharedValue : std::uint8_t {
  SatisfiedStatus,
  NormalizedMeasure,
  RawScore,
  MinScore,
  MaxScore,
  CompletionStatus,
  ProgressMeasure,
};
inline constexpr std::size_t kPlexoSharedValues = 7;

struct PlexoMapInfo {
  std::string target;
  /// One bit a PlexoSharedValue. As in the schemas, a mapInfo without attributes reads all that its kind can
  /// share and writes nothing: a reader of imsss:mapInfo starts from kStatusAndMeasure, of adlseq:mapInfo
  /// from kAuxiliary.
  std::uint8_t reads = 0;
  std::uint8_t writes = 0;
  /// Set by the builder: the index of the global objective.
  PlexoIndex global = 0;

  static constexpr std::uint8_t kStatusAndMeasure = 0b0000011;
  static constexpr std::uint8_t kAuxiliary = 0b1111100;
  [[nodiscard]] static constexpr std::uint8_t Bit(PlexoSharedValue value) {
    return static_cast<std::uint8_t>(1U << static_cast<unsigned>(value));
  }
  [[nodiscard]] bool Reads(PlexoSharedValue value) const { return (reads & Bit(value)) != 0; }
  [[nodiscard]] bool Writes(PlexoSharedValue value) const { return (writes & Bit(value)) != 0; }

  friend bool operator==(const PlexoMapInfo&, const PlexoMapInfo&) = default;
};

struct PlexoObjectiveDefinition {
  /// May be empty for the primary objective.
  std::string identifier;
  bool isSatisfiedByMeasure = false;
  double minNormalizedMeasure = 1;
  std::vector<PlexoMapInfo> maps;

  friend bool operator==(const PlexoObjectiveDefinition&, const PlexoObjectiveDefinition&) = default;
};

enum class PlexoTiming : std::uint8_t { Never, Once, OnEachNewAttempt };

struct PlexoRandomization {
  PlexoTiming selectionTiming = PlexoTiming::Never;
  /// kPlexoNone: all children.
  std::uint32_t selectCount = kPlexoNone;
  PlexoTiming randomizationTiming = PlexoTiming::Never;
  bool reorderChildren = false;

  friend bool operator==(const PlexoRandomization&, const PlexoRandomization&) = default;
};

struct PlexoDeliveryControls {
  bool tracked = true;
  bool completionSetByContent = false;
  bool objectiveSetByContent = false;

  friend bool operator==(const PlexoDeliveryControls&, const PlexoDeliveryControls&) = default;
};

/// What is hidden of the LMS's navigation while an activity runs, one bit each (adlnav:hideLMSUI).
enum PlexoHiddenControl : std::uint8_t {
  kPlexoHidesPrevious = 1,
  kPlexoHidesContinue = 2,
  kPlexoHidesExit = 4,
  kPlexoHidesExitAll = 8,
  kPlexoHidesAbandon = 16,
  kPlexoHidesAbandonAll = 32,
  kPlexoHidesSuspendAll = 64,
};

/// What a manifest says of one activity. Defaults are those of the standard, so that a reader sets only what
/// the manifest has.
struct PlexoActivityRules {
  std::string identifier;
  std::string title;
  /// The item's "isvisible": whether a table of contents shows it. It doesn't hide its children.
  bool isVisible = true;
  std::uint8_t hiddenControls = 0;
  PlexoControlModes controls;
  bool constrainChoice = false;
  bool preventActivation = false;
  /// In the order of the manifest, all kinds in one list.
  std::vector<PlexoSequencingRule> rules;
  /// kPlexoNone: no limit.
  std::uint32_t attemptLimit = kPlexoNone;
  std::vector<PlexoRollupRule> rollupRules;
  PlexoRollupControls rollup;
  PlexoCompletionThreshold completion;
  /// The primary objective, which contributes to rollup, comes first. The builder adds one without an
  /// identifier to an empty list.
  std::vector<PlexoObjectiveDefinition> objectives;
  PlexoRandomization randomization;
  PlexoDeliveryControls delivery;

  friend bool operator==(const PlexoActivityRules&, const PlexoActivityRules&) = default;
};

/// One activity of the tree: its rules and its place.
struct PlexoActivityNode {
  PlexoActivityRules rules;
  /// kPlexoNone for the root.
  PlexoIndex parent = kPlexoNone;
  /// The index behind the last activity below this one; its own index plus one for a leaf.
  PlexoIndex subtreeEnd = 0;
  /// 0 for the root.
  std::uint32_t depth = 0;
  /// Where its children stand in PlexoSequencingDefinition::GetChildren().
  std::uint32_t firstChildSlot = 0;
  std::uint32_t childCount = 0;
  /// Its own slot there; 0 for the root, which has none.
  std::uint32_t slot = 0;
  /// The place of its first objective among those of all activities.
  std::uint32_t firstObjective = 0;
  /// Whether a child has a condition IfNotSkipped, so that a rollup depends on the children's rules.
  bool hasSkipRequirement = false;

  [[nodiscard]] bool IsLeaf() const { return childCount == 0; }
};

/// The sequencing of one course, as its author wrote it: immutable, and shared by all states of it. Only
/// PlexoDefinitionBuilder makes one, so what is here is sound: indices are in range, numbers finite, the tree
/// no deeper than kMaxDepth.
///
/// Activities lie in one vector in preorder: index 0 is the root, the activities below activity a are those
/// from a + 1 to its subtreeEnd.
class PlexoSequencingDefinition {
 public:
  static constexpr std::uint32_t kMaxDepth = 256;
  static constexpr std::uint32_t kMaxActivities = 200'000;
  /// Of rules, conditions, objectives and maps together.
  static constexpr std::uint32_t kMaxParts = 2'000'000;

  [[nodiscard]] PlexoSequencingEdition GetEdition() const { return edition; }
  /// adlseq:objectivesGlobalToSystem: whether global objectives outlive an attempt on the root.
  [[nodiscard]] bool AreGlobalsForSystem() const { return areGlobalsForSystem; }
  [[nodiscard]] PlexoIndex GetCount() const { return static_cast<PlexoIndex>(activities.size()); }
  [[nodiscard]] const PlexoActivityNode& Get(PlexoIndex activity) const { return activities[activity]; }
  [[nodiscard]] const PlexoActivityRules& GetRules(PlexoIndex activity) const {
    return activities[activity].rules;
  }
  /// The activity of this identifier, the first if several have it; kPlexoNone if there is none.
  [[nodiscard]] PlexoIndex Find(std::string_view identifier) const;
  /// All children in the order of the manifest, whether selected or not.
  [[nodiscard]] std::span<const PlexoIndex> GetChildren(PlexoIndex activity) const;
  [[nodiscard]] std::uint32_t GetObjectiveCount() const { return objectiveCount; }
  /// The index of an objective among the activity's own; kPlexoNone if there is none of this identifier.
  [[nodiscard]] PlexoIndex FindObjective(PlexoIndex activity, std::string_view identifier) const;
  /// The identifiers of the global objectives, each once.
  [[nodiscard]] std::span<const std::string> GetGlobals() const { return globals; }
  /// kPlexoNone if no map names it.
  [[nodiscard]] PlexoIndex FindGlobal(std::string_view identifier) const;
  /// The activities whose primary objective reads a global objective, in preorder: a change of it counts in
  /// the rollup of their parents.
  [[nodiscard]] std::span<const PlexoIndex> GetPrimaryReaders(PlexoIndex global) const;
  /// Whether any cluster selects or reorders its children.
  [[nodiscard]] bool HasRandomization() const { return hasRandomization; }
  /// True for the activity itself and for what lies below it.
  [[nodiscard]] bool Holds(PlexoIndex activity, PlexoIndex other) const {
    return activity <= other && other < activities[activity].subtreeEnd;
  }
  [[nodiscard]] PlexoIndex FindCommonAncestor(PlexoIndex left, PlexoIndex right) const;
  /// Tells courses apart: a stored state fits only the definition that it was made for.
  [[nodiscard]] std::uint64_t GetFingerprint() const { return fingerprint; }

 private:
  friend class PlexoDefinitionBuilder;
  PlexoSequencingDefinition() = default;

  PlexoSequencingEdition edition = PlexoSequencingEdition::Third;
  bool areGlobalsForSystem = true;
  bool hasRandomization = false;
  std::uint32_t objectiveCount = 0;
  std::uint64_t fingerprint = 0;
  std::vector<PlexoActivityNode> activities;
  std::vector<PlexoIndex> children;
  std::vector<std::string> globals;
  /// The primary readers of all globals one after another; those of global g from readerStarts[g] on.
  std::vector<PlexoIndex> readers;
  std::vector<std::uint32_t> readerStarts;
  /// Activities and globals sorted by identifier.
  std::vector<PlexoIndex> activitiesByName;
  std::vector<PlexoIndex> globalsByName;
};
