// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "host/session/ITzProgressSink.h"

/// Shows a long operation's progress on the last line of the terminal, and stops the operation when the
/// program was asked to stop.
///
/// Nothing is drawn before an operation has run for a moment, and then at most ten times a second.
class ProgressBar : public ITzProgressSink {
 public:
  enum class Display { Shown, Hidden };

  /// `Shown` only shows on a terminal: standard error decides.
  explicit ProgressBar(Display display);
  ~ProgressBar() override;
  ProgressBar(const ProgressBar&) = delete;
  ProgressBar& operator=(const ProgressBar&) = delete;

  bool Report(std::string_view activity, std::uint64_t done, std::uint64_t total) override;
  /// Takes the bar from the terminal; the next report may draw it anew.
  void Clear();

 private:
  using Clock = std::chrono::steady_clock;

  bool isTerminal;
  bool isDrawn = false;
  std::string current;
  Clock::time_point lastDrawn;
};

/// One line of at most `columns` places: "[####....]  45%  activity". What doesn't fit is cut.
std::string FormatProgress(std::string_view activity, std::uint64_t done, std::uint64_t total,
                           std::size_t columns);
