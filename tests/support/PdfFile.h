// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <map>
#include <string>
#include <vector>

#include "host/files/TzPath.h"

/// A PDF document in the making, object by object, in PDF's own notation. Object 1 is the catalog, 2 the root
/// of the page tree, the pages count from 10; a test has the numbers from 5 000 on for its own.
class PdfFile {
 public:
  explicit PdfFile(int pageCount);

  /// Entries for the catalog ("/Names 5000 0 R").
  PdfFile& Catalog(const std::string& entries);
  /// Entries for the page of this index.
  PdfFile& Page(int index, const std::string& entries);
  /// The object of this number, in the place of one that is there.
  PdfFile& Object(int number, const std::string& content);
  /// Entries for the trailer ("/Encrypt 5000 0 R").
  PdfFile& Trailer(const std::string& entries);
  /// The cross-reference table's place is told wrong.
  PdfFile& DamageTable();

  [[nodiscard]] std::string Build() const;
  TzPath Save(const TzPath& folder, const std::string& name = "document.pdf") const;

 private:
  std::string catalog;
  std::string trailer;
  std::vector<std::string> pages;
  std::map<int, std::string> others;
  bool hasTable = true;
};

/// Makes another document of one with the program `qpdf`, given its options. Returns its path.
TzPath ConvertPdf(const TzPath& document, const std::vector<std::string>& options);
