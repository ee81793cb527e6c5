// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <thread>

#include "host/files/TzByteBuffer.h"
#include "host/files/TzFileDescriptor.h"

/// Writes bytes to a file on a thread of its own, while the next are gathered.
///
/// Guarantees: at most one buffer is on its way. The first failure stays: every later call fails with the
/// same `errno`. The destructor waits for what is on its way.
class TzWriteBehind {
 public:
  /// The file must outlive this.
  explicit TzWriteBehind(const TzFileDescriptor& file) : target(file) {}
  TzWriteBehind(const TzWriteBehind&) = delete;
  TzWriteBehind& operator=(const TzWriteBehind&) = delete;
  ~TzWriteBehind();

  /// Takes the buffer with its first `count` bytes for this place in the file, and leaves the one of an
  /// earlier call in its stead, or none. False if an earlier write failed.
  [[nodiscard]] bool Write(TzByteBuffer& bytes, std::size_t count, std::uint64_t offset);
  /// Waits for everything. False if anything failed.
  [[nodiscard]] bool Wait();

 private:
  void Run();
  /// Waits, with the lock, until nothing is on its way.
  [[nodiscard]] bool Await(std::unique_lock<std::mutex>& lock);
  void WriteNow(std::unique_lock<std::mutex>& lock);

  const TzFileDescriptor& target;
  std::mutex mutex;
  std::condition_variable change;
  TzByteBuffer pending;
  /// 0 while nothing is on its way.
  std::size_t pendingCount = 0;
  std::uint64_t pendingOffset = 0;
  int error = 0;
  bool isEnding = false;
  std::thread thread;
};
