// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <functional>
#include <thread>
#include <vector>

/// Threads that all run one function: as many as the machine has cores, but no more than there are jobs.
///
/// Guarantees: at least one runs, or the constructor throws `std::system_error` or `std::bad_alloc`; the
/// destructor waits for all.
class TzWorkers {
 public:
  TzWorkers(std::size_t jobs, const std::function<void()>& work);
  TzWorkers(const TzWorkers&) = delete;
  TzWorkers& operator=(const TzWorkers&) = delete;
  ~TzWorkers();

  [[nodiscard]] std::size_t GetCount() const { return threads.size(); }
  /// The most workers that there can be.
  [[nodiscard]] static std::size_t GetCores();

 private:
  std::vector<std::thread> threads;
};
