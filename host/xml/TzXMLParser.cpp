// SPDX-License-Identifier: Apache-2.0
#include "host/xml/TzXMLParser.h"

#include <expat.h>

#include <algorithm>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "host/files/TzFileSystem.h"
#include "host/files/TzStreamUtil.h"
#include "host/session/TzProblem.h"
#include "host/xml/TzXMLTranscoder.h"

namespace {

constexpr std::size_t kFirstPiece = std::size_t{64} << 10U;

struct Handlers {
  TzXMLParser::StartHandler start;
  TzXMLParser::EndHandler end;
  TzXMLParser::CharacterHandler character;
  void* userData;
  /// Set to the line reached before a handler is called.
  int* line;
};

// What a byte-order mark says goes before what the document declares: a document that was saved anew in
// another encoding keeps the declaration that it had.
const char* GetMarkedEncoding(std::string_view start) {
  if (start.starts_with("\xEF\xBB\xBF")) return "UTF-8";
  if (start.starts_with("\xFF\xFE") || start.starts_with("\xFE\xFF")) return "UTF-16";
  return nullptr;
}

/// Takes the pieces of one document and calls the handlers.
class DocumentReading {
 public:
  /// A null `encoding` goes by the document.
  DocumentReading(const Handlers& callees, const char* encoding)
      : handlers(callees), parser(XML_ParserCreate(encoding)) {
    if (parser == nullptr) return;
    XML_SetUserData(parser.get(), this);
    XML_SetElementHandler(parser.get(), OnStart, OnEnd);
    XML_SetCharacterDataHandler(parser.get(), OnCharacters);
    XML_SetStartDoctypeDeclHandler(parser.get(), OnDoctype);
    XML_SetUnknownEncodingHandler(parser.get(), OnUnknownEncoding, this);
  }

  /// False if the reading ended in an error, as `GetError` tells.
  bool Feed(std::string_view piece, bool isLast) {
    if (parser == nullptr) {
      error = "no memory";
      return false;
    }
    if (XML_Parse(parser.get(), piece.data(), static_cast<int>(piece.size()), isLast ? 1 : 0) ==
        XML_STATUS_OK) {
      return true;
    }
    if (error.empty()) SetError(XML_ErrorString(XML_GetErrorCode(parser.get())));
    return false;
  }

  /// Ends the reading at the place reached.
  void SetError(std::string_view message) {
    NoteLine();
    error = "line " + std::to_string(*handlers.line) + ", column " +
            std::to_string(XML_GetCurrentColumnNumber(parser.get()) + 1) + ": ";
    error += message;
  }

  [[nodiscard]] const std::string& GetError() const { return error; }
  /// The error is that the document breaks a bound.
  [[nodiscard]] bool IsRefused() const { return isRefused; }
  /// The encoding that the document declares and expat lacks.
  [[nodiscard]] const std::string& GetUnknownEncoding() const { return unknownEncoding; }

 private:
  void Refuse(std::string_view message) {
    SetError(message);
    isRefused = true;
    XML_StopParser(parser.get(), XML_FALSE);
  }

  void NoteLine() { *handlers.line = static_cast<int>(XML_GetCurrentLineNumber(parser.get())); }

  void FlushText() {
    if (text.empty()) return;
    if (handlers.character != nullptr) {
      handlers.character(handlers.userData, text.data(), static_cast<int>(text.size()));
    }
    text.clear();
  }

  static void OnStart(void* self, const char* name, const char** attributes) {
    auto& reading = *static_cast<DocumentReading*>(self);
    if (!reading.error.empty()) return;
    if (reading.depth == TzXMLParser::kMaximumDepth) {
      reading.Refuse("elements are nested deeper than " + std::to_string(TzXMLParser::kMaximumDepth));
      return;
    }
    ++reading.depth;
    reading.NoteLine();
    reading.FlushText();
    if (reading.handlers.start != nullptr)
      reading.handlers.start(reading.handlers.userData, name, attributes);
  }

  // A stopped parser still ends the empty element that it was stopped in.
  static void OnEnd(void* self, const char* name) {
    auto& reading = *static_cast<DocumentReading*>(self);
    if (!reading.error.empty()) return;
    --reading.depth;
    reading.NoteLine();
    reading.FlushText();
    if (reading.handlers.end != nullptr) reading.handlers.end(reading.handlers.userData, name);
  }

  static void OnCharacters(void* self, const char* characters, int length) {
    auto& reading = *static_cast<DocumentReading*>(self);
    reading.text.append(characters, static_cast<std::size_t>(length));
  }

  static void OnDoctype(void* self, const char*, const char*, const char*, int) {
    static_cast<DocumentReading*>(self)->Refuse("a document type declaration isn't allowed");
  }

  static int OnUnknownEncoding(void* self, const char* name, XML_Encoding*) {
    static_cast<DocumentReading*>(self)->unknownEncoding = name;
    return XML_STATUS_ERROR;
  }

  struct ParserDeleter {
    void operator()(XML_Parser doomed) const { XML_ParserFree(doomed); }
  };

  Handlers handlers;
  std::unique_ptr<XML_ParserStruct, ParserDeleter> parser;
  std::string text;
  int depth = 0;
  std::string error;
  std::string unknownEncoding;
  bool isRefused = false;
};

struct Outcome {
  TzErrorCodeEnum code = kTzSuccess;
  std::string message;
  /// The reading ended in the XML declaration, for want of this encoding.
  std::string unknownEncoding;
  bool isRefused = false;
};

Outcome TooLarge() {
  return {
      kTzBadContent, "larger than " + std::to_string(TzXMLParser::kMaximumSize >> 20U) + " MiB", {}, true};
}

/// Feeds one document, through the transcoder if there is one. Null and empty pieces: the end.
Outcome FeedPiece(DocumentReading& reading, TzXMLTranscoder* transcoder, std::string_view piece) {
  const bool isLast = piece.empty();
  std::string utf8;
  bool isConverted = true;
  if (transcoder != nullptr) {
    isConverted = isLast ? transcoder->IsComplete() : transcoder->Convert(piece, utf8);
    piece = utf8;
  }
  if (!reading.Feed(piece, isLast && isConverted)) {
    return {kTzBadContent, reading.GetError(), reading.GetUnknownEncoding(), reading.IsRefused()};
  }
  if (!isConverted) {
    reading.SetError("not a character of the declared encoding");
    return {kTzBadContent, reading.GetError(), {}, false};
  }
  return {};
}

Outcome ReadDocument(const TzFile& source, const Handlers& handlers, TzXMLTranscoder* transcoder) {
  if (TzFileSystem::Current().GetSize(source.GetPath()) > TzXMLParser::kMaximumSize) return TooLarge();
  const std::unique_ptr<TzReadStream> stream = TzStreamUtil::CreateFileStreamRead(source);
  if (stream == nullptr) return {kTzFailure, "can't be opened", {}, false};

  std::unique_ptr<DocumentReading> reading;
  std::vector<std::byte> buffer(kFirstPiece);
  for (std::size_t total = 0;;) {
    const std::ptrdiff_t count = stream->Read(buffer);
    if (count < 0) return {kTzMachineFailure, "can't be read", {}, false};
    total += static_cast<std::size_t>(count);
    if (total > TzXMLParser::kMaximumSize) return TooLarge();
    const std::string_view piece(reinterpret_cast<const char*>(buffer.data()),
                                 static_cast<std::size_t>(count));
    if (reading == nullptr) {
      const char* encoding = transcoder != nullptr ? "UTF-8" : GetMarkedEncoding(piece);
      reading = std::make_unique<DocumentReading>(handlers, encoding);
    }
    Outcome outcome = FeedPiece(*reading, transcoder, piece);
    if (outcome.code != kTzSuccess || count == 0) return outcome;
    // expat starts a token anew with every piece. Pieces that grow with what was read keep one token as long
    // as the document from costing the square of its length.
    buffer.resize(std::max(kFirstPiece, total));
  }
}

}  // namespace

TzXMLParser::TzXMLParser(int /*encoding*/) {}

TzXMLParser::~TzXMLParser() = default;

void TzXMLParser::parse() {
  const Handlers handlers{startHandler, endHandler, characterHandler, userData, &line};
  line = 0;
  Outcome outcome = ReadDocument(source, handlers, nullptr);
  if (!outcome.unknownEncoding.empty()) {
    // The XML declaration comes before everything that is handed out, so reading can start anew.
    if (const auto transcoder = TzXMLTranscoder::Create(outcome.unknownEncoding); transcoder != nullptr) {
      outcome = ReadDocument(source, handlers, transcoder.get());
    }
  }
  wasRefused = outcome.isRefused;
  if (outcome.code == kTzSuccess) {
    line = 0;
  } else {
    TzReportProblem(outcome.code, source.GetPath().GetFileName().GetUTF8String(), outcome.message);
  }
}

void TzXMLParser::setElementHandler(StartHandler start, EndHandler end) {
  startHandler = start;
  endHandler = end;
}

void TzXMLParser::setCharacterDataHandler(CharacterHandler handler) { characterHandler = handler; }

void TzXMLParser::setUserData(void* data) { userData = data; }

void TzXMLParser::setSource(const TzFile& file) { source = file; }
