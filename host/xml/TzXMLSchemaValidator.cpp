// SPDX-License-Identifier: Apache-2.0
#include "host/xml/TzXMLSchemaValidator.h"

#include <libxml/parserInternals.h>
#include <libxml/xmlreader.h>
#include <libxml/xmlschemas.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <mutex>
#include <set>
#include <span>
#include <string_view>
#include <utility>

#include "host/files/TzStreamUtil.h"
#include "host/xml/TzSchemaFolder.h"

namespace {

struct Vocabulary {
  std::string_view prefix;
  std::string_view uri;
  std::string_view file;
};

// The first one is the default namespace of manifests.
constexpr std::array kVocabularies12 = {
    Vocabulary{"", "http://www.imsproject.org/xsd/imscp_rootv1p1p2", "imscp_rootv1p1p2.xsd"},
    Vocabulary{"imsmd:", "http://www.imsglobal.org/xsd/imsmd_rootv1p2p1", "imsmd_rootv1p2p1.xsd"},
    Vocabulary{"adlcp:", "http://www.adlnet.org/xsd/adlcp_rootv1p2", "adlcp_rootv1p2.xsd"},
};
constexpr std::array kVocabularies2004 = {
    Vocabulary{"", "http://www.imsglobal.org/xsd/imscp_v1p1", "imscp_v1p1.xsd"},
    Vocabulary{"lom:", "http://ltsc.ieee.org/xsd/LOM", "lom.xsd"},
    Vocabulary{"adlcp:", "http://www.adlnet.org/xsd/adlcp_v1p3", "adlcp_v1p3.xsd"},
    Vocabulary{"imsss:", "http://www.imsglobal.org/xsd/imsss", "imsss_v1p0.xsd"},
    Vocabulary{"adlseq:", "http://www.adlnet.org/xsd/adlseq_v1p3", "adlseq_v1p3.xsd"},
    Vocabulary{"adlnav:", "http://www.adlnet.org/xsd/adlnav_v1p3", "adlnav_v1p3.xsd"},
};
using Vocabularies = std::span<const Vocabulary>;

Vocabularies GetVocabularies(std::string_view edition) {
  if (edition == "1.2") return kVocabularies12;
  if (edition == "2004") return kVocabularies2004;
  return {};
}

std::string_view View(const xmlChar* text) {
  return text != nullptr ? reinterpret_cast<const char*>(text) : std::string_view();
}

void ReplaceNamespace(std::string& message, std::string_view uri, std::string_view prefix) {
  const std::string braced = "{" + std::string(uri) + "}";
  for (std::size_t at = 0; (at = message.find(braced, at)) != std::string::npos; at += prefix.size()) {
    message.replace(at, braced.size(), prefix);
  }
}

/// libxml2's message in the words of a manifest's author: "{namespace}" becomes the usual prefix.
std::string GetMessage(const xmlError& error, Vocabularies vocabularies) {
  std::string message = error.message != nullptr ? error.message : "unknown error";
  ReplaceNamespace(message, "http://www.w3.org/XML/1998/namespace", "xml:");
  for (const auto& [prefix, uri, file] : vocabularies) ReplaceNamespace(message, uri, prefix);
  while (message.ends_with('\n') || message.ends_with('.')) message.pop_back();
  if (message.starts_with("Element ")) message[0] = 'e';
  return message;
}

// libxml2 has one loader for the whole process, which knows no user data. Other threads pass through to the
// loader that was.
std::mutex loaderMutex;
std::atomic<xmlExternalEntityLoader> otherLoader = nullptr;
thread_local TzSchemaFolder* loadingFolder = nullptr;

xmlParserInputPtr LoadFromFolder(const char* address, const char* id, xmlParserCtxtPtr context) {
  if (loadingFolder == nullptr) return otherLoader.load()(address, id, context);
  if (address == nullptr) return nullptr;
  const std::optional<std::string> text = loadingFolder->Read(address);
  if (!text.has_value()) return nullptr;
  xmlParserInputBufferPtr buffer =
      xmlParserInputBufferCreateMem(text->data(), static_cast<int>(text->size()), XML_CHAR_ENCODING_NONE);
  if (buffer == nullptr) return nullptr;
  xmlParserInputPtr input = xmlNewIOInputStream(context, buffer, XML_CHAR_ENCODING_NONE);
  if (input == nullptr) {
    xmlFreeParserInputBuffer(buffer);
    return nullptr;
  }
  input->filename = reinterpret_cast<char*>(xmlCharStrdup(address));
  return input;
}

/// Lets every document that libxml2 loads on this thread come from the folder, as long as it lives.
class LoaderGuard {
 public:
  explicit LoaderGuard(TzSchemaFolder& folder) : lock(loaderMutex) {
    xmlInitParser();
    otherLoader = xmlGetExternalEntityLoader();
    loadingFolder = &folder;
    xmlSetExternalEntityLoader(LoadFromFolder);
  }
  ~LoaderGuard() {
    xmlSetExternalEntityLoader(otherLoader);
    loadingFolder = nullptr;
  }
  LoaderGuard(const LoaderGuard&) = delete;
  LoaderGuard& operator=(const LoaderGuard&) = delete;

 private:
  std::lock_guard<std::mutex> lock;
};

struct SchemaDeleter {
  void operator()(xmlSchema* doomed) const { xmlSchemaFree(doomed); }
  void operator()(xmlSchemaParserCtxt* doomed) const { xmlSchemaFreeParserCtxt(doomed); }
};

constexpr std::string_view kAddress = "schemas:///";

/// A schema of no namespace that imports all that a manifest may hold. The addresses are of a scheme of their
/// own, so that those in the documents resolve against it, free of the rules for names on the disk.
std::string WriteImports(Vocabularies vocabularies) {
  std::string text = R"(<schema xmlns="http://www.w3.org/2001/XMLSchema">)";
  for (const Vocabulary& vocabulary : vocabularies) {
    text.append(R"(<import namespace=")").append(vocabulary.uri);
    text.append(R"(" schemaLocation=")").append(kAddress).append(vocabulary.file).append(R"("/>)");
  }
  return text + "</schema>";
}

void KeepFirstError(void* userData, xmlErrorPtr error) {
  auto& kept = *static_cast<std::string*>(userData);
  if (error->level < XML_ERR_ERROR || !kept.empty()) return;
  if (error->file != nullptr) {
    const std::string_view address = error->file;
    kept = address.substr(address.rfind('/') + 1);
    kept += ": line " + std::to_string(error->line) + ": ";
  }
  kept += GetMessage(*error, {});
}

/// Names that a document declares for itself and refers to (XML Schema Part 1, clause 3.15.4). libxml2 checks
/// them only in a document that it holds as a tree.
class Identifiers {
 public:
  Identifiers(Vocabularies vocabularies, std::vector<TzSchemaFinding>& target)
      : packaging(vocabularies.front().uri), findings(target) {}

  /// Notes what the element that the reader stands on declares and refers to.
  void Visit(xmlTextReader* reader) {
    const std::string_view uri = View(xmlTextReaderConstNamespaceUri(reader));
    if (uri == packaging) {
      Declare(reader, "identifier");
      if (View(xmlTextReaderConstLocalName(reader)) == "organizations") Refer(reader, "default");
    } else if (uri == "http://www.imsglobal.org/xsd/imsss") {
      Declare(reader, "ID");
      Refer(reader, "IDRef");
    }
  }

  /// Adds a finding for each reference to what the document doesn't declare.
  void Finish() {
    for (const auto& [line, attribute, value] : references) {
      if (declared.contains(value)) continue;
      AddFinding(line, attribute, value, "is declared nowhere");
    }
    std::stable_sort(findings.begin(), findings.end(),
                     [](const TzSchemaFinding& a, const TzSchemaFinding& b) { return a.line < b.line; });
  }

 private:
  struct Reference {
    int line;
    std::string attribute;
    std::string value;
  };

  void Declare(xmlTextReader* reader, const char* attribute) {
    const std::string value = GetValue(reader, attribute);
    if (value.empty() || declared.insert(value).second) return;
    AddFinding(GetLine(reader), attribute, value, "is declared already");
  }

  void Refer(xmlTextReader* reader, const char* attribute) {
    std::string value = GetValue(reader, attribute);
    if (value.empty()) return;
    references.push_back({GetLine(reader), attribute, std::move(value)});
  }

  void AddFinding(int line, std::string_view attribute, std::string_view value, std::string_view fault) {
    std::string message = "attribute '";
    message.append(attribute).append("': '").append(value).append("' ").append(fault);
    findings.push_back({line, std::move(message)});
  }

  // The parser is ahead of the node that the reader stands on.
  static int GetLine(xmlTextReader* reader) {
    return static_cast<int>(xmlGetLineNo(xmlTextReaderCurrentNode(reader)));
  }

  /// Without blanks around it, as the types collapse them.
  static std::string GetValue(xmlTextReader* reader, const char* attribute) {
    constexpr const char* blanks = " \t\r\n";
    xmlChar* raw = xmlTextReaderGetAttributeNs(reader, reinterpret_cast<const xmlChar*>(attribute), nullptr);
    std::string value(View(raw));
    xmlFree(raw);
    value.erase(0, value.find_first_not_of(blanks));
    return value.substr(0, value.find_last_not_of(blanks) + 1);
  }

  std::string_view packaging;
  std::vector<TzSchemaFinding>& findings;
  std::set<std::string, std::less<>> declared;
  std::vector<Reference> references;
};

struct Report {
  Vocabularies vocabularies;
  std::vector<TzSchemaFinding> findings;
};

void AddFinding(void* userData, xmlErrorPtr error) {
  if (error->level < XML_ERR_ERROR) return;
  auto& report = *static_cast<Report*>(userData);
  report.findings.push_back({error->line, GetMessage(*error, report.vocabularies)});
}

/// Sends what libxml2 has to say on this thread to one report. The reader's own handler would be the natural
/// way, but libxml2 crashes in it at a document that is ill-formed while a schema is set (seen in 2.9.14).
class ReportGuard {
 public:
  explicit ReportGuard(Report& report)
      : otherHandler(xmlStructuredError), otherData(xmlStructuredErrorContext) {
    xmlSetStructuredErrorFunc(&report, AddFinding);
  }
  ~ReportGuard() { xmlSetStructuredErrorFunc(otherData, otherHandler); }
  ReportGuard(const ReportGuard&) = delete;
  ReportGuard& operator=(const ReportGuard&) = delete;

 private:
  xmlStructuredErrorFunc otherHandler;
  void* otherData;
};

int ReadDocument(void* userData, char* buffer, int length) {
  auto& stream = *static_cast<TzReadStream*>(userData);
  const std::span<char> target(buffer, static_cast<std::size_t>(length));
  return static_cast<int>(stream.Read(std::as_writable_bytes(target)));
}

struct ReaderDeleter {
  void operator()(xmlTextReader* doomed) const { xmlFreeTextReader(doomed); }
};

void ReadThrough(xmlTextReader* reader, Report& report) {
  Identifiers identifiers(report.vocabularies, report.findings);
  int hasNode = 1;
  while ((hasNode = xmlTextReaderRead(reader)) == 1) {
    const int kind = xmlTextReaderNodeType(reader);
    if (kind == XML_READER_TYPE_ELEMENT) identifiers.Visit(reader);
    if (kind == XML_READER_TYPE_DOCUMENT_TYPE) {
      report.findings.push_back({0, "a document type declaration isn't allowed"});
      return;
    }
  }
  // What an ill-formed document declares is known in part only.
  if (hasNode == 0) identifiers.Finish();
}

}  // namespace

struct TzXMLSchemaValidator::Schema {
  Vocabularies vocabularies;
  std::unique_ptr<xmlSchema, SchemaDeleter> compiled;
  std::string error;
};

TzXMLSchemaValidator::TzXMLSchemaValidator(const TzPath& folder, const std::string& edition)
    : schema(std::make_unique<Schema>()) {
  schema->vocabularies = GetVocabularies(edition);
  if (schema->vocabularies.empty()) {
    schema->error = "'" + edition + "': no edition of SCORM whose schema is known; use 1.2 or 2004";
    return;
  }
  TzSchemaFolder documents(folder);
  const LoaderGuard guard(documents);
  const std::string imports = WriteImports(schema->vocabularies);
  const std::unique_ptr<xmlSchemaParserCtxt, SchemaDeleter> context(
      xmlSchemaNewMemParserCtxt(imports.data(), static_cast<int>(imports.size())));
  xmlSchemaSetParserStructuredErrors(context.get(), KeepFirstError, &schema->error);
  schema->compiled.reset(xmlSchemaParse(context.get()));
  // libxml2 goes on without a document that it can't load, and would then pass elements unseen.
  if (!documents.GetMissing().empty()) {
    std::string address = documents.GetMissing().front();
    if (address.starts_with(kAddress)) address.erase(0, kAddress.size());
    schema->error = folder.GetString().GetUTF8String() + ": '" + address + "' is missing";
  }
  if (schema->compiled == nullptr && schema->error.empty()) schema->error = "the schema can't be compiled";
}

TzXMLSchemaValidator::~TzXMLSchemaValidator() = default;

const std::string& TzXMLSchemaValidator::GetSchemaError() const { return schema->error; }

std::vector<TzSchemaFinding> TzXMLSchemaValidator::Validate(const TzPath& document) const {
  if (!schema->error.empty()) return {{0, schema->error}};
  const std::unique_ptr<TzReadStream> stream = TzStreamUtil::CreateFileStreamRead(TzFile(document));
  if (stream == nullptr) return {{0, "can't be opened"}};
  const std::unique_ptr<xmlTextReader, ReaderDeleter> reader(xmlReaderForIO(
      ReadDocument, nullptr, stream.get(), nullptr, nullptr, XML_PARSE_NONET | XML_PARSE_BIG_LINES));
  Report report{schema->vocabularies, {}};
  if (reader == nullptr || xmlTextReaderSetSchema(reader.get(), schema->compiled.get()) != 0) {
    return {{0, "can't be read: no memory"}};
  }
  const ReportGuard guard(report);
  ReadThrough(reader.get(), report);
  return std::move(report.findings);
}
