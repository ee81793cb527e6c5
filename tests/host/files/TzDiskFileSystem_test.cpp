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

TEST_F(DiskFileSystemTest, CopiesContentIntoAWritableFile) {
  const std::string content(3'000'000, 'c');
  const TzPath source = folder.Write("source", content);
  const TzPath target = folder.Write("target", "earlier");
  fs::permissions(source.GetNative(), fs::perms::owner_read);
  fs::permissions(target.GetNative(), fs::perms::owner_read);
  EXPECT_EQ(disk.Copy(source, target, TzCopyMode::FailIfExists), kTzFailure);
  EXPECT_EQ(ReadFile(target), "earlier");
  EXPECT_EQ(disk.Copy(source, target, TzCopyMode::Replace), kTzSuccess);
  EXPECT_TRUE(ReadFile(target) == content);
  EXPECT_FALSE(disk.IsReadOnly(target));
  EXPECT_TRUE(disk.IsReadOnly(source));
  EXPECT_EQ(disk.Copy(source, source, TzCopyMode::Replace), kTzSuccess);
  EXPECT_EQ(disk.GetSize(source), content.size());
  EXPECT_EQ(disk.Copy(folder.Path(), folder.Path() / "other", TzCopyMode::Replace), kTzFailure);
  EXPECT_EQ(disk.Copy(folder.Path() / "absent", target, TzCopyMode::Replace), kTzFailure);
  EXPECT_TRUE(ReadFile(target) == content);
}

TEST_F(DiskFileSystemTest, ListsOneLevelInTheOrderOfNames) {
  folder.Write("b/inner", "");
  folder.Write("a", "");
  folder.Write("B", "");
  std::vector<TzPath> entries = {TzPath("stale")};
  EXPECT_EQ(disk.List(folder.Path(), entries), kTzSuccess);
  EXPECT_THAT(entries, ElementsAre(folder.Path() / "B", folder.Path() / "a", folder.Path() / "b"));
  EXPECT_EQ(disk.List(folder.Path() / "a", entries), kTzFailure);
}

TEST_F(DiskFileSystemTest, ReadsAndWritesInPieces) {
  const TzPath file = folder.Path() / "file";
  const std::string large(100'000, 'l');
  const auto writer = disk.OpenWrite(file);
  ASSERT_NE(writer, nullptr);
  for (const std::string& piece : {std::string("small"), large, std::string("end")}) {
    EXPECT_EQ(writer->Write(Bytes(piece)), kTzSuccess);
  }
  EXPECT_EQ(writer->Close(), kTzSuccess);
  std::string read(200'000, '\0');
  const auto reader = disk.OpenRead(file);
  ASSERT_NE(reader, nullptr);
  read.resize(static_cast<std::size_t>(reader->Read(std::as_writable_bytes(std::span(read)))));
  EXPECT_TRUE(read == "small" + large + "end");
  std::string none(1, '\0');
  EXPECT_EQ(reader->Read(std::as_writable_bytes(std::span(none))), 0);
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

TEST_F(DiskFileSystemTest, OpensOnlyFiles) {
  const TzPath pipe = folder.Path() / "pipe";
  ASSERT_EQ(mkfifo(pipe.GetNative().c_str(), 0600), 0);
  EXPECT_EQ(disk.OpenRead(pipe), nullptr);
  EXPECT_EQ(disk.OpenRead(folder.Path()), nullptr);
  EXPECT_EQ(errno, EISDIR);
  EXPECT_EQ(disk.OpenRead(folder.Path() / "absent"), nullptr);
  EXPECT_EQ(errno, ENOENT);
  EXPECT_EQ(disk.OpenWrite(folder.Path() / "absent/file"), nullptr);
}

}  // namespace
