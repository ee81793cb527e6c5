// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>

#include "check/play/PlexoWalker.h"

/// Finds the content that is to blame for what no learner sees.
class PlexoSilence {
 public:
  using IsSeen = std::function<bool(const PlexoSightings&)>;

  /// The content whose silence keeps something from being seen: it would be seen if this content reported
  /// everything. kPlexoNone if the sequencing doesn't allow it, whatever content reports. The requests are
  /// added to those of all.
  [[nodiscard]] static PlexoIndex FindCause(const PlexoPlayedCourse& course, PlexoSightings& all,
                                            const IsSeen& isSeen);
};
