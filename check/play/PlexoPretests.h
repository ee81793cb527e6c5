// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

#include "check/play/PlexoLearner.h"

/// The pretests of a course: content that writes a global objective which lets later activities be skipped
/// once it is satisfied.
class PlexoPretests {
 public:
  explicit PlexoPretests(const PlexoPlayedCourse& course);

  [[nodiscard]] bool IsEmpty() const { return all.empty(); }
  [[nodiscard]] bool IsPretest(PlexoIndex activity) const;
  /// In preorder.
  [[nodiscard]] const std::vector<PlexoIndex>& Get() const { return all; }
  /// The pretests that spare a learner this activity, or what it lies in.
  [[nodiscard]] std::vector<PlexoIndex> GetSparing(PlexoIndex activity) const;

 private:
  void NoteSkips(PlexoIndex activity, const std::vector<std::vector<PlexoIndex>>& writers);

  const PlexoSequencingDefinition& definition;
  std::vector<PlexoIndex> all;
  /// One an activity.
  std::vector<std::vector<PlexoIndex>> sparing;
};
