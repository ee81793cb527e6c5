// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "host/files/TzResource.h"
#include "host/sheets/TzSheetError.h"

class ITzStringDictionary;
class TzVariant;

/// A piece of a sheet's text: YAML 1.2 without anchors and aliases.
struct TzSheetNode {
  enum class Kind { Nothing, Scalar, List, Map };
  struct Entry;

  Kind kind = Kind::Nothing;
  /// From 1.
  int line = 1;
  /// Of a scalar.
  std::string text;
  bool isQuoted = false;
  std::vector<TzSheetNode> items;
  /// Of a map, in the order of the text; no key twice.
  std::vector<Entry> entries;

  /// Null if there is none of the key.
  [[nodiscard]] const TzSheetNode* Find(std::string_view key) const;
};

struct TzSheetNode::Entry {
  std::string key;
  int line = 1;
  TzSheetNode value;
};

/// Reads a sheet's text and gives the values in it their meaning. Every operation that finds a fault throws a
/// `TzSheetError` with the line.
class TzSheetText {
 public:
  /// Without a dictionary, a localized text is its key.
  TzSheetText(const TzResource& sheet, const ITzStringDictionary* words);

  [[nodiscard]] const TzSheetNode& GetRoot() const { return root; }

  [[noreturn]] void Refuse(int line, const std::string& what) const;
  /// The value of a key that has to be there.
  [[nodiscard]] const TzSheetNode& Require(const TzSheetNode& map, std::string_view key,
                                           TzSheetNode::Kind kind) const;
  /// A word: letters, digits and underscores.
  [[nodiscard]] std::string ReadWord(const TzSheetNode& node) const;
  /// true, false, a number, a "quoted text", localize("key"), and lists and maps of these.
  [[nodiscard]] TzVariant ReadValue(const TzSheetNode& node) const;

 private:
  [[nodiscard]] TzVariant ReadScalar(const TzSheetNode& node) const;
  [[nodiscard]] TzVariant Localize(const TzSheetNode& node) const;

  std::string file;
  const ITzStringDictionary* dictionary;
  TzSheetNode root;
};
