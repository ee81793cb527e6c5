// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <filesystem>
#include <functional>
#include <random>

#include "host/files/TzReplacementFile.h"
#include "host/files/TzZipUtils.h"
#include "host/files/TzZipWriter.h"
#include "support/FaultyFileSystem.h"
#include "support/FileSystemUnderTest.h"
#include "support/ReadArchive.h"
#include "support/RecordedProblems.h"

namespace {

using testing::ElementsAre;

std::string Noise(std::size_t size) {
  std::mt19937 random(42);
  std::string noise(size, '\0');
  for (char& byte : noise) byte = static_cast<char>(random() & 0xFFU);
  return noise;
}

std::string Prose(std::size_t size) {
  std::string prose;
  for (std::size_t number = 0; prose.size() < size; ++number)
    prose += "line " + std::to_string(number * 7919) + "\n";
  return prose;
}

/// Packing a folder of either file system, of files that were written there.
class ZipTest : public testing::TestWithParam<FileSystemKind> {
 protected:
  TzErrorCodeEnum Zip(int flag = 0, const std::vector<TzPath>& extra = {}) {
    recorded.problems.clear();
    recorded.steps.clear();
    return TzZipUtils::ZipFiles({Course()}, Target(), Course(), flag, extra);
  }
  void Put(const std::string& name, const std::string& content) const { WriteFile(Course() / name, content); }
  void AddSmallCourse() {
    Put("imsmanifest.xml", "<manifest/>");
    Put("a.htm", Prose(500));
    Put("sub/b.htm", Prose(50'000));
    Put("Z.png", Noise(1000));
  }
  /// The call fails so, and the earlier archive is all that stands beside the target.
  void ExpectFailure(const std::function<TzErrorCodeEnum()>& zip, TzErrorCodeEnum code,
                     const std::vector<std::string>& texts) {
    folder.Write("out/course.zip", "earlier");
    EXPECT_EQ(zip(), code);
    EXPECT_EQ(recorded.Texts(), texts);
    EXPECT_THAT(ListDisk(out), ElementsAre("course.zip"));
    EXPECT_EQ(ReadFromDisk(Target()), "earlier");
  }

  [[nodiscard]] TzPath Course() const { return tested.Folder() / "course"; }
  [[nodiscard]] TzPath Target() const { return out / "course.zip"; }

  FileSystemUnderTest tested{GetParam()};
  TestFolder folder;
  const TzPath out = folder.Path() / "out";
  RecordedProblems recorded;

  void SetUp() override { std::filesystem::create_directory(out.GetNative()); }
};

INSTANTIATE_TEST_SUITE_P(, ZipTest, testing::Values(FileSystemKind::Disk, FileSystemKind::Staged),
                         testing::PrintToStringParamName());

TEST_P(ZipTest, PutsTheManifestFirstAndTheRestInTheOrderOfTheirBytes) {
  AddSmallCourse();
  Put("sub/Tür.txt", "tür");
  Put("sub-a.txt", "before the folder: '-' is less than '/'");
  ASSERT_EQ(tested.Files().MakeFolders(Course() / "empty/inner"), kTzSuccess);
  const TzPath sheet = folder.Write("elsewhere/style.xsd", "<schema/>");
  ASSERT_EQ(Zip(1, {sheet}), kTzSuccess) << testing::PrintToString(recorded.Texts());
  {
    const ReadArchive archive(Target());
    ASSERT_TRUE(archive.IsOpen());
    EXPECT_THAT(archive.Names(), ElementsAre("imsmanifest.xml", "Z.png", "a.htm", "empty/inner/", "style.xsd",
                                             "sub-a.txt", "sub/Tür.txt", "sub/b.htm"));
    EXPECT_EQ(archive.Content("sub/Tür.txt"), "tür");
    EXPECT_EQ(archive.Content("sub/b.htm"), Prose(50'000));
    EXPECT_EQ(archive.Content("Z.png"), Noise(1000));
    EXPECT_TRUE(archive.IsDeflated("sub/b.htm"));
    EXPECT_FALSE(archive.IsDeflated("Z.png"));
  }
  ASSERT_EQ(Zip(0), kTzSuccess);
  EXPECT_THAT(ReadArchive(Target()).Names(),
              ElementsAre("imsmanifest.xml", "Z.png", "a.htm", "sub-a.txt", "sub/Tür.txt", "sub/b.htm"));
}

TEST_P(ZipTest, TakesFilesByThemselvesAndEachOnce) {
  AddSmallCourse();
  const std::vector<TzPath> files = {Course() / "sub", Course() / "a.htm", Course() / "sub/b.htm"};
  ASSERT_EQ(TzZipUtils::ZipFiles(files, Target(), Course(), 0, {Course() / "Z.png"}), kTzSuccess);
  EXPECT_THAT(ReadArchive(Target()).Names(), ElementsAre("Z.png", "a.htm", "sub/b.htm"));
  ASSERT_EQ(TzZipUtils::ZipFiles({}, Target(), Course(), 0, {}), kTzSuccess);
  EXPECT_EQ(ReadFile(Target()).size(), 22U);
}

TEST_P(ZipTest, PacksEverySizeSoThatItComesBackWhole) {
  constexpr std::size_t kMiB = std::size_t{1} << 20U;
  const struct {
    std::string name;
    std::string content;
    bool isDeflated;
  } files[] = {
      {"empty", "", false},
      {"tiny", "x", false},
      {"judged-prose", Prose(kMiB), true},
      {"judged-noise", Noise(kMiB), false},
      {"streamed-prose", Prose(18 * kMiB), true},
      {"streamed-noise", Noise(18 * kMiB), false},
      {"streamed-mostly-in-vain", Prose(std::size_t{64} << 10U) + Noise(17 * kMiB), true},
  };
  for (const auto& file : files) Put(file.name, file.content);
  ASSERT_EQ(Zip(), kTzSuccess) << testing::PrintToString(recorded.Texts());
  const ReadArchive archive(Target());
  ASSERT_TRUE(archive.IsOpen());
  for (const auto& file : files) {
    EXPECT_EQ(archive.IsDeflated(file.name), file.isDeflated) << file.name;
    EXPECT_TRUE(archive.Content(file.name) == file.content) << file.name;
  }
  ASSERT_EQ(TzZipUtils::ExtractFiles(Target(), tested.Folder() / "back"), kTzSuccess);
  for (const auto& file : files)
    EXPECT_TRUE(ReadFile(tested.Folder() / "back" / file.name) == file.content) << file.name;
}

TEST_P(ZipTest, WritesTheSameBytesAgain) {
  AddSmallCourse();
  for (int index = 0; index < 200; ++index) {
    Put("many/" + std::to_string(index), Prose(static_cast<std::size_t>(index) * 50));
  }
  ASSERT_EQ(Zip(), kTzSuccess);
  const std::string first = ReadFile(Target());
  for (int round = 0; round < 5; ++round) {
    Put("a.htm", Prose(500));
    ASSERT_EQ(Zip(), kTzSuccess);
    EXPECT_TRUE(ReadFile(Target()) == first);
  }
}

TEST_P(ZipTest, DatesEntriesByTheEnvironmentAlone) {
  AddSmallCourse();
  const struct {
    const char* epoch;
    unsigned date;
    unsigned time;
  } rows[] = {
      {"1700000000", (43U << 9U) | (11U << 5U) | 14U, (22U << 11U) | (13U << 5U) | 10U},
      {nullptr, (1U << 5U) | 1U, 0},
      {"nonsense", (1U << 5U) | 1U, 0},
      {"-5", (1U << 5U) | 1U, 0},
      {"9000000000", (127U << 9U) | (12U << 5U) | 31U, (23U << 11U) | (59U << 5U) | 29U},
  };
  for (const auto& row : rows) {
    if (row.epoch != nullptr) setenv("SOURCE_DATE_EPOCH", row.epoch, 1);
    ASSERT_EQ(Zip(), kTzSuccess);
    unsetenv("SOURCE_DATE_EPOCH");
    const std::string bytes = ReadFile(Target());
    const auto field = [&](std::size_t at) {
      return static_cast<unsigned char>(bytes[at]) |
             static_cast<unsigned>(static_cast<unsigned char>(bytes[at + 1])) << 8U;
    };
    EXPECT_EQ(field(10), row.time) << (row.epoch != nullptr ? row.epoch : "none");
    EXPECT_EQ(field(12), row.date) << (row.epoch != nullptr ? row.epoch : "none");
  }
}

TEST_P(ZipTest, UsesZip64WhereANumberNeedsIt) {
  // More than 4 GiB, nearly all of it a hole, and more entries than 16 bits can count.
  constexpr std::uint64_t kBig = (std::uint64_t{5} << 30U) + 7;
  TzReplacementFile file(Target());
  ASSERT_TRUE(file.Create());
  TzZipWriter writer(file, 0);
  ASSERT_TRUE(writer.Begin({"big", false, 0, 0, kBig}));
  ASSERT_TRUE(file.Truncate(file.GetSize() + kBig));
  ASSERT_TRUE(writer.End({"big", false, 0, 0, kBig}));
  for (int index = 0; index < 0xFFFF; ++index) {
    ASSERT_TRUE(writer.Add({"after" + std::to_string(index), false, 0, 0, 0}, {}));
  }
  ASSERT_TRUE(writer.Finish() && file.Commit());
  const ReadArchive archive(Target());
  ASSERT_TRUE(archive.IsOpen());
  EXPECT_EQ(archive.Size("big"), kBig);
  EXPECT_EQ(archive.Names().size(), 0x10000U);
  EXPECT_EQ(archive.Size("after65534"), 0U);
  EXPECT_EQ(TzZipUtils::ExtractFile(Target(), "after65534", out / "after"), kTzSuccess);
}

TEST_P(ZipTest, RefusesWhatCantBeAnEntry) {
  AddSmallCourse();
  const TzPath other = folder.Write("other/a.htm", "another");
  const TzPath sub = folder.Write("other/sub", "a file");
  const struct {
    std::function<TzErrorCodeEnum()> zip;
    TzErrorCodeEnum code;
    std::string text;
  } rows[] = {
      {[&] { return Zip(0, {other}); }, kTzBadContent,
       "course.zip: a.htm: two files have this name in the archive"},
      {[&] { return Zip(0, {sub}); }, kTzBadContent,
       "course.zip: sub: a file and a folder have this name in the archive"},
      {[&] { return Zip(0, {Course()}); }, kTzFailure,
       "course.zip: " + Course().GetNative() + ": is a folder"},
      {[&] { return TzZipUtils::ZipFiles({other}, Target(), Course(), 0, {}); }, kTzFailure,
       "course.zip: " + other.GetNative() + ": lies outside '" + Course().GetNative() + "'"},
      {[&] { return TzZipUtils::ZipFiles({Course() / "absent"}, Target(), Course(), 0, {}); },
       kTzMachineFailure, "course.zip: absent: can't read: No such file or directory"},
  };
  for (const auto& row : rows) {
    recorded.problems.clear();
    ExpectFailure(row.zip, row.code, {row.text});
  }

  const struct {
    std::string name;
    std::string text;
  } names[] = {
      {"a\\b", "a\\b: the file's name holds a back-slash"},
      {"\xFF", "\u00A0: the file's name isn't UTF-8"},
      {"nul.htm", "nul.htm: the entry's name is that of a device"},
  };
  for (const auto& row : names) {
    const TzPath path = TzPath::FromNative(Course().GetNative() + "/" + row.name);
    WriteFile(path, "content");
    ExpectFailure([this] { return Zip(); }, kTzBadContent, {"course.zip: " + row.text});
    EXPECT_EQ(tested.Files().Delete(path), kTzSuccess);
  }
  if (tested.IsStaged()) return;
  std::filesystem::create_symlink("a.htm", (Course() / "link").GetNative());
  ExpectFailure([this] { return Zip(); }, kTzBadContent,
                {"course.zip: link: is a link or a device, not a file"});
}

TEST_P(ZipTest, KeepsTheEarlierArchiveWhenReadingFails) {
  using Operation = FaultyFileSystem::Operation;
  Put("big", Noise(std::size_t{17} << 20U));
  const struct {
    Operation operation;
    int call;
    std::string text;
  } rows[] = {
      {Operation::List, 1, Course().GetNative() + ": can't read the folder: Input/output error"},
      {Operation::OpenRead, 1, "big: can't read: Input/output error"},
      {Operation::Read, 1, "big: can't read: Input/output error"},
      {Operation::OpenRead, 2, "big: can't read: Input/output error"},
      {Operation::Read, 9, "big: can't read: Input/output error"},
  };
  for (const auto& row : rows) {
    const FaultyFileSystem faulty(row.operation, row.call, EIO);
    ExpectFailure([this] { return Zip(); }, kTzMachineFailure, {"course.zip: " + row.text});
  }
  EXPECT_EQ(tested.Files().Delete(Course() / "big"), kTzSuccess);
  for (int index = 0; index < 40; ++index) Put(std::to_string(10 + index), "content");
  const FaultyFileSystem faulty(Operation::OpenRead, 1, EIO);
  ExpectFailure([this] { return Zip(); }, kTzMachineFailure,
                {"course.zip: 10: can't read: Input/output error"});
}

TEST_P(ZipTest, KeepsTheEarlierArchiveWhenTheDiskIsFull) {
  Put("big", Noise(std::size_t{3} << 20U));
  const auto previousHandler = std::signal(SIGXFSZ, SIG_IGN);
  rlimit previous = {};
  getrlimit(RLIMIT_FSIZE, &previous);
  const rlimit tight = {rlim_t{1} << 20U, previous.rlim_max};
  ExpectFailure(
      [&] {
        setrlimit(RLIMIT_FSIZE, &tight);
        const TzErrorCodeEnum result = Zip();
        setrlimit(RLIMIT_FSIZE, &previous);
        return result;
      },
      kTzMachineFailure, {"course.zip: can't write: File too large"});
  std::signal(SIGXFSZ, previousHandler);
}

TEST_P(ZipTest, NamesTheFolderThatItCantWriteIn) {
  AddSmallCourse();
  const TzPath missing = folder.Path() / "missing";
  EXPECT_EQ(TzZipUtils::ZipFiles({Course()}, missing / "course.zip", Course(), 0, {}), kTzMachineFailure);
  EXPECT_EQ(TzZipUtils::ZipFiles({Course()}, out, Course(), 0, {}), kTzMachineFailure);
  EXPECT_THAT(
      recorded.Texts(),
      ElementsAre(missing.GetNative() + ": can't make a file in the folder: No such file or directory",
                  out.GetNative() + ": is a folder"));
}

TEST_P(ZipTest, ReportsProgressAndStopsWhenAsked) {
  AddSmallCourse();
  Put("big", Noise(std::size_t{17} << 20U));
  ASSERT_EQ(Zip(), kTzSuccess);
  const auto steps = recorded.steps;
  EXPECT_EQ(steps.front().activity, "packing course.zip");
  EXPECT_EQ(steps.front().done, 0U);
  EXPECT_EQ(steps.back().done, steps.back().total);
  EXPECT_GT(steps.back().total, 17U << 20U);
  for (std::size_t index = 1; index < steps.size(); ++index)
    EXPECT_GE(steps[index].done, steps[index - 1].done);
  for (const std::size_t stop : {std::size_t{1}, std::size_t{2}}) {
    recorded.stopAt = stop;
    ExpectFailure([this] { return Zip(); }, kTzCancelled, {});
  }
}

TEST_P(ZipTest, LeavesNothingBehindWhenKilled) {
  AddSmallCourse();
  folder.Write("out/course.zip", "earlier");
  class Killer : public ITzProgressSink {
   public:
    bool Report(std::string_view, std::uint64_t done, std::uint64_t total) override {
      if (done == total) raise(SIGKILL);
      return true;
    }
  };
  const pid_t child = fork();
  if (child == 0) {
    Killer killer;
    TzSession session;
    session.progress = &killer;
    TzSession::Install(session);
    static_cast<void>(Zip());
    _exit(0);
  }
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  EXPECT_TRUE(WIFSIGNALED(status));
  EXPECT_THAT(ListDisk(out), ElementsAre("course.zip"));
  EXPECT_EQ(ReadFile(Target()), "earlier");
}

TEST_P(ZipTest, GivesANewArchiveTheUsualPermissionsAndKeepsThoseOfAnEarlierOne) {
  AddSmallCourse();
  const auto getMode = [this] {
    struct stat status = {};
    EXPECT_EQ(stat(Target().GetNative().c_str(), &status), 0);
    return status.st_mode & 0777U;
  };
  const mode_t mask = umask(027);
  ASSERT_EQ(Zip(), kTzSuccess);
  umask(mask);
  EXPECT_EQ(getMode(), 0640U);
  chmod(Target().GetNative().c_str(), 0600);
  ASSERT_EQ(Zip(), kTzSuccess);
  EXPECT_EQ(getMode(), 0600U);
}

}  // namespace
