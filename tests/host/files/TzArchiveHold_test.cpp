// SPDX-License-Identifier: Apache-2.0
#include "host/files/TzArchiveHold.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <cerrno>
#include <csignal>
#include <filesystem>

#include "host/files/TzFile.h"
#include "host/files/TzZipUtils.h"
#include "support/FileSystemUnderTest.h"
#include "support/RawZip.h"
#include "support/RecordedProblems.h"
#include "support/ScoZip.h"
#include "support/SmallDisk.h"

namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::EndsWith;
using testing::IsEmpty;
using testing::StartsWith;

constexpr std::size_t kMiB = std::size_t{1} << 20U;

dev_t GetDevice(const TzPath& path) {
  struct stat status = {};
  return stat(path.GetNative().c_str(), &status) == 0 ? status.st_dev : 0;
}

/// Archives of a size that matters to the disk.
class ArchiveHoldTest : public testing::Test {
 protected:
  static std::string MakeArchive(std::size_t size) {
    return RawZip{{{.name = "noise", .content = MakeNoise(size, 1)}}}.Build();
  }
  TzErrorCodeEnum Extract(const TzPath& folder) {
    recorded.problems.clear();
    return TzZipUtils::ExtractFiles(chosen.Path() / "in.zip", folder);
  }
  TzErrorCodeEnum Publish(const TzPath& folder, const TzPath& target) {
    recorded.problems.clear();
    return TzZipUtils::ZipFiles({folder}, target, folder, 0, {});
  }

  FileSystemUnderTest tested{FileSystemKind::Staged};
  TestFolder chosen;
  RecordedProblems recorded;
};

TEST_F(ArchiveHoldTest, AFileThatCantGrowLeavesNothing) {
  chosen.Write("in.zip", MakeArchive(2 * kMiB));
  const auto previousHandler = std::signal(SIGXFSZ, SIG_IGN);
  rlimit previous = {};
  getrlimit(RLIMIT_FSIZE, &previous);
  const rlimit tight = {kMiB, previous.rlim_max};
  setrlimit(RLIMIT_FSIZE, &tight);
  EXPECT_EQ(Extract(tested.Folder() / "sco"), kTzMachineFailure);
  setrlimit(RLIMIT_FSIZE, &previous);
  std::signal(SIGXFSZ, previousHandler);
  EXPECT_THAT(recorded.Texts(), ElementsAre("in.zip: can't keep a copy of it in '" +
                                            tested.Folder().GetNative() + "': File too large"));
  EXPECT_THAT(ListTree(tested.Folder()), IsEmpty());
  EXPECT_THAT(ListDisk(tested.Folder()), IsEmpty());
}

TEST_F(ArchiveHoldTest, ADiskWithoutRoomIsToldBeforeAnythingIsWrittenToIt) {
  const SmallDisk small(kMiB);
  if (!small.IsMounted()) GTEST_SKIP() << "mounting isn't permitted";
  const TzPath scratch = small.Path() / "scratch";
  ASSERT_EQ(tested.Files().MakeScratchFolder(scratch), kTzSuccess);
  chosen.Write("in.zip", MakeArchive(2 * kMiB));
  EXPECT_EQ(Extract(scratch / "sco"), kTzMachineFailure);
  EXPECT_THAT(recorded.Texts(),
              ElementsAre(AllOf(StartsWith("in.zip: takes 2049 KB, but '" + scratch.GetNative()),
                                EndsWith("' has room for 1024 KB"))));
  EXPECT_THAT(ListDisk(small.Path()), ElementsAre("scratch"));
}

TEST_F(ArchiveHoldTest, ADiskThatFillsTakesNothingFromWhatStands) {
  const SmallDisk small(kMiB);
  if (!small.IsMounted()) GTEST_SKIP() << "mounting isn't permitted";
  const TzPath scratch = small.Path() / "scratch";
  const TzPath target = small.Path() / "course.zip";
  ASSERT_EQ(tested.Files().MakeScratchFolder(scratch), kTzSuccess);
  WriteFile(target, "earlier");
  chosen.Write("in.zip", RawZip{{{.name = "noise", .content = MakeNoise(kMiB / 2, 1)},
                                 {.name = "zeros", .content = std::string(2 * kMiB, '\0'), .deflate = true}}}
                             .Build());
  ASSERT_EQ(Extract(scratch / "sco"), kTzSuccess) << testing::PrintToString(recorded.Texts());
  const auto kept = ListDisk(small.Path());

  EXPECT_TRUE(tested.Files().GetRealFile(scratch / "sco/zeros").IsEmpty());
  EXPECT_EQ(errno, ENOSPC);
  EXPECT_EQ(tested.Files().Copy(scratch / "sco/zeros", small.Path() / "copy", TzCopyMode::Replace),
            kTzMachineFailure);
  EXPECT_EQ(errno, ENOSPC);
  EXPECT_EQ(Publish(scratch, target), kTzMachineFailure);
  EXPECT_THAT(recorded.Texts(), ElementsAre("course.zip: can't write: No space left on device"));
  EXPECT_EQ(ReadFromDisk(target), "earlier");
  EXPECT_EQ(ListDisk(small.Path()), kept);

  const auto stream = tested.Files().OpenWrite(scratch / "sco/zeros");
  ASSERT_NE(stream, nullptr);
  const std::string noise = MakeNoise(kMiB, 2);
  EXPECT_EQ(stream->Write(std::as_bytes(std::span(noise))), kTzMachineFailure);
  EXPECT_EQ(stream->Close(), kTzMachineFailure);
  EXPECT_EQ(errno, ENOSPC);
  EXPECT_EQ(tested.Files().Delete(scratch / "sco/zeros"), kTzSuccess);
  EXPECT_TRUE(ReadFile(scratch / "sco/noise") == MakeNoise(kMiB / 2, 1));
  EXPECT_EQ(ListDisk(small.Path()), kept);
}

TEST_F(ArchiveHoldTest, SourceFolderAndPackageMayEachBeOnAnotherDisk) {
  const TestFolder shared(TzPath("/dev/shm"));
  if (GetDevice(shared.Path()) == GetDevice(chosen.Path())) GTEST_SKIP() << "no other file system";
  chosen.Write("in.zip", MakeArchive(3 * kMiB));
  shared.Write("in.zip", MakeArchive(3 * kMiB));
  const TzPath scratch = shared.Path() / "scratch";
  ASSERT_EQ(tested.Files().MakeScratchFolder(scratch), kTzSuccess);
  std::vector<std::string> packages;
  for (const TzPath& folder : {tested.Folder(), scratch}) {
    for (const TzPath& source : {chosen.Path(), shared.Path()}) {
      ASSERT_EQ(TzZipUtils::ExtractFiles(source / "in.zip", folder / "sco"), kTzSuccess);
      for (const TzPath& target : {chosen.Path() / "out.zip", shared.Path() / "out.zip"}) {
        ASSERT_EQ(Publish(folder, target), kTzSuccess) << testing::PrintToString(recorded.Texts());
        EXPECT_TRUE(packages.empty() || ReadFromDisk(target) == packages.front());
        packages.push_back(ReadFromDisk(target));
      }
      EXPECT_EQ(tested.Files().Delete(folder / "sco"), kTzSuccess);
    }
    EXPECT_THAT(ListDisk(folder), IsEmpty());
  }
}

TEST_F(ArchiveHoldTest, ASourceThatNobodyMayWriteToIsReadAndLeftAsItIs) {
  namespace fs = std::filesystem;
  const TzPath archive = chosen.Write("in.zip", MakeArchive(kMiB));
  fs::permissions(archive.GetNative(), fs::perms::owner_read);
  fs::permissions(chosen.Path().GetNative(), fs::perms::owner_read | fs::perms::owner_exec);
  ASSERT_EQ(Extract(tested.Folder() / "sco"), kTzSuccess);
  EXPECT_FALSE(tested.Files().IsReadOnly(tested.Folder() / "sco/noise"));
  WriteFile(tested.Folder() / "sco/noise", "written");
  EXPECT_EQ(Publish(tested.Folder(), tested.Outside() / "out.zip"), kTzSuccess);
  EXPECT_EQ(tested.Files().Delete(tested.Folder()), kTzSuccess);
  EXPECT_EQ(fs::status(archive.GetNative()).permissions(), fs::perms::owner_read);
  EXPECT_TRUE(ReadFromDisk(archive) == MakeArchive(kMiB));
  fs::permissions(chosen.Path().GetNative(), fs::perms::owner_all);
}

TEST_F(ArchiveHoldTest, ABorrowedArchiveIsReadWhereItIsAndMustntChange) {
  const std::string bytes = MakeArchive(kMiB);
  const TzPath archive = chosen.Write("in.zip", bytes);
  ASSERT_EQ(TzZipUtils::BorrowFiles(archive, tested.Folder() / "sco"), kTzSuccess);
  EXPECT_THAT(ListDisk(tested.Folder()), IsEmpty());
  // Another file under its name is none of its business; what was opened is still there.
  std::filesystem::remove(archive.GetNative());
  chosen.Write("in.zip", "another");
  EXPECT_EQ(Publish(tested.Folder() / "sco", chosen.Path() / "out.zip"), kTzSuccess);
  EXPECT_EQ(ReadFile(tested.Folder() / "sco/noise"), MakeNoise(kMiB, 1));

  chosen.Write("in.zip", bytes);
  ASSERT_EQ(TzZipUtils::BorrowFiles(archive, tested.Folder() / "other"), kTzSuccess);
  chosen.Write("in.zip", bytes);
  EXPECT_EQ(Publish(tested.Folder() / "other", chosen.Path() / "out.zip"), kTzFailure);
  EXPECT_THAT(recorded.Texts(), ElementsAre("in.zip: changed while it was read; try again"));

  chosen.Write("in.zip", bytes.substr(0, bytes.size() / 2));
  EXPECT_EQ(Publish(tested.Folder() / "other", chosen.Path() / "out.zip"), kTzFailure);
  EXPECT_THAT(recorded.Texts(), ElementsAre("in.zip: changed while it was read; try again"));
  EXPECT_EQ(TzZipUtils::BorrowFiles(archive, tested.Folder() / "cut"), kTzBadContent);
  EXPECT_FALSE(TzFile(tested.Folder() / "cut").Exists());
}

TEST_F(ArchiveHoldTest, NothingIsMadeOfABorrowedArchiveBeforeAllOfItWasChecked) {
  const TzPath target = chosen.Write("out.zip", "earlier");
  const TzPath damaged = chosen.Write("damaged.zip", RawZip{{{.name = "a/page", .content = "whole"},
                                                             {.name = "b/noise", .content = "x", .crc = 1}}}
                                                         .Build());
  ASSERT_EQ(TzZipUtils::BorrowFiles(damaged, tested.Folder() / "damaged"), kTzSuccess);
  // Nor twice, and not even of what is whole.
  for (const char* part : {"damaged/b", "damaged/a"}) {
    EXPECT_EQ(Publish(tested.Folder() / part, target), kTzBadContent);
    EXPECT_THAT(recorded.Texts(), ElementsAre("damaged.zip: b/noise: the entry's CRC-32 doesn't match"));
  }

  constexpr std::size_t kLongToCheck = 200 * kMiB;
  const TzPath large = chosen.Write(
      "large.zip",
      RawZip{{{.name = "a/page", .content = "whole"}, RawZip::Zeros("b/zeros", kLongToCheck)}}.Build());
  ASSERT_EQ(TzZipUtils::BorrowFiles(large, tested.Folder() / "large"), kTzSuccess);
  recorded.steps.clear();
  recorded.stopAt = 2;
  EXPECT_EQ(Publish(tested.Folder() / "large/a", target), kTzCancelled);
  EXPECT_EQ(ReadFromDisk(target), "earlier");
  EXPECT_THAT(ListDisk(chosen.Path()), ElementsAre("damaged.zip", "large.zip", "out.zip"));
}

}  // namespace
