// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <memory>
#include <random>

#include "sequencer/PlexoSequencer.h"

/// Courses, and learners in them, that do anything at random. The same seed gives the same on every machine.
class RandomCourse {
 public:
  explicit RandomCourse(std::uint32_t seed) : random(seed) {}

  /// Up to forty activities, with rules, objectives and maps of every kind.
  std::shared_ptr<const PlexoSequencingDefinition> MakeDefinition();
  /// Mostly requests that lead somewhere.
  PlexoNavigationRequest MakeRequest(const PlexoSequencingDefinition& definition,
                                     const PlexoSequencingState& state);
  PlexoRunTimeData MakeData();
  bool OneIn(std::uint32_t count) { return Draw(count) == 0; }

 private:
  std::uint32_t Draw(std::uint32_t bound) { return static_cast<std::uint32_t>(random() % bound); }
  template <typename Enum>
  Enum Pick(Enum last) {
    return static_cast<Enum>(Draw(static_cast<std::uint32_t>(last) + 1));
  }
  double DrawMeasure() { return (static_cast<int>(Draw(7)) - 2) / 4.0; }
  PlexoTruth DrawTruth();
  PlexoActivityRules MakeRules(std::uint32_t number);
  PlexoSequencingRule MakeRule();
  PlexoRollupRule MakeRollupRule();
  PlexoObjectiveDefinition MakeObjective(std::uint32_t number);
  PlexoObjectiveData MakeObjectiveData();

  std::mt19937 random;
};
