// SPDX-License-Identifier: Apache-2.0
#include "host/files/TzFileUtil.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <filesystem>

#include "host/files/TzStreamUtil.h"
#include "support/FaultyFileSystem.h"
#include "support/RecordedProblems.h"
#include "support/TestSession.h"

namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

/// An environment variable with a value of its own for the length of a test.
class ScopedVariable {
 public:
  ScopedVariable(const char* variable, const std::string& value) : name(variable) {
    if (const char* earlier = std::getenv(name); earlier != nullptr) previous = earlier;
    setenv(name, value.c_str(), 1);
  }
  ScopedVariable(const ScopedVariable&) = delete;
  ScopedVariable& operator=(const ScopedVariable&) = delete;
  ~ScopedVariable() { previous.empty() ? unsetenv(name) : setenv(name, previous.c_str(), 1); }

 private:
  const char* name;
  std::string previous;
};

class FileUtilTest : public testing::Test {
 protected:
  TestFolder folder;
  RecordedProblems recorded;
};

TEST_F(FileUtilTest, SplitsNames) {
  const struct {
    const char* path;
    const char* base;
    const char* extension;
  } rows[] = {
      {"/a/intro.zip", "intro", "zip"},    {"/a/INTRO.ZIP", "INTRO", "zip"}, {"/a.b/intro", "intro", ""},
      {"intro.tar.gz", "intro.tar", "gz"}, {"/a/.hidden", ".hidden", ""},    {"/a/Tür.É", "Tür", "É"},
      {"/a/intro.", "intro", ""},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(TzFileUtil::GetBaseFileName(TzPath(row.path)), row.base) << row.path;
    EXPECT_EQ(TzFileUtil::GetExtension(TzPath(row.path)), row.extension) << row.path;
  }
  EXPECT_EQ(TzFileUtil::GetExtensionAsWritten(TzPath("a/b.v2.Zip")), "Zip");
}

TEST_F(FileUtilTest, AFileNameHasToTravelToOtherSystemsAndAPathOnlyToThisOne) {
  const std::string longest(255, 'n');
  const struct {
    std::string text;
    bool isPath;
    bool isFileName;
  } rows[] = {
      {"course.zip", true, true},
      {"Kurs f\u00FCr Anf\u00E4nger.zip", true, true},
      {".hidden", true, true},
      {longest, true, true},
      {longest + "n", false, false},
      {"/home/a/" + longest + "n/b", false, false},
      {"/home/" + std::string(4096, '/'), false, false},
      {"", false, false},
      {"a\tb", false, false},
      {"a\nb", false, false},
      {std::string("a\0b", 3), false, false},
      {"/home/What? Why: \"this\"/<a>|b*", true, false},
      {"a/b", true, false},
      {"a\\b", true, false},
      {"..", true, false},
      {"what?", true, false},
      {"a*", true, false},
      {"a:b", true, false},
      {"a\"b", true, false},
      {"a<b", true, false},
      {"a>b", true, false},
      {"a|b", true, false},
      {"ends in a blank ", true, false},
      {"ends in a point.", true, false},
      {"con.zip", true, false},
      {"COM1", true, false},
      {"console.zip", true, true},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(TzFileUtil::IsValidPath(row.text), row.isPath) << row.text;
    EXPECT_EQ(TzFileUtil::IsValidFileName(row.text), row.isFileName) << row.text;
  }
}

TEST_F(FileUtilTest, MakesAndDeletesFoldersWithoutTellingWhatIsOrdinary) {
  const TzPath deep = folder.Path() / "a/b/c";
  const TzPath file = folder.Write("file", "");
  EXPECT_FALSE(TzFileUtil::CreateDirectory(deep, false));
  EXPECT_TRUE(TzFile(deep).MakeDirectory(true));
  EXPECT_TRUE(TzFileUtil::CreateDirectory(deep, false));
  EXPECT_FALSE(TzFileUtil::CreateDirectory(file, true));
  EXPECT_FALSE(TzFileUtil::CreateDirectory(file / "sub", true));
  EXPECT_FALSE(TzFileUtil::DeleteDirectory(folder.Path() / "a", false));
  EXPECT_FALSE(TzFileUtil::DeleteDirectory(file, true));
  EXPECT_FALSE(TzFileUtil::DeleteFile(folder.Path() / "a"));
  EXPECT_TRUE(TzFileUtil::DeleteDirectory(deep, false));
  EXPECT_TRUE(TzFileUtil::DeleteDirectory(folder.Path() / "a", true));
  EXPECT_TRUE(TzFileUtil::DeleteDirectory(folder.Path() / "a", true));
  EXPECT_TRUE(TzFileUtil::DeleteFile(file));
  EXPECT_TRUE(TzFileUtil::DeleteFile(file));
  EXPECT_THAT(ListTree(folder.Path()), IsEmpty());
  EXPECT_THAT(recorded.Texts(), IsEmpty());
}

TEST_F(FileUtilTest, CopiesIntoFoldersThatItMakes) {
  const TzPath source = folder.Write("source", "content");
  const TzPath target = folder.Path() / "new/folder/target";
  EXPECT_TRUE(TzFileUtil::FileCopy(source, target, true));
  EXPECT_EQ(ReadFile(target), "content");
  EXPECT_FALSE(TzFileUtil::FileCopy(source, target, true));
  EXPECT_TRUE(TzFileUtil::FileCopy(source, target, false));
  EXPECT_FALSE(TzFileUtil::FileCopy(folder.Path() / "absent", target, false));
  EXPECT_THAT(recorded.Texts(), IsEmpty());
  const FaultyFileSystem faulty(FaultyFileSystem::Operation::Copy, 1, ENOSPC);
  EXPECT_FALSE(TzFileUtil::FileCopy(source, target, false));
  EXPECT_THAT(recorded.Texts(), ElementsAre(target.GetNative() + ": can't copy '" + source.GetNative() +
                                            "' here: No space left on device"));
}

TEST_F(FileUtilTest, ListsFilesAndFoldersOfOneLevel) {
  folder.Write("b.htm", "");
  folder.Write("a/inner", "");
  fs::create_symlink("b.htm", (folder.Path() / "link").GetNative());
  std::vector<TzPath> list;
  EXPECT_EQ(TzFileUtil::GetFileNamesInFolderAtPath(folder.Path(), list, true, true), kTzSuccess);
  EXPECT_THAT(list, ElementsAre(folder.Path() / "a", folder.Path() / "b.htm"));
  EXPECT_EQ(TzFileUtil::GetFileNamesInFolderAtPath(folder.Path(), list, true, false), kTzSuccess);
  EXPECT_THAT(list, ElementsAre(folder.Path() / "b.htm"));
  EXPECT_EQ(TzFileUtil::GetFileNamesInFolderAtPath(folder.Path(), list, false, true), kTzSuccess);
  EXPECT_THAT(list, ElementsAre(folder.Path() / "a"));
  EXPECT_EQ(TzFileUtil::GetFileNamesInFolderAtPath(folder.Path() / "absent", list, true, true), kTzFailure);
}

TEST_F(FileUtilTest, KnowsAndSetsAttributes) {
  const TzFile file(folder.Write("file", ""));
  EXPECT_TRUE(file.Exists() && file.GetAttribute(TzFileAttribute::IsFile));
  EXPECT_TRUE(TzFile(folder.Path()).GetAttribute(TzFileAttribute::IsFolder));
  EXPECT_FALSE(TzFile(folder.Path() / "absent").GetAttribute(TzFileAttribute::ReadOnly));
  EXPECT_TRUE(file.SetAttribute(TzFileAttribute::ReadOnly, true));
  EXPECT_TRUE(file.GetAttribute(TzFileAttribute::ReadOnly));
  EXPECT_TRUE(file.SetAttribute(TzFileAttribute::ReadOnly, false));
  EXPECT_FALSE(file.GetAttribute(TzFileAttribute::ReadOnly));
  EXPECT_FALSE(file.SetAttribute(TzFileAttribute::IsFile, true));
}

TEST_F(FileUtilTest, TellsWhyAFileCantBeWritten) {
  const TzPath path = folder.Path() / "absent/file";
  EXPECT_EQ(TzStreamUtil::CreateFileStreamWrite(TzFile(path), 0, 0, 0), nullptr);
  EXPECT_THAT(recorded.Texts(), ElementsAre(path.GetNative() + ": can't write: No such file or directory"));
  EXPECT_EQ(TzStreamUtil::CreateFileStreamRead(TzFile(path)), nullptr);
  EXPECT_THAT(recorded.Texts(), SizeIs(1));
}

TEST_F(FileUtilTest, FindsTheDocumentsFolderInTheDesktopsSettings) {
  const ScopedVariable home("HOME", "/home/ann");
  const ScopedVariable configuration("XDG_CONFIG_HOME", folder.Path().GetNative());
  const struct {
    const char* settings;
    const char* documents;
  } rows[] = {
      {"", "/home/ann/Documents"},
      {"XDG_DESKTOP_DIR=\"$HOME/D\"\nXDG_DOCUMENTS_DIR=\"$HOME/Dokumente\"\n", "/home/ann/Dokumente"},
      {"XDG_DOCUMENTS_DIR=\"/data/a \\\"b\\\"\"", "/data/a \"b\""},
      {"#XDG_DOCUMENTS_DIR=\"/data\"\n", "/home/ann/Documents"},
      {"XDG_DOCUMENTS_DIR=\"relative\"\n", "/home/ann/Documents"},
  };
  for (const auto& row : rows) {
    folder.Write("user-dirs.dirs", row.settings);
    EXPECT_EQ(TzFileUtil::GetUserDocumentsFolder(), TzPath(row.documents)) << row.settings;
  }
  EXPECT_TRUE(TzFile(TzFileUtil::GetCurrentExecutablePath()).GetAttribute(TzFileAttribute::IsFile));
}

class TempDirTest : public FileUtilTest {
 protected:
  TempDirTest() : variable("TMPDIR", folder.Path().GetNative()) { TzFileUtil::DeleteAllTempFilesCreated(); }
  ~TempDirTest() override { TzFileUtil::DeleteAllTempFilesCreated(); }

  /// Makes a temporary folder in another process, which is then killed.
  static void LeaveBehind() {
    const pid_t child = fork();
    if (child == 0) {
      static_cast<void>(TzFileUtil::CreateTempDir("left"));
      raise(SIGKILL);
    }
    ASSERT_EQ(waitpid(child, nullptr, 0), child);
  }

  ScopedVariable variable;
};

TEST_F(TempDirTest, MakesPrivateFoldersAndDeletesThemTogether) {
  const TzPath first = TzFileUtil::CreateTempDir("a/b");
  const TzPath second = TzFileUtil::CreateTempDir("a/b");
  EXPECT_NE(first, second);
  EXPECT_EQ(first.GetParentTzPath(), second.GetParentTzPath());
  EXPECT_THAT(first.GetFileName().GetUTF8String(), StartsWith("a-b-"));
  struct stat status = {};
  ASSERT_EQ(stat(first.GetParentTzPath().GetNative().c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777U, 0700U);
  WriteFile(first / "sub/file", "content");
  TzFileUtil::DeleteAllTempFilesCreated();
  EXPECT_THAT(ListTree(folder.Path()), IsEmpty());
}

TEST_F(TempDirTest, LeavesTheFoldersOfALivingProcessAlone) {
  // The child makes its folder before it has one from us, so that it holds a lock of its own.
  int hold[2];
  int made[2];
  ASSERT_TRUE(pipe(hold) == 0 && pipe(made) == 0);
  const pid_t child = fork();
  if (child == 0) {
    close(hold[1]);
    const bool isMade = !TzFileUtil::CreateTempDir("theirs").IsEmpty();
    char byte = isMade ? 'y' : 'n';
    static_cast<void>(write(made[1], &byte, 1) + read(hold[0], &byte, 1));
    _exit(0);
  }
  close(hold[0]);
  char byte = '?';
  ASSERT_EQ(read(made[0], &byte, 1), 1);
  EXPECT_EQ(byte, 'y');
  EXPECT_FALSE(TzFileUtil::CreateTempDir("ours").IsEmpty());
  EXPECT_THAT(ListTree(folder.Path()), SizeIs(6));
  for (const int end : {hold[1], made[0], made[1]}) close(end);
  EXPECT_EQ(waitpid(child, nullptr, 0), child);
}

TEST_F(TempDirTest, SweepsWhatAKilledProcessLeftAndNothingElse) {
  LeaveBehind();
  ASSERT_THAT(ListTree(folder.Path()), SizeIs(3));
  const std::string prefix = "plexo-" + std::to_string(geteuid()) + "-";
  const std::string link = prefix + "linked";
  const std::string young = prefix + "youngA";
  const std::string old = prefix + "old123";
  const std::string longer = prefix + "old1234";
  const std::string dashed = prefix + "old-12";
  const TzPath files[] = {folder.Write("mine/file", ""), folder.Write(prefix + "course/sub/file", ""),
                          folder.Write(prefix + "abcdef/file", ""), folder.Write(longer + "/lock", "")};
  fs::create_directory_symlink("mine", (folder.Path() / link).GetNative());
  for (const auto& name : {young, old, dashed}) fs::create_directory((folder.Path() / name).GetNative());
  const auto longAgo = fs::file_time_type::clock::now() - std::chrono::hours(2);
  for (const auto& name : {old, dashed, longer, prefix + "course", prefix + "abcdef"}) {
    fs::last_write_time((folder.Path() / name).GetNative(), longAgo);
  }

  const TzPath made = TzFileUtil::CreateTempDir("new");
  std::vector<TzPath> standing;
  ASSERT_EQ(TzFileUtil::GetFileNamesInFolderAtPath(folder.Path(), standing, false, true), kTzSuccess);
  EXPECT_TRUE(fs::is_symlink((folder.Path() / link).GetNative()));
  EXPECT_THAT(standing, testing::UnorderedElementsAre(
                            folder.Path() / "mine", folder.Path() / young, folder.Path() / longer,
                            folder.Path() / dashed, folder.Path() / (prefix + "course"),
                            folder.Path() / (prefix + "abcdef"), made.GetParentTzPath()));
  for (const TzPath& file : files) EXPECT_TRUE(TzFile(file).Exists()) << file.GetNative();
}

TEST_F(TempDirTest, TakesAFolderThatIsToBeKept) {
  const TzPath kept = folder.Path() / "work/kept";
  TzFileUtil::KeepNextTempDirAt(kept);
  EXPECT_EQ(TzFileUtil::CreateTempDir("stem"), kept);
  WriteFile(kept / "file", "content");
  EXPECT_NE(TzFileUtil::CreateTempDir("stem"), kept);
  TzFileUtil::DeleteAllTempFilesCreated();
  EXPECT_EQ(ReadFile(kept / "file"), "content");
  TzFileUtil::KeepNextTempDirAt(kept);
  EXPECT_TRUE(TzFileUtil::CreateTempDir("stem").IsEmpty());
  EXPECT_THAT(recorded.Texts(), ElementsAre(kept.GetNative() + ": isn't an empty folder"));
}

}  // namespace
