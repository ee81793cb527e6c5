// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <string>

/// How far an archive is, counted by workers and told to the session by the calling thread.
class TzZipProgress {
 public:
  /// The time after which a waiting caller should report again.
  static constexpr std::chrono::milliseconds kInterval{60};

  TzZipProgress(std::string text, std::uint64_t totalBytes);

  /// From any thread.
  void Advance(std::uint64_t bytes) { done.fetch_add(bytes, std::memory_order_relaxed); }
  /// From any thread: stops the work as the sink would.
  void Stop() { stopped.store(true, std::memory_order_relaxed); }
  /// Undoes an advance, for work that is done over.
  void TakeBack(std::uint64_t bytes) { done.fetch_sub(bytes, std::memory_order_relaxed); }
  /// From any thread: true once the work is to stop.
  [[nodiscard]] bool IsStopped() const { return stopped.load(std::memory_order_relaxed); }

  /// False once the sink asked to stop.
  bool Report();
  /// Likewise, but leaves the sink alone if it heard something less than an interval ago.
  bool ReportIfDue();

 private:
  std::string activity;
  std::uint64_t total;
  std::atomic<std::uint64_t> done = 0;
  std::atomic<bool> stopped = false;
  std::chrono::steady_clock::time_point reported;
};
