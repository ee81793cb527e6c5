// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <unordered_map>
#include <vector>

#include "check/play/PlexoWalker.h"

/// Plays everything that learners can do in a course, breadth first, until states repeat or a bound is met:
/// so what it finds is found in the fewest steps. Two states that differ only in how often something was
/// attempted, beyond what an attempt limit counts, are one.
class PlexoStateExploration {
 public:
  static constexpr std::size_t kMostStates = 3000;
  /// In requests times activities, for a request may look at each: short courses are explored to the end,
  /// long ones at their beginning only.
  static constexpr std::uint64_t kMostWork = 600'000;

  PlexoStateExploration(const PlexoPlayedCourse& played, PlexoSightings& all);
  void Run();

  /// True if every state was seen.
  [[nodiscard]] bool IsComplete() const { return isComplete; }
  [[nodiscard]] std::size_t GetCount() const { return nodes.size(); }
  /// The learner who after the fewest steps can launch nothing any more, neither in the session nor in a new
  /// one, and hasn't completed the course; in the first session, or in a later one.
  [[nodiscard]] const std::optional<PlexoLearner>& GetLost() const { return lost; }
  [[nodiscard]] const std::optional<PlexoLearner>& GetLostLater() const { return lostLater; }

 private:
  /// A learner at the beginning of a visit, or outside a session.
  struct Node {
    PlexoSequencingState state;
    std::size_t before = 0;
    bool isFirstSession = true;
    /// What was made of the content at hand before.
    PlexoVisit visit = PlexoVisit::Idle;
    PlexoNavigationRequest request;
  };
  /// A learner at the end of a visit.
  struct Leaving {
    std::size_t node = 0;
    PlexoVisit visit = PlexoVisit::Idle;
    PlexoSequencingState state;
  };
  void Expand(std::size_t index);
  void Leave(const Leaving& leaving);
  void Follow(const Leaving& leaving, PlexoNavigationRequest request);
  void Add(Node node);
  void Normalize(PlexoSequencingState& state) const;
  [[nodiscard]] std::vector<PlexoVisit> GetVisits(PlexoIndex content) const;
  [[nodiscard]] bool IsLost(const Leaving& leaving) const;
  [[nodiscard]] PlexoLearner Replay(const Leaving& leaving) const;

  const PlexoPlayedCourse& course;
  PlexoSightings& sightings;
  std::vector<Node> nodes;
  std::unordered_multimap<std::size_t, std::size_t> byHash;
  std::uint64_t work = 0;
  bool isComplete = true;
  std::optional<PlexoLearner> lost;
  std::optional<PlexoLearner> lostLater;
};
