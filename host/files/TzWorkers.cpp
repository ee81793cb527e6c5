// SPDX-License-Identifier: Apache-2.0
#include "host/files/TzWorkers.h"

#include <algorithm>
#include <exception>

TzWorkers::TzWorkers(std::size_t jobs, const std::function<void()>& work) {
  const std::size_t count = std::clamp<std::size_t>(jobs, 1, GetCores());
  threads.reserve(count);
  try {
    while (threads.size() < count) threads.emplace_back(work);
  } catch (const std::exception&) {
    // There is no further thread or no memory for one: those that run do the work.
    if (threads.empty()) throw;
  }
}

std::size_t TzWorkers::GetCores() {
  // Asking takes longer than much of what workers are for: the system's answer is a file.
  static const std::size_t cores = std::max(std::thread::hardware_concurrency(), 1U);
  return cores;
}

TzWorkers::~TzWorkers() {
  for (std::thread& thread : threads) thread.join();
}
