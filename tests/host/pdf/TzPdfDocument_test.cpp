// SPDX-License-Identifier: Apache-2.0
#include "host/pdf/TzPdfDocument.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <zlib.h>

#include <cerrno>
#include <functional>

#include "host/pdf/TzPdfFailure.h"
#include "host/pdf/TzPdfKit.h"
#include "host/pdf/TzPdfNameTree.h"
#include "support/FaultyFileSystem.h"
#include "support/FileSystemUnderTest.h"
#include "support/PdfFile.h"
#include "support/ProgramRun.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

class TzPdfDocumentTest : public testing::Test {
 protected:
  TzPdfDocumentTest() { TzPdfKit::Start(); }
  ~TzPdfDocumentTest() override { TzPdfKit::Stop(); }

  TestSession session;
  TestFolder folder;
};

/// Numbered objects from this one on, each made of its own number.
void AddChain(PdfFile& file, int first, int count, const std::function<std::string(int)>& content) {
  for (int number = first; number < first + count; ++number) file.Object(number, content(number));
}

std::string RefTo(int number) { return std::to_string(number) + " 0 R "; }

/// A page tree in which every level has one kid, but for the last, which has the one page.
PdfFile MakeDeepTree(int levels) {
  PdfFile file(1);
  file.Catalog("/Pages 5000 0 R");
  AddChain(file, 5'000, levels, [=](int number) {
    const int kid = number + 1 < 5'000 + levels ? number + 1 : 10;
    return "<< /Type /Pages /Count 1 /Kids [ " + RefTo(kid) + "] >>";
  });
  return file;
}

/// A page tree in which every level has its one kid twice.
PdfFile MakeDoublingTree(int levels) {
  PdfFile file(1);
  file.Object(2, "<< /Type /Pages /Count 1 /Kids [ 5000 0 R 5000 0 R ] >>");
  AddChain(file, 5'000, levels, [=](int number) {
    const std::string kid = RefTo(number + 1 < 5'000 + levels ? number + 1 : 10);
    return "<< /Type /Pages /Count 1 /Kids [ " + kid + kid + "] >>";
  });
  return file;
}

/// A page whose content's length is that of a stream, whose length is that of a stream, and so on.
PdfFile MakeLengthChain(int length) {
  PdfFile file(1);
  file.Page(0, "/Contents 5000 0 R");
  AddChain(file, 5'000, length,
           [](int number) { return "<< /Length " + RefTo(number + 1) + ">>\nstream\nx\nendstream"; });
  return file;
}

/// A document whose table of objects is so many zeros, packed to a thousandth.
std::string MakePackedTable(std::size_t size) {
  const std::string zeros(size, '\0');
  std::string packed(compressBound(size), '\0');
  uLongf length = packed.size();
  EXPECT_EQ(compress(reinterpret_cast<Bytef*>(packed.data()), &length,
                     reinterpret_cast<const Bytef*>(zeros.data()), size),
            Z_OK);
  return "%PDF-1.5\n1 0 obj\n<< /Type /XRef /Size 2 /W [ 1 4 2 ] /Root 1 0 R /Filter /FlateDecode /Length " +
         std::to_string(length) + " >>\nstream\n" + packed.substr(0, length) +
         "\nendstream\nendobj\nstartxref\n9\n%%EOF\n";
}

std::vector<std::string> KeysOf(const TzPdfObject& node) {
  std::vector<std::string> keys;
  for (std::size_t index = 0; index < node.Get("Names").GetCount(); index += 2) {
    keys.push_back(node.Get("Names").At(index).GetText());
  }
  for (std::size_t index = 0; index < node.Get("Kids").GetCount(); ++index) {
    const auto more = KeysOf(node.Get("Kids").At(index));
    keys.insert(keys.end(), more.begin(), more.end());
  }
  return keys;
}

}  // namespace

TEST_F(TzPdfDocumentTest, ReadsAndRewritesDocumentsFromTheWild) {
  const TzPath plain = PdfFile(3)
                           .Page(1, "/Contents 5000 0 R")
                           .Object(5'000, "<< /Length 9 >>\nstream\n0 0 m f Q\nendstream")
                           .Save(folder.Path());
  const auto convert = [&](const std::vector<std::string>& options) {
    return ReadFile(ConvertPdf(plain, options));
  };
  const struct {
    const char* kind;
    std::string content;
    std::size_t pages;
  } cases[] = {
      {"plain", PdfFile(3).Build(), 3},
      {"one page", PdfFile(1).Build(), 1},
      {"without pages", PdfFile(0).Build(), 0},
      {"large", PdfFile(2'000).Build(), 2'000},
      {"damaged cross-reference", PdfFile(3).DamageTable().Build(), 3},
      {"cut off behind its objects",
       PdfFile(3).Build().substr(0, PdfFile(3).Build().find("xref")) + "trailer << /Root 1 0 R >>", 3},
      {"linearised", convert({"--linearize"}), 3},
      {"object streams", convert({"--object-streams=generate"}), 3},
      {"with an owner's password", convert({"--encrypt", "", "secret", "256", "--"}), 3},
      {"circular page tree",
       PdfFile(1).Object(2, "<< /Type /Pages /Kids [ 10 0 R 2 0 R 10 0 R ] /Count 3 >>").Build(), 2},
      {"page tree with strangers",
       PdfFile(1).Object(2, "<< /Type /Pages /Kids [ null 7 (x) 77 0 R 10 0 R ] >>").Build(), 1},
      {"page tree of nodes without numbers",
       PdfFile(1)
           .Object(2, "<< /Type /Pages /Kids 5000 0 R >>")
           .Object(5'000, "[ << /Kids 5000 0 R >> << /Kids [ 10 0 R ] >> ]")
           .Build(),
       1},
      {"page tree as deep as long", MakeDeepTree(60'000).Build(), 1},
      {"page tree of 2^60 pages", MakeDoublingTree(60).Build(), 2},
      {"short chain of lengths", MakeLengthChain(100).Build(), 1},
  };
  for (const auto& [kind, content, pages] : cases) {
    const TzPath file = folder.Write("case.pdf", content);
    TzPdfDocument document(file);
    EXPECT_EQ(document.CountPages(), pages) << kind;
    document.Save(file);
    EXPECT_EQ(TzPdfDocument(file).CountPages(), pages) << kind;
  }
}

TEST_F(TzPdfDocumentTest, RefusesWhatIsNoDocumentAndSaysWhy) {
  const TzPath plain = PdfFile(1).Save(folder.Path());
  const TzPath locked = ConvertPdf(plain, {"--encrypt", "reader", "secret", "256", "--"});
  const struct {
    TzPath file;
    std::string reason;
  } cases[] = {
      {folder.Path() / "absent.pdf", "it can't be read"},
      {folder.Write("empty.pdf", ""), "unable to find trailer dictionary"},
      {folder.Write("text.pdf", "Not a document.\n"), "unable to find trailer dictionary"},
      {folder.Write("catalog.pdf", "%PDF-1.5\ntrailer << /Root 9 0 R >>\n"), "unable to find"},
      {locked, "it opens with a password only"},
      {folder.Write("bomb.pdf", MakePackedTable(20'000'000)), "its packed objects are too large"},
  };
  for (const auto& [file, reason] : cases) {
    EXPECT_THROW(static_cast<void>(TzPdfKit::Open(file)), TzPdfFailure) << file;
    EXPECT_THAT(session.problems.back().GetText(), HasSubstr(file.GetFileName().GetUTF8String() + ": "))
        << file;
    EXPECT_THAT(session.problems.back().message, HasSubstr(reason)) << file;
  }
  TzPdfDocument longChain(MakeLengthChain(20'000).Save(folder.Path()));
  EXPECT_THROW(longChain.Save(folder.Path() / "saved.pdf"), TzPdfFailure);
  TzPdfKit::Stop();
  EXPECT_THROW(static_cast<void>(TzPdfKit::Open(plain)), TzPdfFailure);
}

TEST_F(TzPdfDocumentTest, SavesTheSameBytesEveryTimeAndLeavesStreamsAsTheyAre) {
  const std::string kStream = "<< /Filter [ /ASCIIHexDecode ] /Length 5 >>\nstream\n4142>\nendstream";
  const TzPath file = PdfFile(1).Page(0, "/Contents 5000 0 R").Object(5'000, kStream).Save(folder.Path());
  for (const char* name : {"first.pdf", "second.pdf"}) TzPdfDocument(file).Save(folder.Path() / name);
  EXPECT_EQ(ReadFile(folder.Path() / "first.pdf"), ReadFile(folder.Path() / "second.pdf"));
  EXPECT_THAT(ReadFile(folder.Path() / "first.pdf"), HasSubstr("/Filter [ /ASCIIHexDecode ]"));
  EXPECT_THAT(ReadFile(folder.Path() / "first.pdf"), HasSubstr("stream\n4142>"));
}

TEST_F(TzPdfDocumentTest, AFailedSaveLeavesTheFileAndNothingBesideIt) {
  for (const FileSystemKind kind : {FileSystemKind::Disk, FileSystemKind::Staged}) {
    const FileSystemUnderTest files(kind);
    const TzPath file = files.Folder() / "a.pdf";
    WriteFile(file, PdfFile(3).Build());
    using Operation = FaultyFileSystem::Operation;
    for (const Operation operation :
         {Operation::OpenWrite, Operation::Write, Operation::Close, Operation::Move}) {
      TzPdfDocument document(file);
      const FaultyFileSystem faulty(operation, 1, ENOSPC);
      EXPECT_THROW(document.Save(file), TzPdfFailure) << kind;
      EXPECT_EQ(session.problems.back().code, kTzMachineFailure);
    }
    EXPECT_EQ(ReadFile(file), PdfFile(3).Build());
    EXPECT_THAT(ListTree(files.Folder()), ElementsAre("a.pdf"));
    TzPdfDocument(file).Save(file);
    EXPECT_NE(ReadFile(file), PdfFile(3).Build());
    EXPECT_EQ(TzPdfDocument(file).CountPages(), 3U);
  }
}

TEST_F(TzPdfDocumentTest, PutsAKeyIntoItsPlaceInANamesTree) {
  const auto withTree = [](const std::string& tree) {
    return PdfFile(1)
        .Catalog("/Names << /JavaScript " + tree + " >>")
        .Object(5'000, "<< /Limits [ (a) (c) ] /Names [ (a) 1 (c) 2 ] >>")
        .Object(5'001, "<< /Limits [ (k) (p) ] /Names [ (k) 3 (p) 4 ] >>")
        .Object(5'002, "<< /Limits [ (a) (z) ] /Kids [ 5002 0 R ] >>");
  };
  const struct {
    PdfFile file;
    std::string key;
    std::vector<std::string> keys;
  } cases[] = {
      {PdfFile(1), "m", {"m"}},
      {PdfFile(1).Catalog("/Names 7"), "m", {"m"}},
      {withTree("<< /Names [ (b) 1 (x) 2 ] >>"), "m", {"b", "m", "x"}},
      {withTree("<< /Names [ (b) 1 (m) 2 ] >>"), "m", {"b", "m"}},
      {withTree("<< /Names [ (b) ] >>"), "a", {"a", "b"}},
      {withTree("<< /Kids [ 5000 0 R 5001 0 R ] >>"), "m", {"a", "c", "k", "m", "p"}},
      {withTree("<< /Kids [ 5000 0 R 5001 0 R ] >>"), "e", {"a", "c", "e", "k", "p"}},
      {withTree("<< /Kids [ 5000 0 R 5001 0 R ] >>"), "A", {"A", "a", "c", "k", "p"}},
  };
  for (const auto& [file, key, keys] : cases) {
    TzPdfDocument document(file.Save(folder.Path()));
    TzPdfNameTree tree = TzPdfNameTree::Find(document, "JavaScript");
    if (!tree.IsValid()) tree = TzPdfNameTree::Create(document, "JavaScript");
    tree.Put(key, TzPdfObject::NewString("put"));
    const TzPdfObject root = document.GetCatalog().Get("Names").Get("JavaScript");
    EXPECT_EQ(KeysOf(root), keys);
    EXPECT_EQ(root.Get("Kids").At(0).Get("Limits").At(0).GetText(), key == "A"         ? "A"
                                                                    : root.Has("Kids") ? "a"
                                                                                       : "");
  }
  TzPdfDocument circular(withTree("5002 0 R").Save(folder.Path()));
  EXPECT_THROW(TzPdfNameTree::Find(circular, "JavaScript").Put("m", TzPdfObject::NewInteger(1)),
               TzPdfFailure);
}

TEST_F(TzPdfDocumentTest, AQuestionHasAnAnswerForEveryObjectAndAChangeOfTheWrongKindFails) {
  TzPdfObject name = TzPdfObject::NewName("Name");
  EXPECT_TRUE(name.Get("Key").IsNull() && name.At(0).IsNull() && name.IsName("Name"));
  EXPECT_EQ(name.GetCount(), 0U);
  EXPECT_THAT(name.GetText(), IsEmpty());
  EXPECT_THROW(name.Set("Key", name), TzPdfFailure);
  EXPECT_THROW(name.Append(name), TzPdfFailure);
}
