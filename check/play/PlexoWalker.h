// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "check/play/PlexoLearner.h"

/// What all learners together have seen of a course.
struct PlexoSightings {
  explicit PlexoSightings(PlexoIndex activities) : isReached(activities, false) {}
  void Note(const PlexoLearner& learner);

  /// One an activity: it was launched.
  std::vector<bool> isReached;
  bool isCompleted = false;
  bool isPassed = false;
  std::uint64_t requests = 0;
  /// A learner was stopped, for a walk has a bound.
  bool isStopped = false;
};

/// Leads one learner through a course, in time that grows with the number of activities: a walk is stopped
/// after kStepsAnActivity requests an activity.
class PlexoWalker {
 public:
  static constexpr std::size_t kStepsAnActivity = 6;
  /// An activity isn't launched more often than this by choice.
  static constexpr std::uint32_t kMostVisits = 4;

  /// What a learner does in the content that was launched last. The visit is idle so far.
  using Policy = std::function<PlexoVisit(const PlexoWalker&)>;
  enum class Order { Forward, Backward, Mixed };

  PlexoWalker(const PlexoPlayedCourse& course, PlexoSightings& all, Policy visits);

  /// False if it launches nothing.
  bool Start();
  /// Presses Continue until it launches nothing. What comes of that last one isn't kept.
  void Continue();
  /// Chooses what is open and wasn't launched yet, as long as there is something; with "failed" also what the
  /// learner could pass and hasn't, with "limited" also what has attempts left.
  enum class Wanted { Unseen, Failed, Limited };
  void Choose(Order order, Wanted wanted = Wanted::Unseen);
  bool Ask(PlexoNavigation request);
  /// Ends the session, so that everything counts.
  void Leave();

  [[nodiscard]] PlexoLearner& GetLearner() { return learner; }
  [[nodiscard]] const PlexoLearner& GetLearner() const { return learner; }
  [[nodiscard]] PlexoIndex GetLaunched() const { return learner.GetLaunched(); }
  /// How often an activity was launched.
  [[nodiscard]] std::uint32_t GetVisits(PlexoIndex activity) const { return visits[activity]; }
  /// The content that no learner walking like this has seen.
  [[nodiscard]] bool HasUnseen() const;

 private:
  bool Make(PlexoNavigationRequest request);
  /// The first wanted activity that is open, in this order behind the one that was chosen last; kPlexoNone if
  /// there is none.
  [[nodiscard]] PlexoIndex FindOpen(const PlexoOutlook& outlook, Order order, Wanted wanted) const;
  /// The next wanted content in this order, open or not.
  [[nodiscard]] PlexoIndex GuessNext(Order order, Wanted wanted) const;
  [[nodiscard]] bool IsWanted(PlexoIndex content, Wanted wanted) const;
  [[nodiscard]] bool IsOver();

  PlexoLearner learner;
  PlexoSightings& sightings;
  Policy policy;
  std::vector<std::uint32_t> visits;
  PlexoIndex chosen = 0;
};
