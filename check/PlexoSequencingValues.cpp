// SPDX-License-Identifier: Apache-2.0
#include "check/PlexoSequencingValues.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <system_error>

namespace {

/// A value as a note shows it: foreign text may be of any length.
std::string Quote(const std::string& written) {
  constexpr std::size_t kMost = 40;
  return "'" + (written.size() > kMost ? written.substr(0, kMost) + "..." : written) + "'";
}

std::string NameAttribute(const PlexoManifestElement& element, std::string_view attribute) {
  return "'" + std::string(attribute) + "' of '" + element.name + "'";
}

std::string_view TrimNumber(std::string_view text) {
  constexpr std::string_view kBlanks = " \t\r\n";
  const std::size_t start = text.find_first_not_of(kBlanks);
  if (start == std::string_view::npos) return {};
  text = text.substr(start, text.find_last_not_of(kBlanks) - start + 1);
  if (text.size() > 1 && text.front() == '+' && text[1] != '-') text.remove_prefix(1);
  return text;
}

template <typename Number>
std::optional<Number> Parse(std::string_view written) {
  const std::string_view text = TrimNumber(written);
  const char* end = text.data() + text.size();
  Number number{};
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  if (text.empty() || error != std::errc() || stop != end) return std::nullopt;
  return number;
}

std::string WriteNumber(double number) {
  char text[32];
  const auto [end, error] = std::to_chars(std::begin(text), std::end(text), number, std::chars_format::fixed);
  return error == std::errc() ? std::string(std::begin(text), end) : std::string();
}

}  // namespace

void PlexoSequencingValues::ReadFlag(const PlexoManifestElement& element, PlexoVocabulary vocabulary,
                                     std::string_view attribute, bool& value) {
  static constexpr PlexoWord<bool> kFlags[] = {{"true", true}, {"1", true}, {"false", false}, {"0", false}};
  if (const std::string* written = element.GetAttribute(vocabulary, attribute); written != nullptr)
    TakeWord(element, attribute, *written, kFlags, value);
}

void PlexoSequencingValues::ReadNumber(const PlexoManifestElement& element, std::string_view attribute,
                                       PlexoNumberRange range, double& value) {
  if (const std::string* written = element.GetAttribute(attribute); written != nullptr)
    TakeNumber(element, NameAttribute(element, attribute), *written, range, value);
}

void PlexoSequencingValues::ReadNumber(const PlexoManifestElement& element, PlexoNumberRange range,
                                       double& value) {
  TakeNumber(element, "'" + element.name + "'", element.text, range, value);
}

void PlexoSequencingValues::ReadCount(const PlexoManifestElement& element, std::string_view attribute,
                                      std::uint32_t& value) {
  const std::string* written = element.GetAttribute(attribute);
  if (written == nullptr) return;
  if (const auto count = Parse<std::uint32_t>(*written); count.has_value() && *count != UINT32_MAX) {
    value = *count;
  } else {
    notes.Add(element, NameAttribute(element, attribute) + ": " + Quote(*written) +
                           " isn't a whole number that can be counted to; it is ignored");
  }
}

void PlexoSequencingValues::NoteUnknown(const PlexoManifestElement& element, std::string_view attribute,
                                        const std::string& written) {
  notes.Add(element, NameAttribute(element, attribute) + ": " + Quote(written) +
                         " isn't one of the values allowed; it is ignored");
}

void PlexoSequencingValues::TakeNumber(const PlexoManifestElement& element, const std::string& place,
                                       const std::string& written, PlexoNumberRange range, double& value) {
  const auto number = Parse<double>(written);
  if (!number.has_value() || !std::isfinite(*number)) {
    notes.Add(element, place + ": " + Quote(written) + " isn't a number; " + WriteNumber(value) + " is used");
    return;
  }
  value = std::clamp(*number, range.least, range.most);
  if (value == *number) return;
  notes.Add(element, place + ": " + Quote(written) + " isn't from " + WriteNumber(range.least) + " to " +
                         WriteNumber(range.most) + "; " + WriteNumber(value) + " is used");
}
