// SPDX-License-Identifier: Apache-2.0
// Unpacking on a machine that fails, is full or is asked to stop, and unpacking a single entry.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>

#include "ExtractTest.h"
#include "support/FaultyFileSystem.h"

namespace {

using testing::ElementsAre;

class ExtractOnMachineTest : public ExtractTest {};

INSTANTIATE_TEST_SUITE_P(, ExtractOnMachineTest,
                         testing::Values(FileSystemKind::Disk, FileSystemKind::Staged),
                         testing::PrintToStringParamName());

TEST_P(ExtractOnMachineTest, LeavesNothingWhenTheMachineFails) {
  using Operation = FaultyFileSystem::Operation;
  const std::string bytes = RawZip{{{.name = "a", .content = "a"}, {.name = "b/"}}}.Build();
  const struct {
    FileSystemKind kind;
    Operation operation;
    int call;
    std::string text;
  } rows[] = {
      {FileSystemKind::Disk, Operation::MakeFolder, 1, "can't make the folder '" + Out().GetNative() + "'"},
      {FileSystemKind::Disk, Operation::MakeFolder, 2, "b: can't make the folder"},
      {FileSystemKind::Disk, Operation::OpenWrite, 1, "a: can't write"},
      {FileSystemKind::Disk, Operation::Write, 1, "a: can't write"},
      {FileSystemKind::Disk, Operation::Close, 1, "a: can't write"},
      {FileSystemKind::Staged, Operation::MakeFolder, 1, "can't make the folder '" + Out().GetNative() + "'"},
      {FileSystemKind::Staged, Operation::AddEntries, 1, "can't unpack"},
  };
  for (const auto& row : rows) {
    if (row.kind != GetParam()) continue;
    SCOPED_TRACE(row.text);
    const FaultyFileSystem faulty(row.operation, row.call, ENOSPC);
    ExpectFailure(bytes, kTzMachineFailure, "in.zip: " + row.text + ": No space left on device");
  }
}

TEST_P(ExtractOnMachineTest, EndsAtADamagedEntryWhileOthersAreStillToCome) {
  constexpr std::size_t kMiB = std::size_t{1} << 20U;
  const RawZip zip = {{{.name = "damaged", .content = std::string(kMiB, 'd'), .crc = 1},
                       {.name = "large", .content = std::string(12 * kMiB, 'l')}}};
  // Reports that take longer than the time between two of them keep the data of the large entry back, while
  // one worker waits for it and another finds the damage.
  recorded.reportTime = std::chrono::milliseconds(100);
  EXPECT_EQ(Extract(zip), kTzBadContent);
  EXPECT_THAT(recorded.Texts(), ElementsAre("in.zip: damaged: the entry's CRC-32 doesn't match"));
  ExpectNothing();
}

TEST_P(ExtractOnMachineTest, RefusesWhatTheDiskHasNoRoomFor) {
  // A file system that the kernel makes up has no room at all.
  if (!std::filesystem::exists("/proc/self")) GTEST_SKIP() << "no /proc";
  const TzPath out("/proc/plexo/deeper");
  const struct {
    std::uint64_t size;
    // Makes the archive long enough for what it says it unpacks to.
    std::size_t prefixBytes;
    std::string needed, left;
  } rows[] = {{1, 0, "1 KB", "0 KB"},
              {4097, 0, "5 KB", "0 KB"},
              {(20ULL << 20U) + 1, 0, "21 MB", "0 MB"},
              {10ULL << 30U, 52U << 20U, "10 GB", "0 GB"}};
  for (const auto& [size, prefixBytes, needed, left] : rows) {
    const RawZip zip = {{{.name = "a", .deflate = true, .zip64 = true, .size = size}},
                        std::string(prefixBytes, '-')};
    const TzPath archive = folder.Write("in.zip", zip.Build());
    recorded.problems.clear();
    EXPECT_EQ(TzZipUtils::ExtractFiles(archive, out), kTzMachineFailure) << needed;
    const std::string room = "but '" + out.GetNative() + "' has room for ";
    EXPECT_THAT(recorded.Texts(),
                ElementsAre(std::string("in.zip: unpacks to ").append(needed + ", ").append(room + left)));
  }
}

TEST_P(ExtractOnMachineTest, RefusesAFolderThatStandsAlready) {
  WriteFile(Out() / "mine", "mine");
  EXPECT_EQ(Extract({{{.name = "mine", .content = "theirs"}}}), kTzFailure);
  EXPECT_THAT(recorded.Texts(), ElementsAre(Out().GetNative() + ": exists already"));
  EXPECT_EQ(ReadFile(Out() / "mine"), "mine");
}

TEST_P(ExtractOnMachineTest, ReportsProgressAndStopsWhenAsked) {
  constexpr std::size_t kPackedBytes = 4 + 8;
  const RawZip zip = {
      {{.name = "a", .content = "1234"}, {.name = "b", .content = "567890", .deflate = true}}};
  ASSERT_EQ(Extract(zip), kTzSuccess);
  EXPECT_EQ(recorded.steps.front().activity, tested.IsStaged() ? "adding in.zip" : "unpacking in.zip");
  // What is held is copied and then checked.
  const std::size_t total = (tested.IsStaged() ? zip.Build().size() : 0) + kPackedBytes;
  EXPECT_EQ(recorded.steps.back().done, total);
  EXPECT_EQ(recorded.steps.back().total, total);
  const std::size_t reports = recorded.steps.size();
  DeleteOut();
  for (const std::size_t stop : {std::size_t{1}, reports}) {
    recorded.stopAt = stop;
    EXPECT_EQ(Extract(zip), kTzCancelled) << stop;
    EXPECT_THAT(recorded.Texts(), testing::IsEmpty());
    ExpectNothing();
  }
}

TEST_P(ExtractOnMachineTest, UnpacksOneEntryByItsName) {
  const TzPath archive = folder.Write("in.zip", RawZip{{{.name = "a\\imsmanifest.xml", .content = "<m/>"},
                                                        {.name = "b", .content = "b", .crc = 1}}}
                                                    .Build());
  const TzPath file = tested.Folder() / "file";
  WriteFile(file, "earlier");
  EXPECT_EQ(TzZipUtils::ExtractFile(archive, "a/imsmanifest.xml", file), kTzSuccess);
  EXPECT_EQ(ReadFile(file), "<m/>");
  EXPECT_EQ(TzZipUtils::ExtractFile(archive, "absent", tested.Folder() / "other"), kTzFailure);
  EXPECT_EQ(TzZipUtils::ExtractFile(archive, "a", tested.Folder() / "other"), kTzFailure);
  EXPECT_THAT(recorded.Texts(), testing::IsEmpty());
  EXPECT_EQ(TzZipUtils::ExtractFile(archive, "b", tested.Folder() / "other"), kTzBadContent);
  EXPECT_THAT(ListTree(tested.Folder()), ElementsAre("file"));

  folder.Write("in.zip", RawZip{{{.name = "a", .content = "a"}, {.name = "../b"}}}.Build());
  EXPECT_EQ(TzZipUtils::ExtractFile(archive, "a", tested.Folder() / "other"), kTzBadContent);
  EXPECT_THAT(ListTree(tested.Folder()), ElementsAre("file"));
}

}  // namespace
