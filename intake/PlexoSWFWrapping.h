// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <vector>

#include "core/PlexoSCOModel.h"
#include "host/files/TzPath.h"
#include "host/text/ITzStringDictionary.h"

/// What asking a movie for a Learning Interaction came to: a movie that reports a score.
enum PlexoProbeResult : std::int32_t {
  kPlexoProbeIsInteraction = 0,
  kPlexoProbeNoFile = 1,
  kPlexoProbeNotLoaded = 2,
  /// Reserved: nothing here looks at the version of the movie's language.
  kPlexoProbeNotActionScript3 = 3,
  kPlexoProbeNoInteraction = 4,
  kPlexoProbeNoSize = 5,
};

/// Makes tracked SCOs of movies.
class PlexoSWFWrapping {
 public:
  /// Asks a movie, while it runs, whether it is a Learning Interaction, and for its size. A
  /// `PlexoProbeResult`. Blocks until the movie has answered or was given up.
  [[nodiscard]] static std::int32_t ProbeLearningInteraction(const TzString& swfPath, std::int32_t& width,
                                                             std::int32_t& height);

  /// Generates what a copied movie needs around it. 0, or what the wrapper failed with; `generatedFiles` are
  /// handed back in both cases.
  [[nodiscard]] static int WrapLearningInteraction(const TzPath& swfInSCOFolder, std::int32_t width,
                                                   std::int32_t height,
                                                   std::vector<TzString>& generatedFiles);

  /// Adds a movie to the course as a SCO in this folder and fills `sco`. 0, also for a folder that stands
  /// already; 1 after a box. The movie is asked before anything is written.
  [[nodiscard]] static int AddMovie(const TzPath& path, const TzPath& scoFolder, PlexoSCOModel& sco,
                                    const ITzStringDictionary& dictionary);
};
