// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <concepts>
#include <cstdint>
#include <map>
#include <variant>
#include <vector>

#include "host/text/TzString.h"

/// A value of one of a few kinds: what a cell of a sheet holds and what a view edits.
///
/// Guarantees: a read never fails. Asked for another kind than it holds, a value gives that kind's empty one
/// (false, 0, no text); only integers and doubles are read as each other, a double cut towards zero.
class TzVariant {
 public:
  enum class Kind { Null, Bool, Integer, Double, Text, List, Dictionary };
  using List = std::vector<TzVariant>;
  using Dictionary = std::map<TzString, TzVariant>;

  TzVariant() = default;
  /// Exactly a bool: a pointer doesn't slip in as one.
  template <std::same_as<bool> Flag>
  TzVariant(Flag flag) : content(flag) {}
  TzVariant(int number) : content(std::int64_t{number}) {}
  TzVariant(std::int64_t number) : content(number) {}
  TzVariant(double number) : content(number) {}
  TzVariant(const char* utf8) : content(TzString(utf8)) {}
  TzVariant(TzString text) : content(std::move(text)) {}
  TzVariant(List list) : content(std::move(list)) {}
  TzVariant(Dictionary dictionary) : content(std::move(dictionary)) {}

  [[nodiscard]] Kind GetKind() const { return static_cast<Kind>(content.index()); }
  [[nodiscard]] bool IsNull() const { return GetKind() == Kind::Null; }
  [[nodiscard]] bool IsNumber() const { return GetKind() == Kind::Integer || GetKind() == Kind::Double; }

  [[nodiscard]] bool GetBool() const;
  [[nodiscard]] std::int64_t GetInteger() const;
  [[nodiscard]] double GetDouble() const;
  [[nodiscard]] TzString GetString() const;
  [[nodiscard]] const List& GetList() const;
  [[nodiscard]] const Dictionary& GetDictionary() const;

  /// Same kind and same content; 1 and 1.0 differ.
  bool operator==(const TzVariant& other) const;

 private:
  // In the order of Kind.
  std::variant<std::monostate, bool, std::int64_t, double, TzString, List, Dictionary> content;
};

/// The kind in words for messages: "a whole number", "a text".
const char* GetKindWords(TzVariant::Kind kind);
