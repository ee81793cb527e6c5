// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "host/movie/TzStrobePlayer.h"
#include "host/session/TzErrorCode.h"

/// Versions of a movie's language.
enum TzActionScriptVersionEnum { kTzActionScript2 = 2, kTzActionScript3 = 3 };

/// What is asked of a running movie.
class TzAnimationUtils {
 public:
  /// Reads a numeric variable of the movie. A movie of version 3 has no variables that can be read from
  /// outside; the movies that we know offer theirs through the function "tzGetValue", which takes the name,
  /// so that this is what is called, whatever the version. A number, cut towards zero, or a text that is a
  /// number counts; anything else, and what 32 bits don't hold, is a failure that leaves `value` as it was.
  [[nodiscard]] static TzErrorCodeEnum GetVariableForTzSWF(TzStrobePlayer& player,
                                                           TzActionScriptVersionEnum version,
                                                           const TzString& name, std::int32_t& value);
};
