// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "host/pdf/TzPdfFailure.h"

/// Measures how deep the library recurses: a document can chain its objects so that reading one takes reading
/// the next. Alive while a guarded operation runs; the outermost one of a thread counts.
class TzPdfDepth {
 public:
  TzPdfDepth();
  ~TzPdfDepth();
  TzPdfDepth(const TzPdfDepth&) = delete;
  TzPdfDepth& operator=(const TzPdfDepth&) = delete;

  /// Throws `TzPdfFailure` when more of the stack is in use than any sound document needs. Called wherever
  /// the library calls back.
  static void Check();

 private:
  bool isOutermost;
};

/// Rethrows the exception that is being handled as a `TzPdfFailure`.
[[noreturn]] void ThrowPdfFailure();

/// Runs a piece of work with the library; whatever it throws comes out as a `TzPdfFailure`.
template <typename Work>
auto GuardPdf(const Work& work) {
  const TzPdfDepth depth;
  try {
    return work();
  } catch (...) {
    ThrowPdfFailure();
  }
}
