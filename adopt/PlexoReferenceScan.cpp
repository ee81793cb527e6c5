// SPDX-License-Identifier: Apache-2.0
#include "adopt/PlexoReferenceScan.h"

#include <algorithm>
#include <array>
#include <utility>

namespace {

constexpr std::size_t kLongestWord = 32;
constexpr std::size_t kLongestAddress = 4096;

/// Attributes that hold an address; "value" is a parameter's, and "url" stands in a refresh.
constexpr std::array<std::string_view, 12> kAttributes = {"src",    "href",       "data",     "poster",
                                                          "srcset", "background", "data-src", "data-href",
                                                          "lowsrc", "value",      "url",      "action"};

bool IsBlank(char character) {
  return character == ' ' || character == '\t' || character == '\r' || character == '\n' || character == '\f';
}

bool IsQuote(char character) { return character == '"' || character == '\''; }

char FoldCase(char character) {
  return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
}

bool IsPartOfWord(char character) {
  return (character >= 'a' && character <= 'z') || (character >= '0' && character <= '9') ||
         character == '-' || character == '_' || character == '@';
}

bool HoldsAddress(std::string_view attribute) {
  return std::find(kAttributes.begin(), kAttributes.end(), attribute) != kAttributes.end();
}

std::string DecodeAmpersands(std::string text) {
  constexpr std::string_view kEntity = "&amp;";
  for (std::size_t at = text.find(kEntity); at != std::string::npos; at = text.find(kEntity, at + 1)) {
    text.erase(at + 1, kEntity.size() - 1);
  }
  return text;
}

std::string_view TakeFirstWord(std::string_view& text) {
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
  const auto* const stop = std::find_if(text.begin(), text.end(), IsBlank);
  const std::string_view first = text.substr(0, static_cast<std::size_t>(stop - text.begin()));
  text.remove_prefix(first.size());
  return first;
}

}  // namespace

void PlexoReferenceScan::Feed(std::span<const std::byte> piece) {
  for (const std::byte byte : piece) {
    // Every second byte of a text in UTF-16 is zero.
    if (byte != std::byte(0)) Take(static_cast<char>(byte));
  }
}

void PlexoReferenceScan::Finish() {
  if (state == State::Bare) EndValue();
}

void PlexoReferenceScan::Take(char character) {
  switch (state) {
    case State::Text:
      TakeText(character);
      break;
    case State::BeforeValue:
      if (!IsBlank(character)) StartValue(character);
      break;
    case State::InQuotes:
      if (character == end) {
        EndValue();
      } else if (value.size() <= kLongestAddress) {
        value += character;
      }
      break;
    case State::Bare:
      TakeBare(character);
      break;
  }
}

void PlexoReferenceScan::TakeText(char character) {
  const char folded = FoldCase(character);
  if (IsPartOfWord(folded)) {
    if (isWordOver) word.clear();
    isWordOver = false;
    if (word.size() <= kLongestWord) word += folded;
    return;
  }
  if (isElementName) element = word;
  isElementName = false;
  if (IsBlank(character)) {
    isWordOver = true;
    return;
  }
  const bool isUrl = character == '(' && word == "url";
  if (isUrl || (character == '=' && HoldsAddress(word))) {
    state = State::BeforeValue;
    end = isUrl ? ')' : 0;
    return;
  }
  if (IsQuote(character) && word == "@import") {
    StartValue(character);
    return;
  }
  word.clear();
  isElementName = character == '<';
}

void PlexoReferenceScan::StartValue(char character) {
  value.clear();
  if (IsQuote(character)) {
    end = character;
    state = State::InQuotes;
  } else {
    state = State::Bare;
    TakeBare(character);
  }
}

void PlexoReferenceScan::TakeBare(char character) {
  const bool isEnd = IsBlank(character) || IsQuote(character) || character == (end == ')' ? ')' : '>');
  if (isEnd) {
    EndValue();
  } else if (value.size() <= kLongestAddress) {
    value += character;
  }
}

void PlexoReferenceScan::EndValue() {
  state = State::Text;
  const std::string attribute = std::exchange(word, {});
  isWordOver = false;
  if (value.empty() || value.size() > kLongestAddress) return;
  const std::string address = DecodeAmpersands(value);
  if (attribute == "href" && element == "base") {
    base = address;
  } else if (attribute == "srcset") {
    // Addresses with their sizes: "small.png 1x, large.png 2x".
    for (std::string_view rest = address; !rest.empty();) {
      std::string_view candidate = rest.substr(0, rest.find(','));
      rest.remove_prefix(std::min(candidate.size() + 1, rest.size()));
      receive(base, TakeFirstWord(candidate));
    }
  } else {
    std::string_view trimmed = address;
    while (!trimmed.empty() && IsBlank(trimmed.front())) trimmed.remove_prefix(1);
    while (!trimmed.empty() && IsBlank(trimmed.back())) trimmed.remove_suffix(1);
    receive(base, trimmed);
  }
}
