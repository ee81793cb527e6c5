// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "sequencer/PlexoSequencingDefinition.h"

/// Why a definition can't be built.
enum class PlexoDefinitionFault : std::uint8_t {
  None,
  NoActivity,
  SecondRoot,
  ActivityNotClosed,
  NothingToClose,
  TooDeep,
  TooManyActivities,
  TooManyParts,
  TooLongText,
  NotANumber,
  NumberOutOfRange,
};

/// Makes a definition of what a reader finds in a manifest, activity by activity in document order:
///
///   PlexoDefinitionBuilder builder(PlexoSequencingEdition::Third);
///   builder.Open(organization);
///   builder.Open(item);
///   builder.Close();
///   builder.Close();
///   auto definition = builder.Build();
///
/// What it is given may be hostile. After the first fault it takes no more and builds nothing; the fault and
/// the activity that has it stay available. It corrects nothing: a reader that wants to play a manifest with
/// a number out of range replaces the number, and says so.
///
/// Allowed are a measure weight and a progress weight from 0 to 1 000 000 (only their proportions count),
/// measures and thresholds from -1 to 1, percentages and amounts of progress from 0 to 1, texts up to 65 535
/// bytes.
class PlexoDefinitionBuilder {
 public:
  explicit PlexoDefinitionBuilder(PlexoSequencingEdition edition);
  ~PlexoDefinitionBuilder();
  PlexoDefinitionBuilder(const PlexoDefinitionBuilder&) = delete;
  PlexoDefinitionBuilder& operator=(const PlexoDefinitionBuilder&) = delete;

  void SetGlobalsForSystem(bool areGlobalsForSystem);
  /// Begins an activity, the first as the root, others as the last child of the one that is open. Returns its
  /// index.
  PlexoIndex Open(PlexoActivityRules rules);
  /// Ends the activity that was begun last.
  void Close();
  /// Null on a fault. The builder is empty afterwards.
  [[nodiscard]] std::shared_ptr<const PlexoSequencingDefinition> Build();

  [[nodiscard]] PlexoDefinitionFault GetFault() const { return fault; }
  /// The index of the activity with the fault; kPlexoNone if it concerns none.
  [[nodiscard]] PlexoIndex GetFaultyActivity() const { return faultyActivity; }
  /// "a number is out of its range", in the words of a message's second half.
  [[nodiscard]] static std::string_view GetText(PlexoDefinitionFault fault);

 private:
  void Fail(PlexoDefinitionFault reason, PlexoIndex activity);
  void CountParts(const PlexoActivityRules& rules);
  void ResolveNames();
  void LinkChildren();
  void LinkReaders();
  void SortActivities();

  std::shared_ptr<PlexoSequencingDefinition> definition;
  std::vector<PlexoIndex> open;
  std::uint64_t parts = 0;
  PlexoDefinitionFault fault = PlexoDefinitionFault::None;
  PlexoIndex faultyActivity = kPlexoNone;
};
