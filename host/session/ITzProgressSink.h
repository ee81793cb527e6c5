// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string_view>

/// Hears how far a long operation is, and may stop it.
class ITzProgressSink {
 public:
  virtual ~ITzProgressSink() = default;

  /// `activity` is what is being done and to what ("adding intro.zip"). `total` is in the unit of `done`
  /// (bytes, mostly) and never 0. Called on the thread that runs the operation, many times a second at most.
  /// False asks to stop: the operation then undoes what it did and fails with `kTzCancelled`.
  virtual bool Report(std::string_view activity, std::uint64_t done, std::uint64_t total) = 0;
};
