// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "sequencer/PlexoSequencingDefinition.h"
#include "sequencer/PlexoSequencingReason.h"
#include "sequencer/PlexoSequencingState.h"
#include "sequencer/PlexoSequencingTrace.h"

/// One call of the sequencer under way: the course, the state that it changes, and what the processes tell
/// each other. It knows the tree as it is for this learner: the available children in their order.
class PlexoSequencingRun {
 public:
  PlexoSequencingRun(const PlexoSequencingDefinition& course, PlexoSequencingState& learner,
                     PlexoSequencingTrace* stepsOrNull)
      : definition(course), state(learner), trace(stepsOrNull) {}

  [[nodiscard]] const PlexoActivityRules& GetRules(PlexoIndex activity) const {
    return definition.GetRules(activity);
  }
  [[nodiscard]] const PlexoControlModes& GetControls(PlexoIndex activity) const {
    return GetRules(activity).controls;
  }
  [[nodiscard]] PlexoIndex GetParent(PlexoIndex activity) const { return definition.Get(activity).parent; }
  [[nodiscard]] bool IsLeaf(PlexoIndex activity) const { return definition.Get(activity).IsLeaf(); }
  [[nodiscard]] bool IsTracked(PlexoIndex activity) const { return GetRules(activity).delivery.tracked; }
  [[nodiscard]] PlexoActivityState& At(PlexoIndex activity) { return state.activities[activity]; }

  /// The root always is.
  [[nodiscard]] bool IsAvailable(PlexoIndex activity) const;
  [[nodiscard]] std::span<const PlexoIndex> GetAvailableChildren(PlexoIndex cluster) const;
  /// Of the available siblings; kPlexoNone beyond the ends and for the root.
  [[nodiscard]] PlexoIndex GetNext(PlexoIndex activity) const;
  [[nodiscard]] PlexoIndex GetPrevious(PlexoIndex activity) const;
  [[nodiscard]] PlexoIndex GetFirst(PlexoIndex cluster) const;
  [[nodiscard]] PlexoIndex GetLast(PlexoIndex cluster) const;
  /// Whether nothing comes after it in a forward preorder traversal of the available tree.
  [[nodiscard]] bool IsLastInTree(PlexoIndex activity) const;
  /// Whether the first comes after the second in that traversal.
  [[nodiscard]] bool IsAfter(PlexoIndex activity, PlexoIndex other) const;
  /// From below the ancestor down to the activity, inclusive. With kPlexoNone from the root.
  [[nodiscard]] std::vector<PlexoIndex> GetPath(PlexoIndex ancestor, PlexoIndex activity) const;

  /// Notes why the request in hand fails; returns false, for a process to return.
  bool Refuse(PlexoSequencingException code, PlexoReasonKind kind, PlexoIndex activity,
              PlexoIndex rule = kPlexoNone);
  std::size_t Begin(PlexoProcess process, PlexoIndex activity = kPlexoNone);
  void End(std::size_t step, PlexoSequencingException code, PlexoIndex rule = kPlexoNone);

  const PlexoSequencingDefinition& definition;
  PlexoSequencingState& state;
  PlexoSequencingTrace* trace;

  PlexoSequencingException exception = PlexoSequencingException::None;
  PlexoSequencingReason reason;

  /// Grows whenever something changes that a rollup sees; lastRollups holds for each activity the value at
  /// which it was rolled up last in this run and whether it was active, so that an unchanged one isn't rolled
  /// up again.
  std::uint64_t changes = 1;
  std::vector<std::uint64_t> lastRollups;
  std::vector<PlexoIndex> changedGlobals;

 private:
  [[nodiscard]] std::uint32_t GetSlot(PlexoIndex activity) const;
  [[nodiscard]] PlexoIndex GetSibling(PlexoIndex activity, std::uint32_t offset) const;
};
