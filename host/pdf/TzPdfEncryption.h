// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

class QPDF;

/// How a document is encrypted (PDF 32000-1, 7.6), as far as its reading depends on it.
class TzPdfEncryption {
 public:
  /// Why the document, which the library has just failed to open, can't be read without a password, in words
  /// for its author. Empty if its encryption isn't the cause.
  static std::string DescribeRefusal(QPDF& document);
  /// The name of a way to encrypt text and streams that the library doesn't know: it would decrypt them to
  /// noise. Empty if it knows them all.
  static std::string FindUnknownMethod(QPDF& document);
};
