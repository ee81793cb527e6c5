// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "apps/cli/CommandFailure.h"

/// A file that keeps where a learner is, from one run of `plexo play` to another.
class LearnerFile {
 public:
  /// Larger than the state of any course.
  static constexpr std::size_t kMaxBytes = std::size_t{64} << 20U;

  /// Replaces a file of this kind, and no other. Nothing if it is written, else why not.
  [[nodiscard]] static std::optional<CommandFailure> Write(const std::string& path,
                                                           std::span<const std::uint8_t> state);
  [[nodiscard]] static std::optional<CommandFailure> Read(const std::string& path,
                                                          std::vector<std::uint8_t>& state);
};
