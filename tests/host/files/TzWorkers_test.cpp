// SPDX-License-Identifier: Apache-2.0
#include "host/files/TzWorkers.h"

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <new>

namespace {

/// Work that can be copied only so many times: every thread takes a copy of its own.
class ScarceWork {
 public:
  ScarceWork(std::atomic<int>& copies, std::atomic<int>& runs) : copiesLeft(copies), runCount(runs) {}
  ScarceWork(const ScarceWork& other) : copiesLeft(other.copiesLeft), runCount(other.runCount) {
    if (--copiesLeft < 0) throw std::bad_alloc();
  }
  ScarceWork& operator=(const ScarceWork&) = delete;
  ~ScarceWork() = default;
  void operator()() const { ++runCount; }

 private:
  std::atomic<int>& copiesLeft;
  std::atomic<int>& runCount;
};

TEST(WorkersTest, GoesOnWithTheThreadsThatCouldBeStarted) {
  std::atomic<int> copies = 100;
  std::atomic<int> runs = 0;
  const std::function<void()> work = ScarceWork(copies, runs);
  copies = 1;
  {
    const TzWorkers workers(8, work);
    EXPECT_EQ(workers.GetCount(), 1U);
  }
  EXPECT_EQ(runs, 1);
  copies = 0;
  EXPECT_THROW(TzWorkers(8, work), std::bad_alloc);
  EXPECT_EQ(runs, 1);
}

}  // namespace
