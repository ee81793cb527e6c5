// SPDX-License-Identifier: Apache-2.0
// What happens to archives that a staged folder holds, from their adding to the package.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>
#include <functional>

#include "host/files/TzZipUtils.h"
#include "support/FileSystemUnderTest.h"
#include "support/RawZip.h"
#include "support/ReadArchive.h"
#include "support/RecordedProblems.h"
#include "support/ScoZip.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

std::string Prose(std::size_t size) {
  std::string prose;
  for (std::size_t number = 0; prose.size() < size; ++number) {
    prose += "line " + std::to_string(number * 7919) + "\n";
  }
  return prose;
}

class StagedZipTest : public testing::Test {
 protected:
  StagedZipTest() { std::filesystem::create_directory(out.GetNative()); }

  /// Lets the archive's entries stand in a folder of this name.
  void Add(const std::string& name, const RawZip& zip) {
    const TzPath archive = chosen.Write(name + ".zip", zip.Build());
    ASSERT_EQ(TzZipUtils::ExtractFiles(archive, At(name)), kTzSuccess)
        << testing::PrintToString(recorded.Texts());
  }

  TzErrorCodeEnum Publish() {
    recorded.problems.clear();
    return TzZipUtils::ZipFiles({tested.Folder()}, Target(), tested.Folder(), 0, {});
  }

  std::string ReadInPieces(const TzPath& path, std::size_t size) {
    const auto stream = tested.Files().OpenRead(path);
    std::string content;
    std::string piece(size, '\0');
    for (std::ptrdiff_t count = 1; stream != nullptr && count > 0;) {
      count = stream->Read(std::as_writable_bytes(std::span(piece)));
      EXPECT_GE(count, 0);
      if (count > 0) content.append(piece, 0, static_cast<std::size_t>(count));
    }
    return content;
  }

  /// The only file that the folder keeps on the disk.
  [[nodiscard]] TzPath OnlyStoredFile() const {
    const auto names = ListDisk(tested.Folder());
    EXPECT_THAT(names, SizeIs(1));
    return names.empty() ? TzPath() : tested.Folder() / names.front();
  }

  [[nodiscard]] TzPath At(const std::string& path) const { return tested.Folder() / path; }
  [[nodiscard]] TzPath Target() const { return out / "course.zip"; }

  FileSystemUnderTest tested{FileSystemKind::Staged};
  TestFolder chosen;
  TestFolder published;
  const TzPath out = published.Path() / "out";
  RecordedProblems recorded;
};

const RawZip kSmall = {{{.name = "a.htm", .content = "stored"},
                        {.name = "sub/b.htm", .content = Prose(5000), .deflate = true},
                        {.name = "sub/empty", .deflate = true}}};

TEST_F(StagedZipTest, TheDiskHoldsTheArchiveAsLongAsAnEntryIsNeeded) {
  Add("sco", kSmall);
  EXPECT_THAT(ListTree(tested.Folder()),
              ElementsAre("sco/", "sco/a.htm", "sco/sub/", "sco/sub/b.htm", "sco/sub/empty"));
  EXPECT_TRUE(ReadFromDisk(OnlyStoredFile()) == kSmall.Build());
  ASSERT_EQ(tested.Files().Move(At("sco/a.htm"), At("moved")), kTzSuccess);
  ASSERT_EQ(tested.Files().Delete(At("sco")), kTzSuccess);
  EXPECT_TRUE(ReadFromDisk(OnlyStoredFile()) == kSmall.Build());
  WriteFile(At("moved"), "written");
  EXPECT_EQ(ReadFromDisk(OnlyStoredFile()), "written");
  ASSERT_EQ(tested.Files().Delete(At("moved")), kTzSuccess);
  EXPECT_THAT(ListDisk(tested.Folder()), IsEmpty());
}

TEST_F(StagedZipTest, DeletingTheFolderDeletesTheArchiveAndAnotherCanBeAddedAgain) {
  Add("sco", kSmall);
  const auto stored = tested.Files().OpenRead(At("sco/a.htm"));
  const auto deflated = tested.Files().OpenRead(At("sco/sub/b.htm"));
  ASSERT_TRUE(stored != nullptr && deflated != nullptr);
  ASSERT_EQ(tested.Files().Delete(tested.Folder()), kTzSuccess);
  EXPECT_FALSE(StandsOnDisk(tested.Folder()));
  std::string content(6000, '\0');
  EXPECT_EQ(stored->Read(std::as_writable_bytes(std::span(content))), 6);
  EXPECT_EQ(deflated->Read(std::as_writable_bytes(std::span(content))),
            static_cast<std::ptrdiff_t>(Prose(5000).size()));
  EXPECT_TRUE(content.starts_with(Prose(5000)));
  Add("again", kSmall);
  EXPECT_EQ(ReadFile(At("again/a.htm")), "stored");
}

TEST_F(StagedZipTest, AnUntouchedEntryKeepsItsPackedBytes) {
  const std::string prose = Prose(20'000);
  Add("sco", {{{.name = "deflated", .content = prose, .deflate = true},
               {.name = "stored", .content = prose},
               {.name = "late", .content = prose, .deflate = true, .descriptor = true},
               {.name = "wide", .content = prose, .deflate = true, .zip64 = true},
               {.name = "large", .content = MakeNoise(std::size_t{9} << 20U, 1), .deflate = true},
               {.name = "empty", .deflate = true},
               {.name = "rewritten", .content = prose, .deflate = true},
               {.name = "copied", .content = prose, .deflate = true},
               {.name = "moved", .content = prose, .deflate = true}}});
  ASSERT_EQ(tested.Files().Move(At("sco/moved"), At("moved")), kTzSuccess);
  ASSERT_EQ(tested.Files().Copy(At("sco/copied"), At("copy"), TzCopyMode::FailIfExists), kTzSuccess);
  ASSERT_FALSE(tested.Files().GetRealFile(At("sco/wide")).IsEmpty());
  WriteFile(At("sco/rewritten"), prose);
  WriteFile(At("imsmanifest.xml"), prose);
  ASSERT_EQ(Publish(), kTzSuccess) << testing::PrintToString(recorded.Texts());

  const ReadArchive source(chosen.Path() / "sco.zip");
  const ReadArchive package(Target());
  ASSERT_TRUE(source.IsOpen() && package.IsOpen());
  EXPECT_THAT(package.Names(),
              ElementsAre("imsmanifest.xml", "copy", "moved", "sco/copied", "sco/deflated", "sco/empty",
                          "sco/large", "sco/late", "sco/rewritten", "sco/stored", "sco/wide"));
  const struct {
    std::string entry, name;
  } kept[] = {{"deflated", "sco/deflated"}, {"stored", "sco/stored"}, {"late", "sco/late"},
              {"wide", "sco/wide"},         {"large", "sco/large"},   {"copied", "sco/copied"},
              {"copied", "copy"},           {"moved", "moved"}};
  for (const auto& [entry, name] : kept) {
    EXPECT_EQ(package.IsDeflated(name), source.IsDeflated(entry)) << name;
    EXPECT_TRUE(package.Packed(name) == source.Packed(entry)) << name;
    EXPECT_TRUE(package.Content(name) == source.Content(entry)) << name;
  }
  for (const char* name : {"imsmanifest.xml", "sco/rewritten"}) {
    EXPECT_TRUE(package.IsDeflated(name));
    EXPECT_LT(package.Packed(name).size(), source.Packed("rewritten").size())
        << "packed by ourselves, better";
    EXPECT_TRUE(package.Content(name) == prose);
  }
  EXPECT_FALSE(package.IsDeflated("sco/empty"));
}

TEST_F(StagedZipTest, AChangedCopyDoesntChangeTheOther) {
  Add("sco", kSmall);
  ASSERT_EQ(tested.Files().Copy(At("sco/sub/b.htm"), At("copy"), TzCopyMode::FailIfExists), kTzSuccess);
  ASSERT_EQ(tested.Files().Copy(At("sco/a.htm"), At("other"), TzCopyMode::FailIfExists), kTzSuccess);
  WriteFile(At("copy"), "changed");
  WriteFile(At("sco/a.htm"), "changed too");
  EXPECT_EQ(ReadFile(At("sco/sub/b.htm")), Prose(5000));
  EXPECT_EQ(ReadFile(At("other")), "stored");
  EXPECT_TRUE(tested.Files().GetHeldEntry(At("other")).has_value());
  EXPECT_FALSE(tested.Files().GetHeldEntry(At("copy")).has_value());
}

TEST_F(StagedZipTest, ACopyInAnotherScratchFolderOutlivesTheFirst) {
  const TzPath second = tested.Outside() / "second";
  ASSERT_EQ(tested.Files().MakeScratchFolder(second), kTzSuccess);
  Add("sco", kSmall);
  WriteFile(At("written"), "written");
  ASSERT_EQ(tested.Files().Copy(At("sco/sub/b.htm"), second / "b.htm", TzCopyMode::FailIfExists), kTzSuccess);
  ASSERT_EQ(tested.Files().Copy(At("written"), second / "written", TzCopyMode::FailIfExists), kTzSuccess);
  EXPECT_EQ(tested.Files().Move(At("written"), second / "moved"), kTzMachineFailure);
  EXPECT_EQ(errno, EXDEV);
  ASSERT_EQ(tested.Files().Delete(tested.Folder()), kTzSuccess);
  EXPECT_EQ(ReadFile(second / "b.htm"), Prose(5000));
  EXPECT_EQ(ReadFile(second / "written"), "written");
}

TEST_F(StagedZipTest, ReadsALargeEntryInSmallPieces) {
  const std::string content = Prose(150'000) + MakeNoise(150'000, 7) + Prose(150'000);
  Add("sco",
      {{{.name = "stored", .content = content}, {.name = "deflated", .content = content, .deflate = true}}});
  for (const char* name : {"sco/stored", "sco/deflated"}) {
    for (const std::size_t size : {1U, 7U, 4096U, 131'073U, 1'000'000U}) {
      EXPECT_TRUE(ReadInPieces(At(name), size) == content) << name << " in pieces of " << size;
    }
  }
}

TEST_F(StagedZipTest, UnpacksAnEntryWhereARealFileIsNeeded) {
  Add("sco", kSmall);
  const std::size_t before = ListDisk(tested.Folder()).size();
  for (const char* name : {"sco/a.htm", "sco/sub/b.htm", "sco/sub/empty"}) {
    const TzPath real = tested.Files().GetRealFile(At(name));
    EXPECT_TRUE(ReadFromDisk(real) == ReadFile(At(name))) << name;
    EXPECT_EQ(tested.Files().GetRealFile(At(name)), real);
  }
  EXPECT_THAT(ListDisk(tested.Folder()), SizeIs(before + 3));
  EXPECT_TRUE(tested.Files().GetRealFile(At("sco/sub")).IsEmpty());

  const TzPath deleted = tested.Files().GetRealFile(At("sco/a.htm"));
  ASSERT_EQ(tested.Files().Delete(At("sco/a.htm")), kTzSuccess);
  EXPECT_FALSE(StandsOnDisk(deleted));
  const TzPath overwritten = tested.Files().GetRealFile(At("sco/sub/b.htm"));
  WriteFile(At("sco/sub/b.htm"), "written");
  EXPECT_FALSE(StandsOnDisk(overwritten));
  EXPECT_EQ(ReadFromDisk(tested.Files().GetRealFile(At("sco/sub/b.htm"))), "written");
}

TEST_F(StagedZipTest, WritesHeadersOfItsOwn) {
  const std::string packedOnce = Prose(3000);
  const auto publish = [&](const RawZip& zip) {
    Add("sco", zip);
    EXPECT_EQ(Publish(), kTzSuccess);
    EXPECT_EQ(tested.Files().Delete(At("sco")), kTzSuccess);
    return ReadFromDisk(Target());
  };
  const std::string plain =
      publish({{{.name = "sub/a", .content = packedOnce, .deflate = true}, {.name = "b", .content = "b"}}});
  const std::string fancy = publish(
      {.entries =
           {{.name = "b", .content = "b", .host = 3, .attributes = 0100755U << 16U, .time = 0x57216543},
            {.name = "sub/", .time = 0x57216543},
            {.name = "sub\\.\\a",
             .content = packedOnce,
             .deflate = true,
             .descriptor = true,
             .extra = RawZip::Extra(0x5455,
                                    "\x01"
                                    "abcd")}},
       .prefix = "#!",
       .comment = "comment",
       .zip64End = true});
  EXPECT_TRUE(plain == fancy);
}

TEST_F(StagedZipTest, WhatHappensToTheAuthorsFileDoesntMatter) {
  namespace fs = std::filesystem;
  const struct {
    const char* what;
    std::function<void(const TzPath&)> happens;
  } rows[] = {
      {"deleted", [](const TzPath& file) { fs::remove(file.GetNative()); }},
      {"cut short", [](const TzPath& file) { fs::resize_file(file.GetNative(), 10); }},
      {"written over", [this](const TzPath&) { chosen.Write("sco.zip", std::string(20'000, 'x')); }},
      {"replaced",
       [this](const TzPath& file) {
         fs::rename(chosen.Write("other", "no archive").GetNative(), file.GetNative());
       }},
  };
  std::string untouched;
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    Add("sco", kSmall);
    if (untouched.empty()) {
      ASSERT_EQ(Publish(), kTzSuccess);
      untouched = ReadFromDisk(Target());
    }
    row.happens(chosen.Path() / "sco.zip");
    EXPECT_EQ(ReadFile(At("sco/sub/b.htm")), Prose(5000));
    ASSERT_EQ(Publish(), kTzSuccess);
    EXPECT_TRUE(ReadFromDisk(Target()) == untouched);
    ASSERT_EQ(tested.Files().Delete(At("sco")), kTzSuccess);
  }
}

TEST_F(StagedZipTest, TellsWhenItsOwnCopyIsDamaged) {
  Add("sco", kSmall);
  published.Write("out/course.zip", "earlier");
  const TzPath hold = OnlyStoredFile();
  std::filesystem::resize_file(hold.GetNative(), 60);
  const auto stream = tested.Files().OpenRead(At("sco/sub/b.htm"));
  ASSERT_NE(stream, nullptr);
  std::string content(100, '\0');
  EXPECT_EQ(stream->Read(std::as_writable_bytes(std::span(content))), -1);
  EXPECT_EQ(errno, EIO);
  EXPECT_TRUE(tested.Files().GetRealFile(At("sco/sub/b.htm")).IsEmpty());
  EXPECT_EQ(Publish(), kTzMachineFailure);
  EXPECT_THAT(recorded.Texts(), ElementsAre("course.zip: sco/sub/b.htm: its copy was cut short on the disk"));
  std::filesystem::remove(hold.GetNative());
  EXPECT_EQ(Publish(), kTzMachineFailure);
  EXPECT_THAT(recorded.Texts(), ElementsAre("course.zip: sco/a.htm: can't read: No such file or directory"));
  EXPECT_THAT(ListDisk(out), ElementsAre("course.zip"));
  EXPECT_EQ(ReadFromDisk(Target()), "earlier");
}

TEST_F(StagedZipTest, TakesMoreEntriesThan16BitsCanCount) {
  constexpr std::size_t kCount = 65'536;
  RawZip zip = {.zip64End = true};
  for (std::size_t number = 0; number < kCount; ++number) {
    zip.entries.push_back(
        {.name = "f" + std::to_string(number % 100) + "/" + std::to_string(number), .content = "x"});
  }
  Add("sco", zip);
  WriteFile(At("imsmanifest.xml"), "<manifest/>");
  ASSERT_EQ(Publish(), kTzSuccess) << testing::PrintToString(recorded.Texts());
  const ReadArchive package(Target());
  ASSERT_THAT(package.Names(), SizeIs(kCount + 1));
  EXPECT_EQ(package.Content("sco/f35/65535"), "x");
}

TEST_F(StagedZipTest, TakesAnEntryOfMoreThan4GiB) {
  constexpr std::uint64_t kSize = (std::uint64_t{4} << 30U) + 1;
  // What stands before the archive keeps it below the ratio that is refused.
  RawZip zip = {.entries = {RawZip::Zeros("zeros", kSize), {.name = "z", .content = "z"}},
                .prefix = std::string(std::size_t{22} << 20U, '-')};
  const RawEntry zeros = zip.entries.front();
  zip.entries.front().crc = *zeros.crc + 1;
  const TzPath damaged = chosen.Write("damaged.zip", zip.Build());
  EXPECT_EQ(TzZipUtils::ExtractFiles(damaged, At("damaged")), kTzBadContent);
  EXPECT_THAT(recorded.Texts(), ElementsAre("damaged.zip: zeros: the entry's CRC-32 doesn't match"));
  zip.entries.front() = zeros;
  Add("sco", zip);
  EXPECT_EQ(tested.Files().GetSize(At("sco/zeros")), kSize);
  const auto stream = tested.Files().OpenRead(At("sco/zeros"));
  ASSERT_NE(stream, nullptr);
  std::string some(100, 'x');
  EXPECT_EQ(stream->Read(std::as_writable_bytes(std::span(some))), 100);
  EXPECT_EQ(some, std::string(100, '\0'));
  ASSERT_EQ(Publish(), kTzSuccess) << testing::PrintToString(recorded.Texts());
  const ReadArchive package(Target());
  EXPECT_THAT(package.Names(), ElementsAre("sco/z", "sco/zeros"));
  EXPECT_EQ(package.Size("sco/zeros"), kSize);
  EXPECT_TRUE(package.Packed("sco/zeros") == zeros.packed);
  EXPECT_EQ(package.Content("sco/z"), "z");
}

}  // namespace
