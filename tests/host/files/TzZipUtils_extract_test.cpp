// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ExtractTest.h"

namespace {

using testing::ElementsAre;

constexpr std::uint16_t kUtf8 = 1U << 11U;

std::uint32_t UnixMode(std::uint32_t mode) { return mode << 16U; }

/// "a/a/a/" with so many levels, of which the first is given.
std::string DeepName(std::string name, int levels) {
  name += '/';
  for (int level = 1; level < levels; ++level) name += "a/";
  return name;
}

/// Two of them have no size together, in 64 bits.
RawEntry HugeEntry(const std::string& name) {
  return {.name = name, .deflate = true, .zip64 = true, .size = std::uint64_t{1} << 63U};
}

INSTANTIATE_TEST_SUITE_P(, ExtractTest, testing::Values(FileSystemKind::Disk, FileSystemKind::Staged),
                         testing::PrintToStringParamName());

TEST_P(ExtractTest, UnpacksFilesAndFoldersWithTheirContent) {
  const std::string page(300'000, 'x');
  const RawZip zip = {{{.name = "imsmanifest.xml", .content = "<manifest/>"},
                       {.name = "media/"},
                       {.name = "media/page.htm", .content = page, .deflate = true},
                       {.name = "media/empty.txt"},
                       {.name = "media/deflated-empty.txt", .deflate = true},
                       {.name = "empty/sub/", .deflate = true},
                       {.name = "empty/sub/"}}};
  ASSERT_EQ(Extract(zip), kTzSuccess);
  EXPECT_THAT(ListTree(Out()), ElementsAre("empty/", "empty/sub/", "imsmanifest.xml", "media/",
                                           "media/deflated-empty.txt", "media/empty.txt", "media/page.htm"));
  EXPECT_EQ(ReadFile(Out() / "imsmanifest.xml"), "<manifest/>");
  EXPECT_EQ(ReadFile(Out() / "media/page.htm"), page);
  EXPECT_EQ(ReadFile(Out() / "media/empty.txt"), "");
}

TEST_P(ExtractTest, TakesEveryFormThatArchiversWrite) {
  const RawEntry plain = {.name = "a", .content = "content"};
  const struct {
    const char* form;
    RawZip zip;
  } rows[] = {
      {"data descriptor", {{{.name = "a", .content = "content", .deflate = true, .descriptor = true}}}},
      {"ZIP64 sizes", {{{.name = "a", .content = "content", .zip64 = true}}}},
      {"ZIP64 directory", {.entries = {plain}, .zip64End = true}},
      {"something before it", {.entries = {plain}, .prefix = "#!/bin/sh\n"}},
      {"something before a ZIP64 directory", {.entries = {plain}, .prefix = "#!", .zip64End = true}},
      {"comment", {.entries = {plain}, .comment = "made by hand PK\x05\x06"}},
      {"mode of a file", {{{.name = "a", .content = "content", .attributes = UnixMode(0100755)}}}},
      {"cut extra field", {{{.name = "a", .content = "content", .extra = "\x55\x54\x09"}}}},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(Extract(row.zip), kTzSuccess) << row.form << testing::PrintToString(recorded.Texts());
    EXPECT_EQ(ReadFile(Out() / "a"), "content") << row.form;
    DeleteOut();
  }
  ExpectTree({}, {});
}

TEST_P(ExtractTest, ReadsNamesAsTheArchiveMeansThem) {
  const struct {
    RawEntry entry;
    std::vector<std::string> tree;
  } rows[] = {
      {{.name = "a//b/./c"}, {"a/", "a/b/", "a/b/c"}},
      {{.name = "./"}, {}},
      {{.name = "./a"}, {"a"}},
      {{.name = "a\\b.htm"}, {"a/", "a/b.htm"}},
      {{.name = "a\\"}, {"a/"}},
      {{.name = "a..b"}, {"a..b"}},
      {{.name = "..."}, {"..."}},
      {{.name = "console.txt"}, {"console.txt"}},
      {{.name = "com"}, {"com"}},
      {{.name = "lpt10"}, {"lpt10"}},
      {{.name = std::string(255, 'n')}, {std::string(255, 'n')}},
      {{.name = "T\x81r.txt"}, {"Tür.txt"}},
      {{.name = "T\x81r.txt", .host = 3}, {"Tür.txt"}},
      {{.name = "T\xC3\xBCr.txt", .host = 3}, {"Tür.txt"}},
      {{.name = "T\xC3\xBCr.txt", .host = 19}, {"Tür.txt"}},
      {{.name = "T\xC3\xBCr.txt", .host = 0}, {"T├╝r.txt"}},
      {{.name = "T\xC3\xBCr.txt", .flags = kUtf8}, {"Tür.txt"}},
      {{.name = "T?r.txt", .extra = RawZip::UnicodePath("T?r.txt", "Tür.txt")}, {"Tür.txt"}},
      {{.name = "T\x81r.txt", .extra = RawZip::UnicodePath("another", "other.txt")}, {"Tür.txt"}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.entry.name);
    ExpectTree({{row.entry}}, row.tree);
  }
}

TEST_P(ExtractTest, RefusesNamesThatAreNoneOfAFileInTheFolder) {
  const std::string out = "the entry's name leads out of the folder";
  const std::string absolute = "the entry's name is absolute";
  const std::string drive = "the entry's name holds a drive letter";
  const std::string device = "the entry's name is that of a device";
  const std::string control = "the entry's name holds a control character";
  std::string longPath(4001, 'n');
  for (std::size_t at = 200; at < longPath.size(); at += 200) longPath[at] = '/';
  const struct {
    RawEntry entry;
    std::string text;
  } rows[] = {
      {{.name = ""}, "in.zip: the entry has no name"},
      {{.name = "../x"}, "in.zip: ../x: " + out},
      {{.name = "a/../../x"}, "in.zip: a/../../x: " + out},
      {{.name = "a\\..\\x"}, "in.zip: a\\..\\x: " + out},
      {{.name = ".."}, "in.zip: ..: " + out},
      {{.name = "/etc/x"}, "in.zip: /etc/x: " + absolute},
      {{.name = "\\x"}, "in.zip: \\x: " + absolute},
      {{.name = "C:/x"}, "in.zip: C:/x: " + drive},
      {{.name = "a/c:x"}, "in.zip: a/c:x: " + drive},
      {{.name = "a\nb"}, "in.zip: a?b: " + control},
      {{.name = std::string("a\0b", 3)}, "in.zip: a?b: " + control},
      {{.name = "con"}, "in.zip: con: " + device},
      {{.name = "a/Nul.txt"}, "in.zip: a/Nul.txt: " + device},
      {{.name = "COM1 .tar.gz"}, "in.zip: COM1 .tar.gz: " + device},
      {{.name = "lpt²/x", .flags = kUtf8}, "in.zip: lpt²/x: " + device},
      {{.name = std::string(256, 'n')},
       "in.zip: " + std::string(200, 'n') + "...: the entry's name is too long"},
      {{.name = longPath}, "in.zip: " + std::string(200, 'n') + "...: the entry's name is too long"},
      {{.name = DeepName("a", 257)},
       "in.zip: " + DeepName("a", 100) + "...: the entry's name has too many levels"},
      {{.name = "a\xFF", .flags = kUtf8}, "in.zip: a\u00A0: the entry's name is malformed UTF-8"},
      {{.name = "a", .extra = RawZip::UnicodePath("a", "../x")}, "in.zip: a: " + out},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.entry.name);
    ExpectRefused({{{.name = "good"}, row.entry}}, row.text);
  }
}

TEST_P(ExtractTest, RefusesEntriesThatItCantUnpackSafely) {
  const std::string disagrees = "in.zip: a: the entry's header disagrees with the directory";
  const std::string outside = "in.zip: a: the entry lies outside the archive";
  const std::string special = "in.zip: a: the entry is a link or a device";
  const struct {
    RawEntry entry;
    std::string text;
  } rows[] = {
      {{.name = "a", .attributes = UnixMode(0120777)}, special},
      {{.name = "a", .attributes = UnixMode(0020666)}, special},
      {{.name = "a", .attributes = UnixMode(0060666)}, special},
      {{.name = "a", .attributes = UnixMode(0010666)}, special},
      {{.name = "a", .attributes = UnixMode(0140777)}, special},
      {{.name = "a", .attributes = 0x400}, special},
      {{.name = "a", .flags = 1}, "in.zip: a: the entry is encrypted"},
      {{.name = "a", .flags = 1U << 13U}, "in.zip: a: the entry is encrypted"},
      {{.name = "a", .method = 12}, "in.zip: a: the entry is packed in an unknown way"},
      {{.name = "a", .content = "x", .size = 2}, "in.zip: a: the entry's sizes disagree"},
      {{.name = "a/", .content = "x"}, "in.zip: a/: the entry is a folder with content"},
      {{.name = "a", .localName = "b"}, disagrees},
      {{.name = "a", .localName = "ab"}, disagrees},
      {{.name = "a", .localMethod = 8}, disagrees},
      {{.name = "a", .localFlags = 1}, disagrees},
      {{.name = "a", .content = "x", .localSize = 2}, disagrees},
      {{.name = "a", .offset = 3}, disagrees},
      {{.name = "a", .offset = 70'000}, outside},
      {{.name = "a", .size = 90'000, .packedSize = 90'000}, outside},
      {{.name = "a", .zip64 = true, .offset = ~0ULL}, outside},
      {{.name = "a", .zip64 = true, .size = ~0ULL, .packedSize = ~0ULL}, outside},
      {{.name = "a", .size = 0xFFFFFFFF, .packedSize = 1}, "in.zip: a: its directory is damaged"},
      {{.name = "a", .disk = 2}, "in.zip: a: is one of several disks"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::PrintToString(&row - &rows[0]));
    ExpectRefused({{{.name = "good", .content = "good"}, row.entry}}, row.text);
  }
}

TEST_P(ExtractTest, RefusesEntriesThatGetInEachOthersWay) {
  const struct {
    std::vector<RawEntry> entries;
    std::string text;
  } rows[] = {
      {{{.name = "a"}, {.name = "./a"}}, "in.zip: ./a: two entries have this name"},
      {{{.name = "a"}, {.name = "a/b"}},
       "in.zip: a/b: the entry lies in a folder that another says is a file"},
      {{{.name = "a/b/c"}, {.name = "a"}}, "in.zip: a: the entry is a file where others need a folder"},
      {{{.name = "a"}, {.name = "a/"}}, "in.zip: a/: the entry is a folder where another is a file"},
  };
  for (const auto& row : rows) ExpectRefused({row.entries}, row.text);

  // The first entry's data holds the header of the second, and the second's data.
  const std::string inner = RawZip{{{.name = "b", .content = "inner"}}}.Build();
  ExpectRefused({{{.name = "a", .content = inner}, {.name = "b", .content = "inner", .offset = 31}}},
                "in.zip: a: the entry overlaps 'b'");
  // The first entry's data goes one byte into the header of the second.
  ExpectRefused({{{.name = "a", .content = "x", .size = 2, .packedSize = 2}, {.name = "b"}}},
                "in.zip: a: the entry overlaps 'b'");
}

TEST_P(ExtractTest, RefusesFilesThatAreNoWholeArchive) {
  const RawEntry a = {.name = "a"};
  std::vector<RawEntry> manyFolders(4000);
  for (RawEntry& entry : manyFolders) {
    entry.name = DeepName(std::to_string(&entry - manyFolders.data()), 256);
  }
  const struct {
    std::string bytes;
    std::string text;
  } rows[] = {
      {"", "in.zip: isn't a ZIP archive, or is cut short"},
      {"%PDF-1.4", "in.zip: isn't a ZIP archive, or is cut short"},
      {RawZip{{a}}.Build() + "trailing", "in.zip: isn't a ZIP archive, or is cut short"},
      {RawZip{.entries = {a}, .disk = 1}.Build(), "in.zip: is one of several disks"},
      {RawZip{.entries = {a}, .zip64End = true, .locatorDisks = 5}.Build(),
       "in.zip: is one of several disks"},
      {RawZip{.entries = {a}, .zip64End = true, .plainDisk = 4}.Build(), "in.zip: is one of several disks"},
      {RawZip{.entries = {a}, .zip64End = true, .locatorOffset = 3}.Build(),
       "in.zip: its directory is damaged"},
      {RawZip{.entries = {a}, .zip64End = true, .locatorOffset = ~0ULL}.Build(),
       "in.zip: its directory is damaged"},
      {RawZip{.entries = {a}, .count = 2}.Build(), "in.zip: its directory is damaged"},
      {RawZip{.entries = {a, a}, .count = 1}.Build(), "in.zip: its directory is damaged"},
      {RawZip{.entries = {a}, .directorySize = 0x7FFFFFFF}.Build(),
       "in.zip: isn't a ZIP archive, or is cut short"},
      {RawZip{.entries = {a}, .zip64End = true, .count = 1'000'001}.Build(),
       "in.zip: holds more than a million entries"},
      {RawZip{{{.name = "a", .deflate = true, .size = 300U << 20U}}}.Build(),
       "in.zip: unpacks to more than 200 times its own size"},
      {RawZip{{HugeEntry("a"), HugeEntry("b")}}.Build(),
       "in.zip: unpacks to more than 200 times its own size"},
      {RawZip{manyFolders}.Build(), "in.zip: holds more than a million files and folders"},
  };
  for (const auto& row : rows) ExpectFailure(row.bytes, kTzBadContent, row.text);
  EXPECT_EQ(TzZipUtils::ExtractFiles(folder.Path(), Out()), kTzBadContent);
  EXPECT_EQ(TzZipUtils::ExtractFiles(folder.Path() / "absent.zip", Out()), kTzMachineFailure);
  EXPECT_EQ(recorded.Texts().back(), "absent.zip: can't read: No such file or directory");
}

TEST_P(ExtractTest, FailsOnDataThatIsntWhatItShouldBe) {
  const std::string big(std::size_t{17} << 20U, 'b');
  const std::string oneByte("\x01\x01\x00\xFE\xFFx", 6);
  RawEntry longData = RawZip::Zeros("a", big.size());
  *longData.packed += "more";
  const std::string damaged = "the entry's packed data is damaged";
  const std::string otherSize = "the entry unpacks to another size than it says";
  const std::string otherCrc = "the entry's CRC-32 doesn't match";
  const struct {
    RawEntry entry;
    std::string text;
  } rows[] = {
      {{.name = "a", .content = "stored", .crc = 1}, otherCrc},
      {{.name = "a", .content = "deflated", .deflate = true, .crc = 1}, otherCrc},
      {{.name = "a", .content = "x", .deflate = true, .packed = "\xFF\xFF"}, damaged},
      {{.name = "a", .content = "x", .deflate = true, .packed = oneByte + "more"}, damaged},
      {longData, damaged},
      {{.name = "a", .content = "longer", .deflate = true, .size = 5}, otherSize},
      {{.name = "a", .content = "shorter", .deflate = true, .size = 8}, otherSize},
      {{.name = "a", .content = big, .deflate = true, .crc = 1}, otherCrc},
      {{.name = "a", .content = big, .deflate = true, .size = big.size() + 1}, otherSize},
      {{.name = "a", .content = big, .deflate = true, .size = big.size() - 1}, otherSize},
      {{.name = "a", .content = big, .deflate = true, .packedSize = 2000}, damaged},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::PrintToString(&row - &rows[0]));
    ExpectRefused({{{.name = "good", .content = "good"}, row.entry, {.name = "z/", .descriptor = true}}},
                  "in.zip: a: " + row.text);
  }
  // Of several bad entries the first is told, whichever worker comes upon its own first.
  RawZip several = {{{.name = "good", .content = "good"}}};
  for (int index = 0; index < 20; ++index) {
    several.entries.push_back({.name = "bad" + std::to_string(index), .content = "x", .crc = 1});
  }
  for (int round = 0; round < 20; ++round) ExpectRefused(several, "in.zip: bad0: " + otherCrc);
}

TEST_P(ExtractTest, RefusesAnArchiveThatIsCutAnywhere) {
  const RawZip zip = {
      .entries = {{.name = "a", .content = "stored"},
                  {.name = "b/", .zip64 = true},
                  {.name = "b/c", .content = "deflated", .deflate = true, .descriptor = true}},
      .comment = "comment",
      .zip64End = true};
  const std::string whole = zip.Build();
  ExpectTree(zip, {"a", "b/", "b/c"});
  for (std::size_t length = 0; length < whole.size(); ++length) {
    SCOPED_TRACE(length);
    ExpectFailure(whole.substr(0, length), kTzBadContent, "in.zip: isn't a ZIP archive, or is cut short");
  }
}

TEST_P(ExtractTest, SurvivesAnyByteBeingChanged) {
  const std::string whole = RawZip{.entries = {{.name = "a", .content = "stored", .zip64 = true},
                                               {.name = "b/c", .content = "deflated", .deflate = true}},
                                   .zip64End = true}
                                .Build();
  for (std::size_t index = 0; index < whole.size(); ++index) {
    for (const unsigned flip : {0x01U, 0x80U, 0xFFU}) {
      std::string changed = whole;
      changed[index] = static_cast<char>(static_cast<unsigned char>(changed[index]) ^ flip);
      const bool unpacked = Extract(changed) == kTzSuccess;
      EXPECT_EQ(tested.Files().GetKind(Out()) == TzNodeKind::Folder, unpacked) << index;
      EXPECT_EQ(recorded.problems.size(), unpacked ? 0U : 1U) << index;
      DeleteOut();
      ExpectNothing();
    }
  }
}

}  // namespace
