// SPDX-License-Identifier: Apache-2.0
#include "host/movie/TzProcessGroup.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <thread>

#include "host/files/TzFile.h"
#include "support/TestSession.h"

namespace {

bool ComesTrue(const std::function<bool()>& condition) {
  for (int step = 0; step < 500 && !condition(); ++step) {
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
  }
  return condition();
}

constexpr std::uint64_t kMegabyte = std::uint64_t{1} << 20U;

/// Holds so many megabytes of memory for a minute.
std::string Hold(int megabytes) {
  const std::string size = std::to_string(megabytes) + "M";
  return "(head -c " + size + " /dev/zero; sleep 60) | tail -c " + size;
}

}  // namespace

TEST(TzProcessGroup, FindsWhatAllItsProcessesTakeTogether) {
  const struct {
    const char* what;
    std::string script;
    const char* excess;
  } cases[] = {
      {"idle", "sleep 60", ""},
      {"memory", Hold(70) + " & " + Hold(70) + " & wait", "more than 100 MB of memory"},
      {"processes", "for each in 1 2 3 4 5 6 7 8 9 10; do sleep 60 & done; wait", "more than 8 processes"},
  };
  for (const auto& [what, script, excess] : cases) {
    TzProcessGroup group({.bytes = 100 * kMegabyte, .processes = 8});
    ASSERT_EQ(group.Start({"/bin/sh", "-c", script}, {"PATH=/usr/bin:/bin"}), 0) << what;
    EXPECT_TRUE(ComesTrue([&, words = excess] { return group.FindExcess() == words; })) << what;
    EXPECT_TRUE(group.IsRunning()) << what;
    group.End();
    EXPECT_EQ(group.FindExcess(), "") << what;
  }
}

TEST(TzProcessGroup, NoProcessGetsMoreThanTheGroupMayHave) {
  const TestFolder folder;
  const TzPath refused = folder.Path() / "refused";
  TzProcessGroup group({.bytes = 50 * kMegabyte, .processes = 8});
  const std::string script = "head -c 200M /dev/zero | tail -c 200M || echo >" + refused.GetNative();
  ASSERT_EQ(group.Start({"/bin/sh", "-c", script}, {"PATH=/usr/bin:/bin"}), 0);
  EXPECT_TRUE(ComesTrue([&] { return group.FindExcess().empty() && TzFile(refused).Exists(); }));
}
