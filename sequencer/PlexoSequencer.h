// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <memory>

#include "sequencer/PlexoNavigation.h"
#include "sequencer/PlexoOutlook.h"
#include "sequencer/PlexoSequencingDefinition.h"
#include "sequencer/PlexoSequencingState.h"
#include "sequencer/PlexoSequencingTrace.h"

/// Plays a course: the processes of SCORM 2004 Sequencing and Navigation over one definition, for any number
/// of states. It has no state of its own, does no input or output and knows no clock; the same calls on equal
/// states give equal results, natively and in WebAssembly.
///
/// A state must come from this definition (NewState, or PlexoStateFormat with the same definition). One
/// request takes time linear in the number of activities at worst. No sequence of rules makes a request loop:
/// a postcondition rule leads to at most one sequencing request, "exitParent" to at most as many more ends as
/// the tree is deep, a flow visits every activity at most once in each direction, and a change of global
/// objectives rolls up in at most kMaxRollupRounds rounds.
class PlexoSequencer {
 public:
  static constexpr int kMaxRollupRounds = 8;

  explicit PlexoSequencer(std::shared_ptr<const PlexoSequencingDefinition> course);

  [[nodiscard]] const PlexoSequencingDefinition& GetDefinition() const { return *definition; }
  /// Before the first session; children are selected and reordered with this seed.
  [[nodiscard]] PlexoSequencingState NewState(std::uint64_t seed = 0) const;

  /// The Overall Sequencing Process [OP.1], once round. A trace, if given, gets the processes passed.
  PlexoNavigationOutcome Request(PlexoSequencingState& state, const PlexoNavigationRequest& request,
                                 PlexoSequencingTrace* trace = nullptr) const;

  /// What the current content reports. Without an active content, or one that isn't tracked, nothing is
  /// recorded and false returned. What it means for global objectives and clusters shows when the attempt
  /// ends or is suspended, or with RollUp.
  bool Record(PlexoSequencingState& state, const PlexoRunTimeData& data) const;
  /// The Overall Rollup Process [RB.1.5] for the current activity, as an LMS may do when content commits.
  void RollUp(PlexoSequencingState& state, PlexoSequencingTrace* trace = nullptr) const;

  /// What the learner may do next, and why not.
  [[nodiscard]] PlexoOutlook Look(const PlexoSequencingState& state) const;

 private:
  std::shared_ptr<const PlexoSequencingDefinition> definition;
};
