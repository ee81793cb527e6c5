// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <string>
#include <string_view>

/// Text as the host and the component exchange it: 16-bit code units (UTF-16), convertible to UTF-8.
///
/// Guarantees: comparison and ordering are plain, unit by unit, with no locale and no folding. UTF-8 that is
/// malformed becomes U+FFFD for each bad sequence; a unit of a surrogate pair that stands alone becomes
/// U+FFFD on the way out. So a conversion never fails.
class TzString {
 public:
  TzString() = default;
  /// From UTF-8. Implicit, so that literals read as texts; null counts as empty.
  TzString(const char* utf8);
  TzString(const std::string& utf8);
  TzString(std::string_view utf8);
  explicit TzString(std::u16string content);

  /// The number in decimal, without leading zeros.
  static TzString FromNumber(std::uint64_t number);

  [[nodiscard]] bool IsEmpty() const { return units.empty(); }
  /// Number of 16-bit units.
  [[nodiscard]] std::size_t Length() const { return units.size(); }
  /// The unit at this index, which must be below `Length()`.
  [[nodiscard]] char16_t At(std::size_t index) const { return units[index]; }
  /// Up to `count` units from `start`; less at the end of the text, none past it.
  [[nodiscard]] TzString Substring(std::size_t start, std::size_t count) const;

  TzString& operator+=(const TzString& tail);
  /// Appends UTF-8 without making a text of it first.
  void AppendUTF8(std::string_view utf8);

  /// Puts `replacement` in place of every occurrence of `find`, from left to right, without looking at what
  /// was put in. An empty `find` changes nothing.
  void ReplaceAll(const TzString& find, const TzString& replacement);

  [[nodiscard]] std::string GetUTF8String() const;
  [[nodiscard]] const std::u16string& GetUnits() const { return units; }

  /// The decimal integer that the text starts with, 0 if it starts with none (as C's strtol reads it).
  [[nodiscard]] long ToInteger() const;
  /// The number that the text starts with, 0.0 if it starts with none, independent of the locale.
  [[nodiscard]] double ToDouble() const;

  auto operator<=>(const TzString& other) const = default;

 private:
  std::u16string units;
};

TzString operator+(TzString head, const TzString& tail);
std::ostream& operator<<(std::ostream& stream, const TzString& text);
