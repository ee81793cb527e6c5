// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <linux/capability.h>
#include <sys/prctl.h>
#include <sys/stat.h>

#include <filesystem>

#include "CliTest.h"
#include "support/ReadArchive.h"
#include "support/SmallDisk.h"

namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

/// Courses whose working folder is a staged tree, wherever it stands and whatever it is made from.
class BuildStagedTest : public CliTest {
 protected:
  BuildStagedTest() {
    MakeSco().Save(Work());
    WriteCourse("sco.zip");
  }

  static ScoZip MakeSco() {
    ScoZip sco("sco");
    sco.Item("Title", "index.htm").File("index.htm", std::string(5000, 'x'));
    return sco.File("media/noise.bin", MakeNoise(std::size_t{2} << 20U, 1)).File("empty", "");
  }

  /// The package that a build makes.
  std::string Build(ProgramRun run) const {
    const ProgramResult result = run.Run();
    EXPECT_EQ(result.status, 0) << result.err;
    std::string package = Exists("out.zip") ? Read("out.zip") : "none";
    TzFileUtil::DeleteFile(Work() / "out.zip");
    return package;
  }
  [[nodiscard]] ProgramRun Run(const std::string& course = "course.yaml") const {
    return Program({"build", course, "-o", "out.zip"});
  }

  /// A build that fails leaves an earlier package alone, and nothing else.
  void ExpectFailure(ProgramRun run, const std::string& what, const std::string& why) const {
    Write("out/out.zip", "earlier");
    const ProgramResult result = run.Run();
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.err, StartsWith(what));
    EXPECT_THAT(result.err, HasSubstr(why));
    EXPECT_TRUE(Read("out/out.zip") == "earlier");
    EXPECT_THAT(ListTree(Work() / "out"), ElementsAre("out.zip"));
  }
};

TEST_F(BuildStagedTest, ThePackageHoldsWhatAnUnpackedFolderWouldGive) {
  ASSERT_EQ(Plexo({"build", "course.yaml", "-o", "staged.zip"}).status, 0);
  ASSERT_EQ(Plexo({"build", "course.yaml", "-o", "unpacked.zip", "--working-folder", "kept"}).status, 0);
  const ReadArchive staged(Work() / "staged.zip");
  const ReadArchive unpacked(Work() / "unpacked.zip");
  ASSERT_TRUE(staged.IsOpen() && unpacked.IsOpen());
  ASSERT_EQ(staged.Names(), unpacked.Names());
  for (const std::string& name : staged.Names()) {
    EXPECT_TRUE(staged.Content(name) == unpacked.Content(name)) << name;
    EXPECT_TRUE(Exists("kept/" + name)) << name;
  }
}

TEST_F(BuildStagedTest, TheFolderForTemporaryFilesMayBeNamedInAnyWay) {
  const std::string usual = Build(Run());
  const std::string temporary = Temporary().GetNative();
  fs::create_directory_symlink(temporary, (Work() / "link").GetNative());
  const std::string names[] = {temporary + "/", temporary + "//", temporary + "/../tmp/.",
                               (Work() / "link").GetNative(), (Work() / "link").GetNative() + "/"};
  for (const std::string& name : names) {
    EXPECT_TRUE(Build(Run().With("TMPDIR", name)) == usual) << name;
    EXPECT_THAT(ListTree(Temporary()), IsEmpty()) << name;
  }
}

TEST_F(BuildStagedTest, SourceAndTemporaryFilesMayBeOnAnotherDisk) {
  const std::string usual = Build(Run());
  const TestFolder other(TzPath("/dev/shm"));
  struct stat here = {};
  struct stat there = {};
  ASSERT_EQ(stat(Work().GetNative().c_str(), &here) + stat(other.Path().GetNative().c_str(), &there), 0);
  if (here.st_dev == there.st_dev) GTEST_SKIP() << "no other file system";
  EXPECT_TRUE(Build(Run().With("TMPDIR", other.Path().GetNative())) == usual);
  EXPECT_THAT(ListTree(other.Path()), IsEmpty());
  MakeSco().Save(other.Path());
  WriteCourse("'" + (other.Path() / "sco.zip").GetNative() + "'");
  EXPECT_TRUE(Build(Run()) == usual);
  EXPECT_THAT(ListTree(Temporary()), IsEmpty());
}

TEST_F(BuildStagedTest, ASourceThatMayOnlyBeReadIsEnough) {
  const std::string usual = Build(Run());
  const TzPath sources = Work() / "sources";
  TzFileUtil::CreateDirectory(sources, false);
  const std::string package = MakeSco().Save(sources).GetNative();
  WriteCourse("sources/sco.zip");
  chmod(package.c_str(), S_IRUSR);
  chmod(sources.GetNative().c_str(), S_IRUSR | S_IXUSR);
  // The administrator's right to write everywhere is given up.
  const auto giveUpRights = [] { prctl(PR_CAPBSET_DROP, CAP_DAC_OVERRIDE, 0, 0, 0); };
  EXPECT_TRUE(Build(Run().Prepare(giveUpRights)) == usual);
  EXPECT_EQ(fs::status(package).permissions(), fs::perms::owner_read);
  chmod(sources.GetNative().c_str(), S_IRWXU);
  EXPECT_THAT(ListTree(Temporary()), IsEmpty());
}

TEST_F(BuildStagedTest, ADiskTooSmallForTheSourcesIsToldAndLeftClean) {
  const SmallDisk small(std::size_t{1} << 20U);
  if (!small.IsMounted()) GTEST_SKIP() << "mounting isn't permitted";
  const std::string temporary = small.Path().GetNative();
  ExpectFailure(Program({"build", "course.yaml", "-o", "out/out.zip", "--force"}).With("TMPDIR", temporary),
                "sco.zip: Error extracting the ZIP contents!\n", "has room for");
  EXPECT_THAT(ListTree(small.Path()), IsEmpty());
}

TEST_F(BuildStagedTest, ADiskTooSmallForThePackageKeepsTheEarlierOne) {
  const SmallDisk small(std::size_t{1} << 20U);
  if (!small.IsMounted()) GTEST_SKIP() << "mounting isn't permitted";
  WriteFile(small.Path() / "out.zip", "earlier");
  const std::string target = (small.Path() / "out.zip").GetNative();
  const ProgramResult result = Plexo({"build", "course.yaml", "-o", target, "--force"});
  EXPECT_EQ(result.status, 3);
  EXPECT_THAT(result.err, StartsWith(target + ": There was some error while zipping the Plexo Package!\n"));
  EXPECT_THAT(result.err, HasSubstr("No space left on device"));
  EXPECT_THAT(ListTree(small.Path()), ElementsAre("out.zip"));
  EXPECT_TRUE(ReadFile(small.Path() / "out.zip") == "earlier");
}

}  // namespace
