// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string>
#include <string_view>

/// Turns a text in any encoding that the system knows into UTF-8, piece by piece: single-byte, multi-byte and
/// those that shift between character sets.
class TzXMLTranscoder {
 public:
  /// Null if the system knows no encoding of this name. Names that in practice stand for an extension of what
  /// they say mean the extension (Shift_JIS as Windows writes it, GBK for GB2312).
  static std::unique_ptr<TzXMLTranscoder> Create(const std::string& encoding);

  ~TzXMLTranscoder();
  TzXMLTranscoder(const TzXMLTranscoder&) = delete;
  TzXMLTranscoder& operator=(const TzXMLTranscoder&) = delete;

  /// Appends the next piece to `utf8`; a character may lie across two pieces. False at the first bytes that
  /// mean nothing in the encoding; what stood before them is appended.
  [[nodiscard]] bool Convert(std::string_view piece, std::string& utf8);
  /// False if the last piece ended within a character.
  [[nodiscard]] bool IsComplete() const { return tail.empty(); }

 private:
  explicit TzXMLTranscoder(void* opened) : converter(opened) {}

  void* converter;
  std::string tail;
};
