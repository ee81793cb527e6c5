// SPDX-License-Identifier: Apache-2.0
#include "host/files/TzWriteBehind.h"

#include <cerrno>
#include <system_error>
#include <utility>

TzWriteBehind::~TzWriteBehind() {
  {
    const std::lock_guard guard(mutex);
    isEnding = true;
    change.notify_all();
  }
  if (thread.joinable()) thread.join();
}

bool TzWriteBehind::Write(TzByteBuffer& bytes, std::size_t count, std::uint64_t offset) {
  std::unique_lock lock(mutex);
  if (!Await(lock)) return false;
  std::swap(pending, bytes);
  pendingCount = count;
  pendingOffset = offset;
  try {
    if (!thread.joinable()) thread = std::thread([this] { Run(); });
    change.notify_all();
  } catch (const std::system_error&) {
    // Without a thread to be had the caller waits for the disk.
    WriteNow(lock);
  }
  return true;
}

bool TzWriteBehind::Wait() {
  std::unique_lock lock(mutex);
  return Await(lock);
}

bool TzWriteBehind::Await(std::unique_lock<std::mutex>& lock) {
  change.wait(lock, [this] { return pendingCount == 0; });
  if (error != 0) errno = error;
  return error == 0;
}

void TzWriteBehind::Run() {
  std::unique_lock lock(mutex);
  for (;;) {
    change.wait(lock, [this] { return isEnding || pendingCount > 0; });
    if (pendingCount == 0) return;
    WriteNow(lock);
  }
}

void TzWriteBehind::WriteNow(std::unique_lock<std::mutex>& lock) {
  // Nobody else touches what is pending.
  lock.unlock();
  const bool isWritten = target.WriteAt(pendingOffset, pending.Take(pendingCount));
  const int reason = errno;
  lock.lock();
  if (!isWritten && error == 0) error = reason;
  pendingCount = 0;
  change.notify_all();
}
