// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <functional>
#include <span>
#include <string>
#include <string_view>

/// Finds the addresses that a page or a style sheet states: attributes such as "src" and "href", url() and
/// @import. Addresses that a script puts together aren't found. The text comes in pieces; memory doesn't grow
/// with it.
class PlexoReferenceScan {
 public:
  /// `base` is the address of the base element in front of it, empty without one.
  using Receive = std::function<void(std::string_view base, std::string_view address)>;

  explicit PlexoReferenceScan(Receive receiveAddress) : receive(std::move(receiveAddress)) {}

  void Feed(std::span<const std::byte> piece);
  /// Ends the text.
  void Finish();

 private:
  enum class State { Text, BeforeValue, InQuotes, Bare };

  void Take(char character);
  void TakeText(char character);
  void StartValue(char character);
  void TakeBare(char character);
  void EndValue();

  Receive receive;
  State state = State::Text;
  /// The last word, in lower case, and whether blanks stand behind it.
  std::string word;
  bool isWordOver = false;
  /// The name of the element that the text is in, and whether `word` is such a name.
  std::string element;
  bool isElementName = false;
  /// What ends the value: a quotation mark, or ")" behind "url(".
  char end = 0;
  std::string value;
  std::string base;
};
