// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <linux/capability.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <chrono>
#include <csignal>
#include <thread>

#include "CliTest.h"

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::StartsWith;

constexpr std::size_t kFileSize = std::size_t{8} << 20U;

/// A course large enough that its publishing takes a while.
class BuildInterruptedTest : public CliTest {
 protected:
  BuildInterruptedTest() {
    ScoZip sco("large");
    sco.Item("Large", "0.bin");
    for (unsigned number = 0; number < 8; ++number) {
      sco.File(std::to_string(number) + ".bin", MakeNoise(kFileSize, number));
    }
    sco.Save(Work());
    WriteCourse("large.zip");
  }

  [[nodiscard]] ProgramRun Build() const {
    return Program({"build", "course.yaml", "-o", "out/out.zip", "--force"});
  }

  /// True once the program packs the course: the manifest is the last thing that is written before.
  [[nodiscard]] bool IsPublishing() const {
    for (const TzPath& processFolder : ListFolders(Temporary())) {
      for (const TzPath& workingFolder : ListFolders(processFolder)) {
        if (TzFile(workingFolder / "imsmanifest.xml").Exists()) return true;
      }
    }
    return false;
  }

  /// Folders that vanish meanwhile are none.
  static std::vector<TzPath> ListFolders(const TzPath& parent) {
    std::vector<TzPath> folders;
    static_cast<void>(TzFileUtil::GetFileNamesInFolderAtPath(parent, folders, false, true));
    return folders;
  }

  /// Starts a build, sends the signal while it packs, and returns how it ended.
  ProgramResult SignalWhilePublishing(int signal) const { return SignalWhilePublishing(signal, Build()); }

  ProgramResult SignalWhilePublishing(int signal, ProgramRun run) const {
    run.Start();
    while (!run.HasEnded() && !IsPublishing()) std::this_thread::sleep_for(std::chrono::milliseconds(1));
    run.Signal(signal);
    return run.Wait();
  }
};

TEST_F(BuildInterruptedTest, ATermSignalUndoesTheWorkAndEndsTheProgramByThatSignal) {
  Write("out/out.zip", "earlier");
  const ProgramResult result = SignalWhilePublishing(SIGTERM);
  EXPECT_EQ(result.signal, SIGTERM);
  EXPECT_EQ(result.err, "out/out.zip: interrupted; no package was written\n");
  EXPECT_EQ(Read("out/out.zip"), "earlier");
  EXPECT_THAT(ListTree(Work() / "out"), ElementsAre("out.zip"));
  EXPECT_TRUE(ListTree(Temporary()).empty());
}

TEST_F(BuildInterruptedTest, JsonTellsTheStatusOfTheSignal) {
  const ProgramResult result =
      SignalWhilePublishing(SIGTERM, Program({"build", "course.yaml", "-o", "out.zip", "--json"}));
  EXPECT_EQ(result.signal, SIGTERM);
  EXPECT_THAT(result.out, HasSubstr("\"status\": 143"));
}

TEST_F(BuildInterruptedTest, AKilledRunLeavesNoPackageAndTheNextSweepsItsFolder) {
  Write("out/out.zip", "earlier");
  EXPECT_EQ(SignalWhilePublishing(SIGKILL).signal, SIGKILL);
  EXPECT_EQ(Read("out/out.zip"), "earlier");
  EXPECT_THAT(ListTree(Work() / "out"), ElementsAre("out.zip"));
  EXPECT_FALSE(ListTree(Temporary()).empty());

  EXPECT_EQ(Build().Run().status, 0);
  EXPECT_THAT(Read("out/out.zip"), StartsWith("PK"));
  EXPECT_TRUE(ListTree(Temporary()).empty());
}

TEST_F(BuildInterruptedTest, AFullDiskLeavesTheEarlierPackage) {
  Write("out/out.zip", "earlier");
  const struct {
    rlim_t limit;
    const char* what;
  } cases[] = {
      {kFileSize * 4, "out/out.zip: There was some error while zipping the Plexo Package!\n  "},
      {kFileSize / 2, "large.zip: Error extracting the ZIP contents!\n  "},
  };
  for (const auto& [limit, what] : cases) {
    const rlimit sizes = {limit, limit};
    const ProgramResult result = Build().Prepare([sizes] { setrlimit(RLIMIT_FSIZE, &sizes); }).Run();
    EXPECT_EQ(result.status, 3) << result.err;
    EXPECT_THAT(result.err, StartsWith(what));
    EXPECT_THAT(result.err, HasSubstr("File too large"));
    EXPECT_EQ(Read("out/out.zip"), "earlier");
    EXPECT_THAT(ListTree(Work() / "out"), ElementsAre("out.zip"));
    EXPECT_TRUE(ListTree(Temporary()).empty());
  }
}

TEST_F(BuildInterruptedTest, AFolderWithoutPermissionIsToldBeforeTheWork) {
  Write("out/keep", "");
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

  Write("out/keep", "");
  const ProgramResult built =
      Build().Prepare([] { static_cast<void>(freopen("/dev/full", "w", stdout)); }).Run();
  EXPECT_EQ(built.status, 3);
  EXPECT_EQ(built.err, "standard output: can't write; the package was written\n");
}

}  // namespace
