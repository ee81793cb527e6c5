// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <memory>

#include "core/PlexoSCOModel.h"
#include "host/pdf/TzPdfDocument.h"
#include "host/text/ITzStringDictionary.h"

/// Makes a SCO of a PDF document: a copy that reports to the LMS which of its pages were seen, and a page
/// that launches it.
class PlexoPdfWrapping {
 public:
  /// Adds the document as the driver adds a file: 0, or 1 after a box. The author's file is only read.
  [[nodiscard]] static int AddDocument(const TzPath& path, const TzPath& scoFolder, PlexoSCOModel& sco,
                                       const ITzStringDictionary& dictionary);

  /// 0 for a document that can be tracked. -1: empty path; -2: it can't be opened or read; -3: its
  /// permissions don't allow the change; -4: a portfolio.
  [[nodiscard]] static std::int32_t CheckPdfFile(const TzPath& path);

  /// Puts the scripts and the form fields that they need into the document, and saves it in its place. A null
  /// script leaves its actions without text. The number of pages; or -1: empty path; -2: it can't be opened;
  /// -4: the document's script couldn't be added. Any other failure, and a document without pages, throws
  /// `TzPdfFailure`. A failure leaves the file as it was.
  [[nodiscard]] static std::int32_t InsertTrackingScripts(const TzPath& path, const char* documentScript,
                                                          const char* firstPageScript,
                                                          const char* otherPagesScript);

  /// Opens a document and says on the console how that went. Null if it failed.
  [[nodiscard]] static std::unique_ptr<TzPdfDocument> OpenPdfDocument(const TzPath& path);
};
