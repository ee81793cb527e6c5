// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "host/files/TzPath.h"

/// One thing that a document does against its schema.
struct TzSchemaFinding {
  /// From 1 on; 0 for what concerns the document as a whole.
  int line = 0;
  std::string message;
};

/// Validates documents against the published SCORM schema documents in a folder (W3C XML Schema 1.0).
///
/// Every schema is taken from the folder, by file name, wherever an import says it lies; the network is never
/// asked. One published document of SCORM 1.2 isn't well-formed by the letter (it makes the xml namespace its
/// default one); it is mended in memory, the file stays as it is.
///
/// Documents are read in one pass, whatever their size; one with a document type declaration is refused.
class TzXMLSchemaValidator {
 public:
  /// `folder` holds the schema documents; `edition` says of which SCORM version: "1.2" or "2004".
  TzXMLSchemaValidator(const TzPath& folder, const std::string& edition);
  ~TzXMLSchemaValidator();
  TzXMLSchemaValidator(const TzXMLSchemaValidator&) = delete;
  TzXMLSchemaValidator& operator=(const TzXMLSchemaValidator&) = delete;

  /// Empty if the schema documents could be compiled, else what is wrong with them.
  [[nodiscard]] const std::string& GetSchemaError() const;
  /// What the document does against the schema, in document order; empty for a valid one. Also what keeps it
  /// from being read at all.
  [[nodiscard]] std::vector<TzSchemaFinding> Validate(const TzPath& document) const;

 private:
  struct Schema;
  std::unique_ptr<Schema> schema;
};
