// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

#include "host/pdf/TzPdfDocument.h"

/// One of the names trees of a document (PDF 32000-1, 7.7.4 and 7.9.6).
class TzPdfNameTree {
 public:
  /// The tree of this name, such as "JavaScript". Not valid if the document has none.
  static TzPdfNameTree Find(const TzPdfDocument& document, std::string_view name);
  /// Makes an empty one in the place of what the document has under the name.
  static TzPdfNameTree Create(TzPdfDocument& document, std::string_view name);

  [[nodiscard]] bool IsValid() const { return root.IsDictionary(); }
  /// Puts an object under the key, in the place of one that is there already. Only the nodes along the
  /// way to the key's place are read, so that damage elsewhere in the tree does no harm.
  void Put(const std::string& key, const TzPdfObject& value);

 private:
  explicit TzPdfNameTree(TzPdfObject tree) : root(std::move(tree)) {}

  TzPdfObject root;
};
