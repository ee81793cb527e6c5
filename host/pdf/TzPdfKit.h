// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>

#include "host/pdf/TzPdfDocument.h"

/// The PDF library. It is started and stopped by the program or component that uses it, and opens documents
/// only between the two. UI thread only.
class TzPdfKit {
 public:
  static void Start();
  /// Nothing happens if it isn't started.
  static void Stop();
  [[nodiscard]] static bool IsStarted();

  /// Opens a document, mending it where needed. Throws `TzPdfFailure`, with a problem reported, if it can't
  /// be opened or the library isn't started.
  [[nodiscard]] static std::unique_ptr<TzPdfDocument> Open(const TzPath& file);
};
