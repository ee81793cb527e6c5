// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "host/text/TzString.h"

/// A duration as dialogs show it, in three fields, and as the course holds it, as the text "hh:mm:ss".
struct PlexoDuration {
  std::int64_t hours = 0;
  std::int64_t minutes = 0;
  std::int64_t seconds = 0;

  /// The numbers at the three places of a text of exactly 8 characters, whatever stands between them; all
  /// zero for any other text.
  static PlexoDuration Parse(const TzString& text);
  /// With at least two digits each.
  [[nodiscard]] TzString Format() const;

  bool operator==(const PlexoDuration&) const = default;
};
