// SPDX-License-Identifier: Apache-2.0
#include "host/pdf/TzPdfDocument.h"

#include <cerrno>
#include <cstring>
#include <qpdf/FileInputSource.hh>
#include <qpdf/Pipeline.hh>
#include <qpdf/Pl_Flate.hh>
#include <qpdf/Pl_String.hh>
#include <qpdf/QPDF.hh>
#include <qpdf/QPDFExc.hh>
#include <qpdf/QPDFWriter.hh>
#include <set>
#include <string>

#include "host/files/TzFileSystem.h"
#include "host/files/TzFileUtil.h"
#include "host/files/TzStreamUtil.h"
#include "host/pdf/TzPdfEncryption.h"
#include "host/pdf/TzPdfGuard.h"
#include "host/pdf/TzPdfUnpacking.h"
#include "host/session/TzProblem.h"

namespace {

/// Mending takes the library time in step with what is damaged times the number of objects.
constexpr std::size_t kMostWarnings = 5'000;

void CheckDamage(const QPDF& document) {
  TzPdfUnpacking::Check();
  if (document.numWarnings() > kMostWarnings) throw TzPdfFailure("too much of it is damaged");
}

/// The file on the disk. Reading is where the library comes by on every level of its recursion.
class PdfInput final : public FileInputSource {
 public:
  PdfInput(const char* fileName, const QPDF& reader) : FileInputSource(fileName), document(reader) {}

  size_t read(char* bytes, size_t length) override {
    TzPdfDepth::Check();
    CheckDamage(document);
    return FileInputSource::read(bytes, length);
  }

 private:
  const QPDF& document;
};

/// Hands what the library writes to a stream.
class PdfOutput final : public Pipeline {
 public:
  PdfOutput(TzWriteStream& writeStream, const TzPath& file)
      : Pipeline("file", nullptr), stream(writeStream), path(file) {}

  void write(unsigned char const* data, size_t length) override {
    Check(stream.Write(std::as_bytes(std::span(data, length))));
  }
  void finish() override {}
  void Close() { Check(stream.Close()); }

 private:
  void Check(TzErrorCodeEnum result) {
    if (result == kTzSuccess) return;
    TzReportSystemProblem(errno, path.GetNative(), "can't write");
    throw TzPdfFailure("it can't be written");
  }

  TzWriteStream& stream;
  const TzPath& path;
};

/// A file that takes another's place once it is complete. Gone with this object, unless it has done so.
class FileBeside {
 public:
  explicit FileBeside(const TzPath& target) {
    TzFileSystem& files = TzFileSystem::Current();
    std::string name = target.GetNative();
    do name += ".part";
    while (files.GetKind(TzPath::FromNative(name)) != TzNodeKind::Absent);
    path = TzPath::FromNative(name);
  }
  ~FileBeside() { TzFileUtil::DeleteFile(path); }
  FileBeside(const FileBeside&) = delete;
  FileBeside& operator=(const FileBeside&) = delete;

  [[nodiscard]] const TzPath& GetPath() const { return path; }
  void MoveTo(const TzPath& target) const {
    if (TzFileSystem::Current().Move(path, target) == kTzSuccess) return;
    TzReportSystemProblem(errno, target.GetNative(), "can't replace");
    throw TzPdfFailure("it can't be replaced");
  }

 private:
  TzPath path;
};

void OpenFile(QPDF& document, const TzPath& file) {
  try {
    document.processInputSource(std::make_shared<PdfInput>(file.GetNative().c_str(), document));
  } catch (const QPDFExc& failure) {
    const bool isEncryption =
        failure.getErrorCode() == qpdf_e_password || failure.getErrorCode() == qpdf_e_unsupported;
    const std::string reason = isEncryption ? TzPdfEncryption::DescribeRefusal(document) : std::string();
    if (reason.empty()) throw;
    throw TzPdfFailure(reason);
  }
  const std::string method = TzPdfEncryption::FindUnknownMethod(document);
  if (method.empty()) return;
  throw TzPdfFailure("its encryption method '" + method +
                     "' isn't supported; save the document without encryption");
}

void WriteDocument(QPDF& document, Pipeline& output) {
  // Streams are copied as they are: packing them anew would cost time and change what the author has made.
  for (QPDFObjectHandle& object : document.getAllObjects()) {
    if (object.isStream()) object.setFilterOnWrite(false);
  }
  QPDFWriter writer(document);
  writer.setOutputPipeline(&output);
  writer.setDecodeLevel(qpdf_dl_none);
  // For the streams that the writer makes of its own, which hold objects.
  writer.setCompressStreams(true);
  if (!document.isEncrypted()) writer.setDeterministicID(true);
  writer.write();
  // The library takes what it fails to read for null and goes on.
  CheckDamage(document);
}

std::string Deflate(std::string_view content) {
  std::string packed;
  Pl_String end("packed", nullptr, packed);
  Pl_Flate deflate("deflate", &end, Pl_Flate::a_deflate);
  deflate.write(reinterpret_cast<const unsigned char*>(content.data()), content.size());
  deflate.finish();
  return packed;
}

}  // namespace

TzPdfDocument::TzPdfDocument(const TzPath& file) {
  const TzPath realFile = TzFileSystem::Current().GetRealFile(file);
  if (realFile.IsEmpty()) throw TzPdfFailure("it can't be read");
  GuardPdf([&] {
    TzPdfUnpacking::StartDocument(TzFileSystem::Current().GetSize(file));
    document = std::make_unique<QPDF>();
    document->setSuppressWarnings(true);
    OpenFile(*document, realFile);
    CheckDamage(*document);
    // A file without a catalog is no document, however much of it could be mended.
    document->getRoot();
    CheckDamage(*document);
  });
}

TzPdfDocument::~TzPdfDocument() = default;

bool TzPdfDocument::GrantsChange() const {
  return GuardPdf([&] {
    return document->ownerPasswordMatched() ||
           (document->allowModifyOther() && document->allowModifyAnnotation());
  });
}

bool TzPdfDocument::IsCollection() const {
  return GuardPdf([&] {
    const bool isCollection = GetCatalog().Get("Collection").IsDictionary();
    CheckDamage(*document);
    return isCollection;
  });
}

std::size_t TzPdfDocument::CountPages() {
  CollectPages();
  return pages.size();
}

TzPdfObject TzPdfDocument::GetPage(std::size_t index) {
  CollectPages();
  if (index >= pages.size()) throw TzPdfFailure("it has no page " + std::to_string(index + 1));
  return pages[index];
}

TzPdfObject TzPdfDocument::GetCatalog() const {
  return GuardPdf([&] { return TzPdfObject(document->getRoot()); });
}

TzPdfObject TzPdfDocument::NewIndirect(const TzPdfObject& object) {
  return GuardPdf([&] { return TzPdfObject(document->makeIndirectObject(object.GetHandle())); });
}

TzPdfObject TzPdfDocument::NewStream(std::string_view content, const TzPdfObject& attributes) {
  return GuardPdf([&] {
    const TzPdfObject filter = attributes.Get("Filter");
    const bool deflates = filter.GetCount() == 1 && filter.At(0).IsName("FlateDecode");
    if (!deflates && !filter.IsNull()) throw TzPdfFailure("a stream can't be encoded as it says");
    QPDFObjectHandle stream = document->newStream();
    stream.replaceDict(attributes.GetHandle());
    stream.replaceStreamData(deflates ? Deflate(content) : std::string(content), filter.GetHandle(),
                             QPDFObjectHandle::newNull());
    return TzPdfObject(stream);
  });
}

void TzPdfDocument::Save(const TzPath& file) {
  const FileBeside beside(file);
  const auto stream = TzStreamUtil::CreateFileStreamWrite(TzFile(beside.GetPath()), 0, 0, 0);
  if (stream == nullptr) throw TzPdfFailure("it can't be written");
  GuardPdf([&] {
    PdfOutput output(*stream, file);
    WriteDocument(*document, output);
    output.Close();
  });
  beside.MoveTo(file);
}

void TzPdfDocument::CollectPages() {
  if (hasCollectedPages) return;
  struct Branch {
    TzPdfObject kids;
    std::size_t next = 0;
  };
  std::set<int> seen;
  std::vector<Branch> branches;
  const auto isNew = [&](const TzPdfObject& object) {
    return object.GetNumber() == 0 || seen.insert(object.GetNumber()).second;
  };
  const auto visit = [&](const TzPdfObject& node) {
    if (!node.IsDictionary()) return;
    const TzPdfObject kids = node.Get("Kids");
    if (!kids.IsArray()) {
      pages.push_back(node);
    } else if (isNew(node) && isNew(kids)) {
      // Nodes needn't have numbers: a list of kids that has one may hold a node that leads back to the list.
      branches.push_back({kids});
    }
  };
  pages.clear();
  const TzPdfObject root = GetCatalog().Get("Pages");
  if (root.Get("Kids").IsArray()) visit(root);
  // A tree may be as deep as a list: no recursion.
  while (!branches.empty()) {
    Branch& branch = branches.back();
    if (branch.next == branch.kids.GetCount()) {
      branches.pop_back();
    } else {
      visit(branch.kids.At(branch.next++));
    }
  }
  GuardPdf([&] { CheckDamage(*document); });
  hasCollectedPages = true;
}
