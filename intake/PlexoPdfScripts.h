// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "host/pdf/TzPdfDocument.h"

/// Puts JavaScript into a PDF document (PDF 32000-1, 12.6.4.16). A null script leaves an action without text.
class PlexoPdfScripts {
 public:
  /// Adds a script that runs when the document is opened, under a name in the document's names tree. False if
  /// the library failed.
  [[nodiscard]] static bool AddDocumentScript(TzPdfDocument& document, const char* name, const char* script);

  /// Adds a script that runs when the page is opened. A JavaScript that the page runs then already loses its
  /// text to ours, and stays in its place among the page's actions; actions of other kinds run after ours.
  /// False if the library failed.
  static bool AddPageOpenScript(TzPdfDocument& document, TzPdfObject page, const char* script);

  /// The first JavaScript action among those that run when the page is opened, else null.
  [[nodiscard]] static TzPdfObject FindPageScriptAction(const TzPdfObject& page);
  /// A new indirect action; null if the library failed.
  [[nodiscard]] static TzPdfObject NewScriptAction(TzPdfDocument& document, const char* script);
  /// A text of up to 256 bytes becomes a string, a longer one a packed stream. Nothing happens if the library
  /// fails.
  static void SetActionScript(TzPdfDocument& document, TzPdfObject action, const char* script);
};
