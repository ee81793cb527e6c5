// SPDX-License-Identifier: Apache-2.0
// Opening, reading and writing, and what becomes of streams that are open.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <climits>

#include "FileSystemTest.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::span<const std::byte> Bytes(std::string_view text) { return std::as_bytes(std::span(text)); }

class FileStreamTest : public FileSystemTest {};

INSTANTIATE_TEST_SUITE_P(, FileStreamTest, testing::Values(FileSystemKind::Disk, FileSystemKind::Staged),
                         testing::PrintToStringParamName());

TEST_P(FileStreamTest, ReadsAndWritesInPieces) {
  const std::string large(100'000, 'l');
  const auto writer = files.OpenWrite(At("file"));
  ASSERT_NE(writer, nullptr);
  for (const std::string& piece : {std::string("small"), large, std::string(), std::string("end")}) {
    EXPECT_EQ(writer->Write(Bytes(piece)), kTzSuccess);
  }
  EXPECT_EQ(writer->Flush(), kTzSuccess);
  EXPECT_EQ(files.GetSize(At("file")), large.size() + 8);
  EXPECT_EQ(writer->Write(Bytes("!")), kTzSuccess);
  EXPECT_EQ(writer->Close(), kTzSuccess);
  const auto reader = files.OpenRead(At("file"));
  ASSERT_NE(reader, nullptr);
  EXPECT_EQ(ReadSome(*reader, 2), "sm");
  EXPECT_EQ(ReadSome(*reader, 0), "");
  EXPECT_TRUE("sm" + ReadSome(*reader, 200'000) == "small" + large + "end!");
  EXPECT_EQ(ReadSome(*reader, 1), "");
}

TEST_P(FileStreamTest, OpensWhatCanBeOpened) {
  const struct {
    std::string path;
    int errorReading, errorWriting;
  } rows[] = {
      {"file", 0, 0},
      {"folder/../file", 0, 0},
      {"new", ENOENT, 0},
      {longest, ENOENT, 0},
      {"folder", EISDIR, EISDIR},
      {"", EISDIR, EISDIR},
      {"absent/file", ENOENT, ENOENT},
      {"file/sub", ENOTDIR, ENOTDIR},
      {tooLong, ENAMETOOLONG, ENAMETOOLONG},
      {"folder/" + tooLong + "/file", ENAMETOOLONG, ENAMETOOLONG},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.path);
    MakeTree();
    const auto answer = [](const auto& stream) {
      return stream != nullptr ? kTzSuccess : TzFileSystem::Failed();
    };
    ExpectError(answer(files.OpenRead(At(row.path))), row.errorReading);
    ExpectError(answer(files.OpenWrite(At(row.path))), row.errorWriting);
    if (row.errorWriting == 0) {
      EXPECT_EQ(files.GetSize(At(row.path)), 0U);
    } else {
      EXPECT_EQ(ListTree(tested.Folder()), wholeTree);
    }
    EXPECT_EQ(files.Delete(tested.Folder()), kTzSuccess);
    EXPECT_EQ(files.MakeFolder(tested.Folder()), kTzSuccess);
  }
}

TEST_P(FileStreamTest, RefusesAPathThatIsLongerThanTheSystemTakes) {
  std::string deep;
  while (At(deep).GetNative().size() + 205 < PATH_MAX) {
    deep += (deep.empty() ? "" : "/") + std::string(200, 'd');
    ASSERT_EQ(files.MakeFolder(At(deep)), kTzSuccess);
  }
  const std::size_t room = PATH_MAX - 1 - At(deep + "/").GetNative().size() - 1;
  const std::string longestPath = deep + "/" + std::string(room, 'n');
  for (const auto& [path, error] : {std::pair(longestPath, 0), {longestPath + "n", ENAMETOOLONG}}) {
    SCOPED_TRACE(path.size());
    WriteFile(At("file"), "content");
    const auto answer = [](const auto& stream) {
      return stream != nullptr ? kTzSuccess : TzFileSystem::Failed();
    };
    ExpectError(files.MakeFolder(At(path)), error);
    ExpectError(files.Delete(At(path)), error);
    ExpectError(answer(files.OpenWrite(At(path))), error);
    ExpectError(files.Copy(At("file"), At(path), TzCopyMode::Replace), error);
    ExpectError(files.Move(At("file"), At(path)), error);
    ExpectError(answer(files.OpenRead(At(path))), error);
  }
}

TEST_P(FileStreamTest, SetsWhatKeepsAFileFromBeingWritten) {
  WriteFile(At("file"), "content");
  for (const bool readOnly : {true, true, false, false}) {
    ExpectError(files.SetReadOnly(At("file"), readOnly), 0);
    EXPECT_EQ(files.IsReadOnly(At("file")), readOnly);
    EXPECT_EQ(ReadFile(At("file")), "content");
  }
  ExpectError(files.SetReadOnly(At("absent"), true), ENOENT);
  ExpectError(files.SetReadOnly(At("file/sub"), true), ENOTDIR);
  WriteFile(At("file"), "changed");
  EXPECT_EQ(ReadFile(At("file")), "changed");
}

TEST_P(FileStreamTest, StreamsThatAreOpenOutliveTheFileAndTheFolder) {
  WriteFile(At("sub/file"), "content");
  WriteFile(At("sub/other"), "other");
  const auto reader = files.OpenRead(At("sub/file"));
  const auto second = files.OpenRead(At("sub/other"));
  const auto writer = files.OpenWrite(At("sub/written"));
  ASSERT_TRUE(reader != nullptr && second != nullptr && writer != nullptr);
  EXPECT_EQ(ReadSome(*reader, 3), "con");
  EXPECT_EQ(files.Delete(At("sub/file")), kTzSuccess);
  EXPECT_EQ(ReadSome(*reader, 9), "tent");
  EXPECT_EQ(files.Delete(tested.Folder()), kTzSuccess);
  EXPECT_EQ(ReadSome(*second, 9), "other");
  EXPECT_EQ(writer->Write(Bytes("late")), kTzSuccess);
  EXPECT_EQ(writer->Close(), kTzSuccess);
  EXPECT_EQ(files.GetKind(tested.Folder()), TzNodeKind::Absent);
}

TEST_P(FileStreamTest, TheFolderItselfIsDeletedAndMadeAgain) {
  MakeTree();
  EXPECT_EQ(files.Delete(tested.Folder()), kTzSuccess);
  EXPECT_EQ(files.Delete(tested.Folder()), kTzSuccess);
  EXPECT_EQ(files.GetKind(tested.Folder()), TzNodeKind::Absent);
  EXPECT_EQ(files.OpenWrite(At("file")), nullptr);
  EXPECT_EQ(errno, ENOENT);
  ExpectError(files.MakeFolder(At("sub")), ENOENT);
  ExpectError(files.Copy(At("file"), At("copy"), TzCopyMode::Replace), ENOENT);
  ExpectError(files.Move(At("file"), At("moved")), ENOENT);
  ExpectError(files.MakeFolders(At("sub/sub")), 0);
  WriteFile(At("file"), "again");
  EXPECT_THAT(ListTree(tested.Folder()), ElementsAre("file", "sub/", "sub/sub/"));
  // It goes with a folder around it, too.
  EXPECT_EQ(files.Delete(tested.Folder().GetParentTzPath()), kTzSuccess);
  EXPECT_EQ(files.GetKind(tested.Folder()), TzNodeKind::Absent);
  ExpectError(files.MakeFolders(tested.Folder()), 0);
  EXPECT_THAT(ListTree(tested.Folder()), IsEmpty());
}

TEST_P(FileStreamTest, GivesARealFileForOneThatStands) {
  WriteFile(At("file"), "content");
  const TzPath real = files.GetRealFile(At("file"));
  EXPECT_EQ(ReadFromDisk(real), "content");
  EXPECT_EQ(files.GetRealFile(At("file")), real);
  for (const char* path : {"", "absent", "file/sub"})
    EXPECT_TRUE(files.GetRealFile(At(path)).IsEmpty()) << path;
  EXPECT_EQ(files.GetRealFile(tested.Outside()), TzPath());
  WriteFile(tested.Outside() / "file", "outside");
  EXPECT_EQ(files.GetRealFile(tested.Outside() / "file"), tested.Outside() / "file");
  EXPECT_EQ(files.Delete(At("file")), kTzSuccess);
  EXPECT_FALSE(StandsOnDisk(real));
}

}  // namespace
