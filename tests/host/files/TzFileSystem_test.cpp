// SPDX-License-Identifier: Apache-2.0
#include "host/files/TzFileSystem.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>

#include "FileSystemTest.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

INSTANTIATE_TEST_SUITE_P(, FileSystemTest, testing::Values(FileSystemKind::Disk, FileSystemKind::Staged),
                         testing::PrintToStringParamName());

TEST_P(FileSystemTest, TellsWhatStandsAtAPath) {
  MakeTree();
  const struct {
    std::string path;
    TzNodeKind kind;
    std::uint64_t size;
    bool isReadOnly;
  } rows[] = {
      {"", TzNodeKind::Folder, 0, false},
      {"folder", TzNodeKind::Folder, 0, false},
      {"folder/", TzNodeKind::Folder, 0, false},
      {"file", TzNodeKind::File, 4, false},
      {".//folder///inner", TzNodeKind::File, 5, false},
      {"folder/../empty/./../locked", TzNodeKind::File, 6, true},
      {"folder/..", TzNodeKind::Folder, 0, false},
      {"absent", TzNodeKind::Absent, 0, false},
      {"Folder", TzNodeKind::Absent, 0, false},
      {"absent/../file", TzNodeKind::Absent, 0, false},
      {"file/../folder", TzNodeKind::Absent, 0, false},
      {"file/.", TzNodeKind::Absent, 0, false},
      {tooLong, TzNodeKind::Absent, 0, false},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.path);
    EXPECT_EQ(files.GetKind(At(row.path)), row.kind);
    EXPECT_EQ(files.IsReadOnly(At(row.path)), row.isReadOnly);
    if (row.kind != TzNodeKind::Folder) {
      EXPECT_EQ(files.GetSize(At(row.path)), row.size);
    }
    EXPECT_EQ(files.GetSize(At("folder")), 0U);
  }
}

TEST_P(FileSystemTest, KeepsEveryNameThatADiskDoes) {
  const std::string names[] = {"...",  "a b",  "..a", "-", "T\xC3\xBCr", "T\xFCr", "\xFF",
                               "a\\b", "a\nb", "CON", "a", "A",          longest,  "imsmanifest.xml"};
  for (const std::string& name : names) {
    WriteFile(At(name), name);
    EXPECT_EQ(ReadFile(At(name)), name);
    EXPECT_EQ(files.MakeFolders(At("sub/" + name)), kTzSuccess) << name;
  }
  std::vector<TzListedNode> entries;
  for (const char* folder : {"sub", ""}) {
    EXPECT_EQ(files.List(At(folder), entries), kTzSuccess);
    EXPECT_EQ(entries.size(), std::size(names) + (*folder == '\0' ? 1 : 0));
    for (const TzListedNode& entry : entries) EXPECT_EQ(files.Delete(entry.path), kTzSuccess) << entry.path;
  }
  EXPECT_EQ(files.GetKind(At("sub")), TzNodeKind::Absent);
}

TEST_P(FileSystemTest, ListsOneLevelInTheOrderOfBytes) {
  for (const char* name : {"b/inner", "a", "B", "\xFF", "b-c"}) WriteFile(At(name), "");
  std::vector<TzListedNode> entries = {{TzPath("stale"), TzNodeKind::File}};
  EXPECT_EQ(files.List(tested.Folder(), entries), kTzSuccess);
  const auto is = [this](const char* name, TzNodeKind kind) { return testing::FieldsAre(At(name), kind); };
  EXPECT_THAT(entries,
              ElementsAre(is("B", TzNodeKind::File), is("a", TzNodeKind::File), is("b", TzNodeKind::Folder),
                          is("b-c", TzNodeKind::File), is("\xFF", TzNodeKind::File)));
  const struct {
    std::string path;
    int error;
  } rows[] = {{"a", ENOTDIR}, {"a/b", ENOTDIR}, {"absent", ENOENT}, {tooLong, ENAMETOOLONG}};
  for (const auto& [path, error] : rows) {
    SCOPED_TRACE(path);
    ExpectError(files.List(At(path), entries), error);
    EXPECT_THAT(entries, IsEmpty());
  }
}

TEST_P(FileSystemTest, MakesFolders) {
  MakeTree();
  const struct {
    std::string path;
    int error;
    int errorWithParents;
  } rows[] = {
      {"new", 0, 0},
      {"new", 0, 0},
      {"folder", 0, 0},
      {"", 0, 0},
      {"folder/../new2", 0, 0},
      {"folder/" + longest, 0, 0},
      {"a/b/c", ENOENT, 0},
      {"a/b/c/d", 0, 0},
      {"file", EEXIST, EEXIST},
      {"file/sub", ENOTDIR, ENOTDIR},
      {"file/sub/sub", ENOTDIR, ENOTDIR},
      {tooLong, ENAMETOOLONG, ENAMETOOLONG},
      {tooLong + "/sub", ENAMETOOLONG, ENAMETOOLONG},
      {"absent2/" + tooLong, ENOENT, ENAMETOOLONG},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.path);
    ExpectError(files.MakeFolder(At(row.path)), row.error);
    ExpectError(files.MakeFolders(At(row.path)), row.errorWithParents);
  }
  EXPECT_EQ(ReadFile(At("file")), "file");
}

TEST_P(FileSystemTest, DeletesWhateverStandsThere) {
  const struct {
    std::string path;
    int error;
    std::vector<std::string> left;
  } rows[] = {
      {"folder", 0, {"empty/", "file", "locked"}},
      {"folder/", 0, {"empty/", "file", "locked"}},
      {"folder/inner", 0, {"empty/", "file", "folder/", "locked"}},
      {"locked", 0, {"empty/", "file", "folder/", "folder/inner"}},
      {"empty/../file", 0, {"empty/", "folder/", "folder/inner", "locked"}},
      {"absent", 0, wholeTree},
      {"absent/sub", 0, wholeTree},
      {"file/sub", ENOTDIR, wholeTree},
      {tooLong, ENAMETOOLONG, wholeTree},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.path);
    MakeTree();
    ExpectError(files.Delete(At(row.path)), row.error);
    EXPECT_EQ(ListTree(tested.Folder()), row.left);
    EXPECT_EQ(files.Delete(At("locked")), kTzSuccess);
  }
}

TEST_P(FileSystemTest, CopiesAFileIntoAWritableOne) {
  const struct {
    std::string source, target;
    /// If nothing may stand at the target, and if it may.
    int error, errorReplacing;
  } rows[] = {
      {"file", "new", 0, 0},
      {"file", "folder/new", 0, 0},
      {"locked", "new", 0, 0},
      {"folder/inner", "folder/../" + longest, 0, 0},
      {"file", "folder/inner", EEXIST, 0},
      {"file", "locked", EEXIST, 0},
      {"file", "file", EEXIST, 0},
      {"locked", "locked", EEXIST, 0},
      {"file", "empty", EEXIST, EEXIST},
      {"file", "folder", EEXIST, EEXIST},
      {"file", "absent/new", ENOENT, ENOENT},
      {"file", "locked/new", ENOTDIR, ENOTDIR},
      {"file", tooLong, ENAMETOOLONG, ENAMETOOLONG},
      {"folder", "new", EISDIR, EISDIR},
      {"folder", "file", EISDIR, EISDIR},
      {"absent", "file", ENOENT, ENOENT},
      {"file/sub", "file", ENOTDIR, ENOTDIR},
      {tooLong, "file", ENAMETOOLONG, ENAMETOOLONG},
  };
  for (const auto& row : rows) {
    for (const TzCopyMode mode : {TzCopyMode::FailIfExists, TzCopyMode::Replace}) {
      const int error = mode == TzCopyMode::Replace ? row.errorReplacing : row.error;
      SCOPED_TRACE(row.source + " to " + row.target + (mode == TzCopyMode::Replace ? " replaced" : ""));
      EXPECT_EQ(files.Delete(tested.Folder()), kTzSuccess);
      EXPECT_EQ(files.MakeFolder(tested.Folder()), kTzSuccess);
      MakeTree();
      ExpectError(files.Copy(At(row.source), At(row.target), mode), error);
      if (error != 0) {
        EXPECT_EQ(ListTree(tested.Folder()), wholeTree);
        EXPECT_EQ(ReadFile(At("file")), "file");
        continue;
      }
      EXPECT_EQ(ReadFile(At(row.target)), ReadFile(At(row.source)));
      EXPECT_EQ(files.IsReadOnly(At(row.target)), row.source == "locked" && row.target == "locked");
      EXPECT_TRUE(files.IsReadOnly(At("locked")) || row.target == "locked");
    }
  }
}

TEST_P(FileSystemTest, ACopyAndItsSourceDontChangeWithEachOther) {
  WriteFile(At("source"), "source");
  ASSERT_EQ(files.Copy(At("source"), At("copy"), TzCopyMode::FailIfExists), kTzSuccess);
  ASSERT_EQ(files.Copy(At("copy"), At("copy of it"), TzCopyMode::FailIfExists), kTzSuccess);
  EXPECT_EQ(files.SetReadOnly(At("copy"), true), kTzSuccess);
  EXPECT_FALSE(files.IsReadOnly(At("source")) || files.IsReadOnly(At("copy of it")));
  WriteFile(At("source"), "changed");
  EXPECT_EQ(ReadFile(At("copy")), "source");
  EXPECT_EQ(files.Delete(At("copy")), kTzSuccess);
  EXPECT_EQ(ReadFile(At("copy of it")), "source");
}

TEST_P(FileSystemTest, CopiesFromAndToTheDiskOutside) {
  const TzPath outside = tested.Outside() / "file";
  const std::string large(3'000'000, 'l');
  WriteFile(outside, large);
  WriteFile(At("earlier"), "earlier");
  ExpectError(files.Copy(outside, At("earlier"), TzCopyMode::FailIfExists), EEXIST);
  EXPECT_EQ(ReadFile(At("earlier")), "earlier");
  ExpectError(files.Copy(outside, At("earlier"), TzCopyMode::Replace), 0);
  EXPECT_EQ(files.Delete(outside), kTzSuccess);
  EXPECT_TRUE(ReadFile(At("earlier")) == large);
  ExpectError(files.Copy(At("earlier"), outside, TzCopyMode::FailIfExists), 0);
  EXPECT_TRUE(ReadFile(outside) == large);
  ExpectError(files.Copy(At("earlier"), outside, TzCopyMode::FailIfExists), EEXIST);
  ExpectError(files.Copy(tested.Outside(), At("new"), TzCopyMode::Replace), EISDIR);
  ExpectError(files.Copy(tested.Outside() / "absent", At("new"), TzCopyMode::Replace), ENOENT);
  ExpectError(files.Copy(tested.Folder(), tested.Outside() / "new", TzCopyMode::Replace), EISDIR);
  ExpectError(files.Copy(At("absent"), tested.Outside() / "new", TzCopyMode::Replace), ENOENT);
  EXPECT_THAT(ListTree(tested.Folder()), ElementsAre("earlier"));
  EXPECT_THAT(ListTree(tested.Outside()), ElementsAre("file"));
}

TEST_P(FileSystemTest, MovesAsTheSystemRenames) {
  const struct {
    std::string source, target;
    int error;
    std::vector<std::string> tree;
  } rows[] = {
      {"file", "new", 0, {"empty/", "folder/", "folder/inner", "locked", "new"}},
      {"file", "folder/inner", 0, {"empty/", "folder/", "folder/inner", "locked"}},
      {"locked", "empty/../file", 0, {"empty/", "file", "folder/", "folder/inner"}},
      {"folder", "new", 0, {"empty/", "file", "locked", "new/", "new/inner"}},
      {"folder", "empty", 0, {"empty/", "empty/inner", "file", "locked"}},
      {"folder", "empty/sub", 0, {"empty/", "empty/sub/", "empty/sub/inner", "file", "locked"}},
      {"file", "file", 0, wholeTree},
      {"folder", "folder", 0, wholeTree},
      {"empty", "folder", ENOTEMPTY, wholeTree},
      {"folder/inner", "folder", ENOTEMPTY, wholeTree},
      {"folder", "folder/sub", EINVAL, wholeTree},
      {"folder", "file", ENOTDIR, wholeTree},
      {"file", "empty", EISDIR, wholeTree},
      {"absent", "new", ENOENT, wholeTree},
      {"absent", "file", ENOENT, wholeTree},
      {"absent/sub", "new", ENOENT, wholeTree},
      {"file/sub", "new", ENOTDIR, wholeTree},
      {"file", "absent/new", ENOENT, wholeTree},
      {"file", "locked/new", ENOTDIR, wholeTree},
      {"file", tooLong, ENAMETOOLONG, wholeTree},
      {tooLong, "new", ENAMETOOLONG, wholeTree},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.source + " to " + row.target);
    EXPECT_EQ(files.Delete(tested.Folder()), kTzSuccess);
    EXPECT_EQ(files.MakeFolder(tested.Folder()), kTzSuccess);
    MakeTree();
    const bool isReadOnly = files.IsReadOnly(At(row.source));
    const std::string moved =
        files.GetKind(At(row.source)) == TzNodeKind::File ? ReadFile(At(row.source)) : "";
    ExpectError(files.Move(At(row.source), At(row.target)), row.error);
    EXPECT_EQ(ListTree(tested.Folder()), row.tree);
    if (row.error != 0) continue;
    if (!moved.empty()) {
      EXPECT_EQ(ReadFile(At(row.target)), moved);
    }
    EXPECT_EQ(files.IsReadOnly(At(row.target)), isReadOnly);
  }
}

}  // namespace
