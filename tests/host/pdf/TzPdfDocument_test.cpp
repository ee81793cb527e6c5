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

/// A stream with this content, packed.
std::string MakePackedStream(const std::string& entries, const std::string& content) {
  std::string packed(compressBound(content.size()), '\0');
  uLongf length = packed.size();
  EXPECT_EQ(compress(reinterpret_cast<Bytef*>(packed.data()), &length,
                     reinterpret_cast<const Bytef*>(content.data()), content.size()),
            Z_OK);
  return "<< " + entries + " /Filter /FlateDecode /Length " + std::to_string(length) + " >>\nstream\n" +
         packed.substr(0, length) + "\nendstream";
}

/// A document whose table of objects is so many zeros, packed to a thousandth.
std::string MakePackedTable(std::size_t size) {
  return "%PDF-1.5\n1 0 obj\n" +
         MakePackedStream("/Type /XRef /Size 2 /W [ 1 4 2 ] /Root 1 0 R", std::string(size, '\0')) +
         "\nendobj\nstartxref\n9\n%%EOF\n";
}

/// A document with an array of so many numbers in a stream of objects.
std::string MakePackedNumbers(std::size_t count) {
  std::string numbers = "2 0 [ ";
  for (std::size_t index = 0; index < count; ++index) numbers += "1 ";
  std::string text = "%PDF-1.5\n";
  std::string table(4, '\0');
  const auto add = [&](int number, const std::string& content) {
    const std::size_t at = text.size();
    table += '\1';
    for (const unsigned shift : {16U, 8U, 0U}) table += static_cast<char>(at >> shift);
    text += std::to_string(number) + " 0 obj\n" + content + "\nendobj\n";
  };
  add(1, "<< /Type /Catalog /Pages 1 0 R /Kids [ ] >>");
  table += std::string("\2\0\0\3", 4);
  add(3, MakePackedStream("/Type /ObjStm /N 1 /First 4", numbers + "]"));
  const std::size_t start = text.size();
  add(4, "");
  text.resize(start);
  return text + "4 0 obj\n" + MakePackedStream("/Type /XRef /Size 5 /W [ 1 3 0 ] /Root 1 0 R", table) +
         "\nendobj\nstartxref\n" + std::to_string(start) + "\n%%EOF\n";
}

/// A document that needs a password for what its encryption dictionary, which gets these entries, says.
std::string MakeEncrypted(const std::string& entries) {
  const std::string hash = "<" + std::string(64, 'A') + ">";
  return PdfFile(1)
      .Trailer("/Encrypt 5000 0 R /ID [ <00> <00> ]")
      .Object(5'000, "<< /V 4 /R 4 /Length 128 /P -4 /O " + hash + " /U " + hash + " " + entries + " >>")
      .Build();
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
  const std::string kStandard =
      "/Filter /Standard /CF << /StdCF << /AuthEvent /EFOpen /CFM /AESV2 /Length 16 >> >>";
  const auto encrypted = [&](const std::string& name, const std::string& entries) {
    return folder.Write(name + ".pdf", MakeEncrypted(entries));
  };
  const struct {
    TzPath file;
    std::string reason;
  } cases[] = {
      {folder.Path() / "absent.pdf", "it can't be read"},
      {folder.Write("empty.pdf", ""), "unable to find trailer dictionary"},
      {folder.Write("text.pdf", "Not a document.\n"), "unable to find trailer dictionary"},
      {folder.Write("catalog.pdf", "%PDF-1.5\ntrailer << /Root 9 0 R >>\n"), "unable to find"},
      {locked, "it opens with a password only"},
      {encrypted("attachments", kStandard + " /StmF /Identity /StrF /Identity /EFF /StdCF"),
       "protects attachments only"},
      {encrypted("plain", kStandard), "protects attachments only"},
      {encrypted("all", kStandard + " /StmF /StdCF /StrF /StdCF"), "it opens with a password only"},
      {encrypted("handler", "/Filter /Adobe.PubSec"), "encryption filter 'Adobe.PubSec' isn't supported"},
      {folder.Write("bomb.pdf", MakePackedTable(20'000'000)), "its packed objects are too large"},
  };
  for (const auto& [file, reason] : cases) {
    EXPECT_THROW(static_cast<void>(TzPdfKit::Open(file)), TzPdfFailure) << file;
    EXPECT_THAT(session.problems.back().GetText(), HasSubstr(file.GetFileName().GetUTF8String() + ": "))
        << file;
    EXPECT_THAT(session.problems.back().message, HasSubstr(reason)) << file;
  }
  // Few bytes and many objects.
  const TzPath numbers = folder.Write("numbers.pdf", MakePackedNumbers(1'200'000));
  EXPECT_LT(ReadFile(numbers).size(), 20'000U);
  try {
    TzPdfDocument(numbers).Save(folder.Path() / "saved.pdf");
    FAIL() << "it was saved";
  } catch (const TzPdfFailure& failure) {
    EXPECT_THAT(failure.what(), HasSubstr("its objects take too much memory"));
  }
  TzPdfDocument(folder.Write("numbers.pdf", MakePackedNumbers(100'000))).Save(folder.Path() / "saved.pdf");
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
