// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

/// Bounds what a document's packed objects and tables may come to (a thousand times the file, if nobody
/// counts), and what its objects may take in memory: 128 MiB and 64 times the file, 2 GiB at most. The
/// content of other streams is never unpacked. UI thread only, one document at a time.
class TzPdfUnpacking {
 public:
  /// Has the library unpack through this class, which knows the filters that writers of objects use: deflate,
  /// with or without the predictors of PNG (PDF 32000-1, 7.4.4). What another filter packs can't be read.
  static void Register();
  /// Counts from nothing, for a file of this size.
  static void StartDocument(std::uint64_t fileSize);
  /// Throws `TzPdfFailure` when a document has gone over a bound. Called at every read.
  static void Check();
};
