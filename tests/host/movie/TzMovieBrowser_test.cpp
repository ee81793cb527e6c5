// SPDX-License-Identifier: Apache-2.0
#include "host/movie/TzMovieBrowser.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <functional>
#include <thread>

#include "host/files/TzFile.h"
#include "host/files/TzFileUtil.h"
#include "support/RecordedProblems.h"
#include "support/TestSession.h"

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

namespace {

bool ComesTrue(const std::function<bool()>& condition) {
  for (int step = 0; step < 500 && !condition(); ++step) {
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  return condition();
}

/// A program on PATH, under the name of a browser, that only notes how it was started.
class TzMovieBrowserTest : public testing::Test {
 protected:
  TzMovieBrowserTest() {
    // The program may run as another user.
    chmod(folder.Path().GetNative().c_str(), S_IRWXU | S_IRWXG | S_IRWXO);
    setenv("PATH", folder.Path().GetNative().c_str(), 1);
  }
  ~TzMovieBrowserTest() override { setenv("PATH", path.c_str(), 1); }

  void Install(const std::string& name, const std::string& script) const {
    const TzPath program =
        folder.Write(name, "#!/bin/sh\necho \"$@\" >" + Notes("arguments") + "\necho $HOME >" +
                               Notes("home") + "\necho $$ >" + Notes("id.part") + "\n/bin/mv " +
                               Notes("id.part") + " " + Notes("id") + "\n" + script + "\n");
    chmod(program.GetNative().c_str(), S_IRWXU | S_IRGRP | S_IXGRP | S_IROTH | S_IXOTH);
  }
  [[nodiscard]] std::string Notes(const char* name) const { return (folder.Path() / name).GetNative(); }
  /// The process that the program became, once it runs.
  [[nodiscard]] pid_t WaitForId() const {
    const TzPath id = folder.Path() / "id";
    EXPECT_TRUE(ComesTrue([&] { return TzFile(id).Exists(); }));
    return static_cast<pid_t>(std::stol(ReadFile(id)));
  }
  static bool IsGone(pid_t process) {
    // A dead process whose parent hasn't asked for it counts as gone.
    const std::string state = "/proc/" + std::to_string(process) + "/stat";
    return !TzFile(TzPath(state)).Exists() || ReadFile(TzPath(state)).find(") Z ") != std::string::npos;
  }

  RecordedProblems problems;
  TestFolder folder;
  std::string path = std::getenv("PATH");
};

constexpr const char* kAddress = "http://127.0.0.1:4711/secret/";

}  // namespace

TEST_F(TzMovieBrowserTest, KeepsTheAddressSecretAndItsThingsInAFolderThatGoes) {
  Install("firefox", "");
  Install("google-chrome", "exec /bin/sleep 60");
  pid_t process = -1;
  TzPath home;
  {
    TzMovieBrowser browser;
    ASSERT_TRUE(browser.Start(kAddress, 4711));
    process = WaitForId();
    EXPECT_TRUE(browser.IsRunning());
    EXPECT_THAT(browser.GetProgram(), HasSubstr("/google-chrome"));
    EXPECT_THAT(ReadFile(folder.Path() / "arguments"),
                AllOf(HasSubstr("--proxy-server=http://127.0.0.1:4711 "), Not(HasSubstr("secret"))));
    const std::string text = ReadFile(folder.Path() / "home");
    home = TzPath(text.substr(0, text.find('\n')));
    EXPECT_THAT(ReadFile(home / "start.html"), HasSubstr(kAddress));
    EXPECT_FALSE(IsGone(process));
  }
  EXPECT_TRUE(ComesTrue([&] { return IsGone(process); }));
  EXPECT_FALSE(TzFile(home).Exists());
}

TEST_F(TzMovieBrowserTest, IsNeverRootsAndSaysWhatItDoesWithout) {
  const bool isRoot = geteuid() == 0;
  // It ends at once if it is to use its sandbox.
  Install("chromium",
          "/usr/bin/id -u >" + Notes("user") + "\ncase \"$*\" in *--no-sandbox*) exec /bin/sleep 60;; esac");
  {
    TzMovieBrowser browser;
    ASSERT_TRUE(browser.Start(kAddress, 4711));
    EXPECT_TRUE(ComesTrue([&] { return !browser.IsRunning(); }));
    EXPECT_NE(ReadFile(folder.Path() / "user"), "0\n");
    EXPECT_EQ(browser.DescribeRisk(), "");
    // Only a user who owns nothing may do without it.
    EXPECT_EQ(browser.RunWithoutSandbox(), isRoot);
    if (!isRoot) return;
    EXPECT_TRUE(ComesTrue([&] { return browser.IsRunning(); }));
    EXPECT_THAT(browser.DescribeRisk(), HasSubstr("without its sandbox"));
    EXPECT_FALSE(browser.RunWithoutSandbox());
  }
  TzFileUtil::DeleteAllTempFilesCreated();
  const TestFolder closed;
  setenv("TMPDIR", closed.Path().GetNative().c_str(), 1);
  {
    TzMovieBrowser browser;
    ASSERT_TRUE(browser.Start(kAddress, 4711));
    EXPECT_THAT(browser.DescribeRisk(), AllOf(HasSubstr("as root"), HasSubstr(closed.Path().GetNative())));
  }
  unsetenv("TMPDIR");
  TzFileUtil::DeleteAllTempFilesCreated();
}

TEST_F(TzMovieBrowserTest, KnowsThatItEnded) {
  Install("firefox", "exit 1");
  TzMovieBrowser browser;
  ASSERT_TRUE(browser.Start(kAddress, 4711));
  EXPECT_TRUE(ComesTrue([&] { return !browser.IsRunning(); }));
}

TEST_F(TzMovieBrowserTest, EndsWhatIsLeftWhenTheFirstOfItsProcessesIsKilled) {
  Install("chromium", "exec /bin/sleep 60");
  pid_t process = -1;
  {
    TzMovieBrowser browser;
    ASSERT_TRUE(browser.Start(kAddress, 4711));
    process = WaitForId();
    kill(getpgid(process), SIGKILL);
    EXPECT_TRUE(ComesTrue([&] { return !browser.IsRunning(); }));
    EXPECT_FALSE(IsGone(process));
  }
  EXPECT_TRUE(ComesTrue([&] { return IsGone(process); }));
}

TEST_F(TzMovieBrowserTest, GoesWithAProcessThatIsKilled) {
  Install("chromium", "exec /bin/sleep 60");
  const pid_t owner = fork();
  if (owner == 0) {
    TzMovieBrowser browser;
    static_cast<void>(browser.Start(kAddress, 4711));
    for (;;) pause();
  }
  const pid_t process = WaitForId();
  EXPECT_FALSE(IsGone(process));
  kill(owner, SIGKILL);
  waitpid(owner, nullptr, 0);
  EXPECT_TRUE(ComesTrue([&] { return IsGone(process); }));
}
