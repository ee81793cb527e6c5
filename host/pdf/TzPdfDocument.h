// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string_view>
#include <vector>

#include "host/files/TzPath.h"
#include "host/pdf/TzPdfObject.h"

class QPDF;

/// An open PDF document; `TzPdfKit` opens one. Closed by its destructor.
///
/// Objects are read from the file when they are asked for, and the content of streams only while it is saved,
/// so that memory goes with the number of objects. The file mustn't change while the document is open.
/// Operations throw `TzPdfFailure`.
class TzPdfDocument {
 public:
  /// Opens the file. Damage that can be mended is; a document that takes a password to be read isn't opened.
  explicit TzPdfDocument(const TzPath& file);
  ~TzPdfDocument();
  TzPdfDocument(const TzPdfDocument&) = delete;
  TzPdfDocument& operator=(const TzPdfDocument&) = delete;

  /// True if whoever opens the document without a password may change its content and make form fields in it
  /// (bits 4 and 6 of the user access permissions; PDF 32000-1, 7.6.3.2).
  [[nodiscard]] bool GrantsChange() const;
  /// True for a portable collection (7.11.6).
  [[nodiscard]] bool IsCollection() const;

  /// The pages in their order (7.7.3). A node of the page tree that is met a second time counts once.
  [[nodiscard]] std::size_t CountPages();
  /// The page's dictionary. Throws if there is no such page.
  [[nodiscard]] TzPdfObject GetPage(std::size_t index);
  [[nodiscard]] TzPdfObject GetCatalog() const;
  /// The document information dictionary (14.3.3); null if there is none.
  [[nodiscard]] TzPdfObject GetInformation() const;

  /// Makes an indirect object of a direct one; the handle that comes back names it.
  [[nodiscard]] TzPdfObject NewIndirect(const TzPdfObject& object);
  /// A new indirect stream with these attributes and this content, which is encoded as the attributes say:
  /// `Filter` is absent, or an array of the one name `FlateDecode`.
  [[nodiscard]] TzPdfObject NewStream(std::string_view content, const TzPdfObject& attributes);

  /// Writes the whole document to the file, which may be the one that was opened: it keeps its old content
  /// until the new one is complete. The document's streams and its encryption stay as they are, its objects
  /// are numbered anew. An unencrypted document becomes the same bytes every time.
  void Save(const TzPath& file);

 private:
  void CollectPages();

  std::unique_ptr<QPDF> document;
  bool hasCollectedPages = false;
  std::vector<TzPdfObject> pages;
};
