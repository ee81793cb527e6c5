// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "check/play/PlexoLearner.h"

/// Something that a witness says of the course behind its last step.
struct PlexoClaim {
  enum class Kind : std::uint8_t { Completed, Satisfied, Attempted, Continue, Previous, Choice };
  Kind kind = Kind::Completed;
  /// Of all but Continue and Previous.
  PlexoIndex activity = kPlexoNone;
  /// Of the last three: whether the request launches content.
  PlexoTruth truth;
};

/// The proof of a finding: what a learner does, and what is then seen. Every step says what it launched, so a
/// witness that no longer fits its course fails when it is played.
class PlexoWitness {
 public:
  PlexoWitness() = default;
  explicit PlexoWitness(const PlexoLearner& learner) : steps(learner.GetSteps()) {}

  /// Claims the status that the activity has for the learner.
  void ClaimCompleted(const PlexoLearner& learner, PlexoIndex activity);
  void ClaimSatisfied(const PlexoLearner& learner, PlexoIndex activity);
  void ClaimUnseen(PlexoIndex activity);
  void ClaimSeen(PlexoIndex activity);
  void ClaimClosed(PlexoClaim::Kind request, PlexoIndex target = kPlexoNone);
  void ClaimOpen(PlexoClaim::Kind request, PlexoIndex target = kPlexoNone);

  [[nodiscard]] const std::vector<PlexoLearnerStep>& GetSteps() const { return steps; }
  /// The content that was launched last; kPlexoNone if none was.
  [[nodiscard]] PlexoIndex GetLastLaunched() const;
  /// True if the steps lead to what they say, and all claims hold then.
  [[nodiscard]] bool IsTrueOf(const PlexoPlayedCourse& course) const;
  /// Leaves out steps, as many as leave the last ones, as many as are to be kept, and the claims as they are.
  /// The work is bounded: a very long witness keeps steps that it could do without.
  void Shorten(const PlexoPlayedCourse& course, std::size_t lastKept = 1);
  /// The lines that `plexo play` runs. The remark becomes a comment at their start.
  [[nodiscard]] std::string WriteScript(const PlexoPlayedCourse& course, std::string_view remark) const;

 private:
  [[nodiscard]] bool IsWithoutTrueOf(const PlexoPlayedCourse& course, std::size_t first, std::size_t count,
                                     std::vector<PlexoLearnerStep>& kept) const;
  [[nodiscard]] bool DoClaimsHold(const PlexoLearner& learner) const;

  std::vector<PlexoLearnerStep> steps;
  std::vector<PlexoClaim> claims;
};
