// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>

#include "host/files/TzFile.h"

/// Reads an XML 1.0 document as a flat run of events.
///
/// Names of elements and attributes arrive as written, prefix included; all texts are UTF-8. Adjacent
/// character data arrives in one piece, between the tags around it, entities and line ends resolved (comments
/// and processing instructions don't split it). Encodings: what the byte-order mark or the XML declaration
/// says, UTF-8 without either; all that the system's iconv knows but UTF-32, such as UTF-16, ISO-8859-1,
/// windows-1252 and Shift_JIS.
///
/// A hostile document costs nothing: a document type declaration, a file over `kMaximumSize` and elements
/// nested deeper than `kMaximumDepth` end the reading as an error; nothing outside the file is ever fetched.
class TzXMLParser {
 public:
  /// `attributes` is a null-terminated array of alternating names and values.
  using StartHandler = void (*)(void* userData, const char* name, const char** attributes);
  using EndHandler = void (*)(void* userData, const char* name);
  /// `length` counts the bytes of `text`, which isn't terminated.
  using CharacterHandler = void (*)(void* userData, const char* text, int length);

  /// `encoding` 0 goes by the document itself, the only value.
  explicit TzXMLParser(int encoding);
  virtual ~TzXMLParser();
  TzXMLParser(const TzXMLParser&) = delete;
  TzXMLParser& operator=(const TzXMLParser&) = delete;

  /// Reads the source to its end or to its first error, calling the handlers on the way: what stood before an
  /// error has been handed out. An error goes to the session's problem sink, with line and column
  /// ("manifest.xml: line 3, column 7: mismatched tag").
  virtual void parse();

  void setElementHandler(StartHandler start, EndHandler end);
  void setCharacterDataHandler(CharacterHandler handler);
  void setUserData(void* data);
  void setSource(const TzFile& file);

  /// Line of the document, from 1 on: while a handler runs, that where the tag starts which it is called
  /// for, or, for characters, the tag behind them; after a reading that ended in an error of the document,
  /// that of the error; else 0.
  [[nodiscard]] int GetLine() const { return line; }

  /// True after a reading that ended because the document breaks a bound of this class, well formed or not.
  [[nodiscard]] bool WasRefused() const { return wasRefused; }

  static constexpr std::size_t kMaximumSize = std::size_t{16} << 20U;
  static constexpr int kMaximumDepth = 256;

 private:
  TzFile source;
  void* userData = nullptr;
  StartHandler startHandler = nullptr;
  EndHandler endHandler = nullptr;
  CharacterHandler characterHandler = nullptr;
  int line = 0;
  bool wasRefused = false;
};
