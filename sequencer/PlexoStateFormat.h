// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "sequencer/PlexoSequencingState.h"

/// A state as bytes, small enough for an LMS's suspend data: what no attempt has touched takes no room. Equal
/// states give equal bytes, on every platform.
class PlexoStateFormat {
 public:
  static constexpr std::uint8_t kVersion = 1;
  [[nodiscard]] static std::vector<std::uint8_t> Write(const PlexoSequencingDefinition& definition,
                                                       const PlexoSequencingState& state);
  /// Nothing if the bytes are damaged, of another version or of another course.
  [[nodiscard]] static std::optional<PlexoSequencingState> Read(const PlexoSequencingDefinition& definition,
                                                                std::span<const std::uint8_t> bytes);
};
