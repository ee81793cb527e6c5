// SPDX-License-Identifier: Apache-2.0
#include "host/files/TzDiskFileSystem.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cerrno>
#include <filesystem>

#include "support/TestSession.h"

namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;

class DiskFileSystemTest : public testing::Test {
 protected:
  TestFolder folder;
  TzDiskFileSystem disk;
};

std::span<const std::byte> Bytes(const std::string& text) { return std::as_bytes(std::span(text)); }

TEST_F(DiskFileSystemTest, DeletesAFolderButNothingThatItsLinksLeadTo) {
  const TzPath kept = folder.Write("kept/file", "kept");
  folder.Write("gone/sub/file", "gone");
  fs::create_directory_symlink(kept.GetParentTzPath().GetNative(), (folder.Path() / "gone/link").GetNative());
  fs::create_directory_symlink(kept.GetParentTzPath().GetNative(), (folder.Path() / "link").GetNative());
  EXPECT_EQ(disk.GetKind(folder.Path() / "link"), TzNodeKind::Other);
  EXPECT_EQ(disk.Delete(folder.Path() / "gone"), kTzSuccess);
  EXPECT_EQ(disk.Delete(folder.Path() / "link"), kTzSuccess);
  EXPECT_EQ(disk.Delete(folder.Path() / "absent"), kTzSuccess);
  EXPECT_THAT(ListTree(folder.Path()), ElementsAre("kept/", "kept/file"));
}

TEST_F(DiskFileSystemTest, DeletesAFolderDeeperThanThereAreDescriptors) {
  std::string deep = (folder.Path() / "deep").GetNative();
  for (int level = 0; level < 1100; ++level, deep += "/d") ASSERT_EQ(mkdir(deep.c_str(), 0700), 0);
  EXPECT_EQ(disk.Delete(folder.Path() / "deep"), kTzSuccess);
  EXPECT_THAT(ListTree(folder.Path()), IsEmpty());
}

TEST_F(DiskFileSystemTest, TellsOfAFullDiskUntilTheEnd) {
  const auto stream = disk.OpenWrite(TzPath("/dev/full"));
  ASSERT_NE(stream, nullptr);
  EXPECT_EQ(stream->Write(Bytes("small")), kTzSuccess);
  for (const auto result : {stream->Flush(), stream->Write(Bytes("more")), stream->Close()}) {
    EXPECT_EQ(result, kTzMachineFailure);
  }
  EXPECT_EQ(errno, ENOSPC);
}

TEST_F(DiskFileSystemTest, OpensAndCopiesOnlyFiles) {
  const TzPath pipe = folder.Path() / "pipe";
  folder.Write("file", "content");
  ASSERT_EQ(mkfifo(pipe.GetNative().c_str(), 0600), 0);
  EXPECT_EQ(disk.OpenRead(pipe), nullptr);
  EXPECT_EQ(errno, EINVAL);
  EXPECT_EQ(disk.Copy(pipe, folder.Path() / "copy", TzCopyMode::FailIfExists), kTzFailure);
  EXPECT_TRUE(disk.GetRealFile(pipe).IsEmpty());
  const TzPath link = folder.Path() / "link";
  for (const char* target : {"pipe", "absent", "file"}) {
    fs::remove(link.GetNative());
    fs::create_symlink(target, link.GetNative());
    EXPECT_EQ(disk.GetRealFile(link).IsEmpty(), target != std::string("file")) << target;
  }
  EXPECT_EQ(disk.GetSize(pipe), 0U);
}

TEST_F(DiskFileSystemTest, ACopyTakesThePlaceOfALinkAndLeavesWhatItLeadsToAlone) {
  const TzPath source = folder.Write("source", "source");
  const TzPath kept = folder.Write("kept", "kept");
  const TzPath link = folder.Path() / "link";
  fs::create_symlink("kept", link.GetNative());
  EXPECT_EQ(disk.Copy(source, link, TzCopyMode::FailIfExists), kTzFailure);
  EXPECT_EQ(disk.Copy(link, kept, TzCopyMode::Replace), kTzSuccess);
  EXPECT_EQ(disk.GetKind(link), TzNodeKind::Other);
  EXPECT_EQ(disk.Copy(source, link, TzCopyMode::Replace), kTzSuccess);
  EXPECT_EQ(disk.GetKind(link), TzNodeKind::File);
  EXPECT_EQ(ReadFile(kept), "kept");
}

}  // namespace
