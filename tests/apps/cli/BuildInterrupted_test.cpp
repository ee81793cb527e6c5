// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <linux/capability.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <functional>
#include <thread>

#include "CliTest.h"

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::MatchesRegex;
using ::testing::StartsWith;

constexpr std::size_t kFileSize = std::size_t{2} << 20U;

/// A course of two packages, large enough that each step takes a while.
class BuildInterruptedTest : public CliTest {
 protected:
  BuildInterruptedTest() {
    for (const unsigned package : {1U, 2U}) {
      ScoZip sco("large" + std::to_string(package));
      sco.Item("Large", "0.bin");
      for (unsigned number = 0; number < 4; ++number) {
        sco.File(std::to_string(number) + ".bin", MakeNoise(kFileSize, 10 * package + number));
      }
      sco.Save(Work());
    }
    WriteCourse("large1.zip, large2.zip");
    Write("out/out.zip", "earlier");
  }

  [[nodiscard]] ProgramRun Build(const std::vector<std::string>& more = {}) const {
    std::vector<std::string> arguments = {"build", "course.yaml", "-o", "out/out.zip", "--force"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return Program(arguments);
  }

  /// Ends runs of the program by the signal, each a little later than the one before, until one is complete
  /// in spite of it. `check` sees how each of the others ended.
  void SignalAtManyMoments(int signal, const std::vector<std::string>& arguments,
                           const std::function<void(const ProgramResult&)>& check) const {
    constexpr std::chrono::microseconds kStep(500);
    for (auto moment = std::chrono::microseconds(0);; moment += kStep + moment / 32) {
      SCOPED_TRACE(std::to_string(moment.count()) + " microseconds");
      ProgramRun run = Build(arguments);
      run.Start();
      std::this_thread::sleep_for(moment);
      run.Signal(signal);
      const ProgramResult result = run.Wait();
      if (result.status == 0) return;
      EXPECT_EQ(result.signal, signal) << result.status << result.err;
      check(result);
      if (HasFailure()) return;
    }
  }

  void ExpectTheEarlierPackageAlone() const {
    EXPECT_TRUE(Read("out/out.zip") == "earlier");
    EXPECT_THAT(ListTree(Work() / "out"), ElementsAre("out.zip"));
  }

  /// How many folders for temporary files stand with a lock in them. Without one they are empty, and nothing
  /// else stands beside them.
  int CountLocked() const {
    int locked = 0;
    std::vector<TzPath> left;
    EXPECT_EQ(TzFileUtil::GetFileNamesInFolderAtPath(Temporary(), left, true, true), kTzSuccess);
    for (const TzPath& one : left) {
      EXPECT_THAT(one.GetFileName().GetUTF8String(),
                  MatchesRegex("plexo-" + std::to_string(geteuid()) + "-[[:alnum:]]{6}"));
      const bool isLocked = TzFile(one / "lock").Exists();
      EXPECT_TRUE(isLocked || ListTree(one).empty());
      locked += isLocked ? 1 : 0;
    }
    return locked;
  }

  std::string BuildWhole() const {
    EXPECT_EQ(Program({"build", "course.yaml", "-o", "whole.zip"}).Run().status, 0);
    return Read("whole.zip");
  }
};

TEST_F(BuildInterruptedTest, ATermSignalUndoesTheWorkAndEndsTheProgramByThatSignal) {
  int told = 0;
  SignalAtManyMoments(SIGTERM, {}, [&](const ProgramResult& result) {
    // A program that hasn't begun yet has nothing to tell.
    if (!result.err.empty()) {
      EXPECT_EQ(result.err, "out/out.zip: interrupted; no package was written\n");
      ++told;
    }
    ExpectTheEarlierPackageAlone();
    EXPECT_TRUE(ListTree(Temporary()).empty());
  });
  EXPECT_GT(told, 0);
  EXPECT_TRUE(Read("out/out.zip") == BuildWhole());
  EXPECT_TRUE(ListTree(Temporary()).empty());
}

TEST_F(BuildInterruptedTest, JsonTellsTheStatusOfTheSignalAndTheWorkingFolderGoes) {
  int told = 0;
  SignalAtManyMoments(SIGTERM, {"--json", "--working-folder", "kept"}, [&](const ProgramResult& result) {
    EXPECT_FALSE(Exists("kept"));
    if (result.out.empty()) return;
    EXPECT_THAT(result.out, HasSubstr("\"status\": 143"));
    ++told;
  });
  EXPECT_GT(told, 0);
}

TEST_F(BuildInterruptedTest, AKilledRunLeavesOnePackageAndTheNextSweepsItsFolder) {
  const std::string whole = BuildWhole();
  int kills = 0;
  int leavings = 0;
  SignalAtManyMoments(SIGKILL, {}, [&](const ProgramResult&) {
    ++kills;
    const std::string package = Read("out/out.zip");
    EXPECT_TRUE(package == "earlier" || package == whole);
    if (package == whole) Write("out/out.zip", "earlier");
    for (const std::string& name : ListTree(Work() / "out")) {
      // An existing package is replaced by way of a hidden name, for an instant.
      if (name == "out.zip") continue;
      EXPECT_THAT(name, StartsWith(".out.zip.plexo-"));
      TzFileUtil::DeleteFile(Work() / "out" / name);
    }
    const int locked = CountLocked();
    EXPECT_LE(locked, 1) << "a run sweeps what the killed one before it left";
    leavings += locked;
  });
  EXPECT_GT(kills, 10);
  EXPECT_GT(leavings, 0);
  EXPECT_TRUE(Read("out/out.zip") == whole);
  EXPECT_EQ(CountLocked(), 0);

  // A folder that nobody came to lock may belong to a process that is about to, for a while.
  const auto longAgo = std::filesystem::file_time_type::clock::now() - std::chrono::hours(2);
  for (const std::string& name : ListTree(Temporary())) {
    std::filesystem::last_write_time((Temporary() / name).GetNative(), longAgo);
  }
  EXPECT_EQ(Build().Run().status, 0);
  EXPECT_TRUE(ListTree(Temporary()).empty());
}

TEST_F(BuildInterruptedTest, AFullDiskLeavesTheEarlierPackage) {
  const struct {
    rlim_t limit;
    std::vector<std::string> arguments;
    const char *what, *why;
  } cases[] = {
      // The packages can be kept, but not the one that is made of them.
      {kFileSize * 6,
       {},
       "out/out.zip: There was some error while zipping the Plexo Package!\n  ",
       "can't write"},
      {kFileSize * 2, {}, "large1.zip: Error extracting the ZIP contents!\n  ", "can't keep a copy of it in"},
      {kFileSize / 2,
       {"--working-folder", "kept"},
       "large1.zip: Error extracting the ZIP contents!\n  ",
       "0.bin: can't write"},
  };
  for (const auto& [limit, arguments, what, why] : cases) {
    const rlimit sizes = {limit, limit};
    const ProgramResult result = Build(arguments).Prepare([sizes] { setrlimit(RLIMIT_FSIZE, &sizes); }).Run();
    EXPECT_EQ(result.status, 3) << result.err;
    EXPECT_THAT(result.err, StartsWith(what));
    EXPECT_THAT(result.err, HasSubstr(why));
    EXPECT_THAT(result.err, HasSubstr("File too large"));
    ExpectTheEarlierPackageAlone();
    EXPECT_FALSE(Exists("kept"));
    EXPECT_TRUE(ListTree(Temporary()).empty());
  }
}

TEST_F(BuildInterruptedTest, AFolderWithoutPermissionIsToldBeforeTheWork) {
  const std::string out = (Work() / "out").GetNative();
  chmod(out.c_str(), S_IRUSR | S_IXUSR);
  // The administrator's right to write everywhere is given up.
  const auto giveUpRights = [] { prctl(PR_CAPBSET_DROP, CAP_DAC_OVERRIDE, 0, 0, 0); };
  const ProgramResult result = Build().Prepare(giveUpRights).Run();
  chmod(out.c_str(), S_IRWXU);
  EXPECT_EQ(result.status, 3);
  EXPECT_EQ(result.err, "out/out.zip: can't write into the folder 'out': Permission denied\n");
  EXPECT_TRUE(ListTree(Temporary()).empty());
}

TEST_F(BuildInterruptedTest, ResultsThatCantBeWrittenAreAFailure) {
  const ProgramResult result = Program({"build", "--help"})
                                   .Prepare([] { static_cast<void>(freopen("/dev/full", "w", stdout)); })
                                   .Run();
  EXPECT_EQ(result.status, 3);
  EXPECT_EQ(result.err, "standard output: can't write\n");

  const ProgramResult built =
      Build().Prepare([] { static_cast<void>(freopen("/dev/full", "w", stdout)); }).Run();
  EXPECT_EQ(built.status, 3);
  EXPECT_EQ(built.err, "standard output: can't write; the package was written\n");
}

}  // namespace
