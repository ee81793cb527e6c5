// SPDX-License-Identifier: Apache-2.0
#include "apps/course/CourseKeys.h"

#include <algorithm>
#include <numeric>

#include "host/text/TzString.h"

namespace {

/// Number of single-character changes that turn one word into the other.
std::size_t GetEditDistance(std::string_view from, std::string_view to) {
  std::vector<std::size_t> distances(to.size() + 1);
  std::iota(distances.begin(), distances.end(), std::size_t{0});
  for (std::size_t row = 1; row <= from.size(); ++row) {
    std::size_t diagonal = std::exchange(distances[0], row);
    for (std::size_t column = 1; column <= to.size(); ++column) {
      const std::size_t changed = diagonal + (from[row - 1] == to[column - 1] ? 0 : 1);
      diagonal = distances[column];
      distances[column] = std::min({changed, distances[column] + 1, distances[column - 1] + 1});
    }
  }
  return distances.back();
}

/// The allowed word that was probably meant, with the words around it; empty if none is close.
std::string SuggestWord(std::string_view word, std::span<const std::string_view> allowed) {
  constexpr std::size_t kLongestWord = 40;
  constexpr std::size_t kFarthest = 2;
  if (word.size() > kLongestWord || allowed.empty()) return {};
  const auto distanceOf = [&](std::string_view candidate) { return GetEditDistance(word, candidate); };
  const std::string_view best = *std::ranges::min_element(allowed, {}, distanceOf);
  const bool isClose = distanceOf(best) <= std::min(kFarthest, word.size() / 2);
  return isClose ? ", did you mean '" + std::string(best) + "'?" : "";
}

std::string ListWords(std::span<const std::string_view> words) {
  std::string text;
  for (const std::string_view word : words) text += (text.empty() ? "" : ", ") + std::string(word);
  return text;
}

/// In UTF-8.
bool IsCharacterStart(char byte) {
  constexpr unsigned kContinuationMask = 0xC0;
  constexpr unsigned kContinuation = 0x80;
  return (static_cast<unsigned char>(byte) & kContinuationMask) != kContinuation;
}

bool IsUTF8(const std::string& text) { return TzString(text).GetUTF8String() == text; }

/// The start of a word of the user's, for a message.
std::string Quote(const std::string& word) {
  constexpr std::size_t kMostUnits = 60;
  const TzString text(word);
  const bool fits = text.Length() <= kMostUnits;
  return "'" + (fits ? word : text.Substring(0, kMostUnits).GetUTF8String() + "...") + "'";
}

}  // namespace

void CourseFileErrors::Add(const YAML::Mark& mark, std::string message, std::string reason,
                           CourseFault fault) {
  const bool isLocated = mark.line >= 0;
  Keep({isLocated ? mark.line + 1 : 0, isLocated ? mark.column + 1 : 0, fault, std::move(message),
        std::move(reason)});
}

void CourseFileErrors::Add(std::string message, CourseFault fault) {
  Keep({0, 0, fault, std::move(message), {}});
}

void CourseFileErrors::Keep(CourseFileError error) {
  constexpr std::size_t kMostErrors = 20;
  const auto place = [](const CourseFileError& each) { return std::pair(each.line, each.column); };
  const auto next = std::ranges::upper_bound(first, place(error), {}, place);
  first.insert(next, std::move(error));
  if (first.size() <= kMostErrors) return;
  restFault = std::max(restFault, first.back().fault);
  first.pop_back();
  ++rest;
}

void CourseFileErrors::CountCharacters() {
  std::size_t start = 0;
  int line = 1;
  for (CourseFileError& error : first) {
    for (; line < error.line; ++line) start = std::min(text.find('\n', start), text.size() - 1) + 1;
    if (error.line == 0) continue;
    const std::string before = text.substr(start, static_cast<std::size_t>(error.column) - 1);
    error.column = 1 + static_cast<int>(std::ranges::count_if(before, IsCharacterStart));
  }
}

std::vector<CourseFileError> CourseFileErrors::TakeSorted() {
  CountCharacters();
  std::vector<CourseFileError> errors = std::exchange(first, {});
  if (rest > 0)
    errors.push_back(
        {0, 0, restFault, "has " + std::to_string(rest) + (rest == 1 ? " more error" : " more errors"), {}});
  rest = 0;
  return errors;
}

CourseKeys::CourseKeys(const YAML::Node& map, std::string_view what,
                       std::span<const std::string_view> allowed, CourseFileErrors& errorList)
    : name(what), mark(map.Mark()), isMap(map.IsMap()), errors(errorList) {
  if (!isMap) {
    errors.Add(mark, std::string(what) + " must be made of keys and values; allowed: " + ListWords(allowed));
    return;
  }
  for (const auto& pair : map) Enter(pair.first, pair.second, allowed);
}

void CourseKeys::Enter(const YAML::Node& key, const YAML::Node& value,
                       std::span<const std::string_view> allowed) {
  const std::string word = key.IsScalar() ? key.Scalar() : std::string();
  if (std::ranges::find(allowed, word) == allowed.end()) {
    const std::string suggestion = SuggestWord(word, allowed);
    errors.Add(key.Mark(), "unknown key " + Quote(word) + suggestion + (suggestion.empty() ? "; " : " ") +
                               "allowed: " + ListWords(allowed));
    return;
  }
  const auto [entry, isNew] = entries.try_emplace(word, Entry{value, key.Mark()});
  if (!isNew) {
    const std::string line = std::to_string(entry->second.mark.line + 1);
    errors.Add(key.Mark(), "'" + word + "' is given twice, first in line " + line);
  }
}

YAML::Mark CourseKeys::GetKeyMark(std::string_view key) const {
  const auto entry = entries.find(key);
  return entry != entries.end() ? entry->second.mark : mark;
}

std::optional<CourseText> ReadCourseText(const YAML::Node& node, const std::string& what,
                                         const YAML::Mark& place, CourseFileErrors& errors) {
  if (node.IsNull()) {
    errors.Add(place, what + " has no value; an empty text is written \"\"");
  } else if (!node.IsScalar()) {
    errors.Add(node.Mark(), what + " must be a text");
  } else if (node.Scalar().find('\0') != std::string::npos) {
    errors.Add(node.Mark(), what + " holds a NUL character");
  } else if (!IsUTF8(node.Scalar())) {
    errors.Add(node.Mark(), what + " isn't UTF-8; save the file with that encoding");
  } else {
    return CourseText{node.Scalar(), node.Mark()};
  }
  return std::nullopt;
}

std::optional<CourseText> CourseKeys::ReadText(std::string_view key) const {
  const auto entry = entries.find(key);
  if (entry == entries.end()) return std::nullopt;
  return ReadCourseText(entry->second.value, "'" + entry->first + "'", entry->second.mark, errors);
}

std::optional<YAML::Node> CourseKeys::ReadNode(std::string_view key) const {
  const auto entry = entries.find(key);
  return entry != entries.end() ? std::optional(entry->second.value) : std::nullopt;
}

bool CourseKeys::ReadFlag(std::string_view key) const {
  const auto entry = entries.find(key);
  if (entry == entries.end()) return false;
  const YAML::Node& value = entry->second.value;
  const std::string word = value.IsScalar() ? value.Scalar() : std::string();
  if (word != "true" && word != "false") {
    errors.Add(value.IsNull() ? entry->second.mark : value.Mark(),
               "'" + entry->first + "' must be true or false");
  }
  return word == "true";
}

std::vector<YAML::Node> CourseKeys::ReadList(std::string_view key) const {
  const auto entry = entries.find(key);
  if (entry == entries.end()) return {};
  const YAML::Node& value = entry->second.value;
  const std::string what = "'" + entry->first + "'";
  if (!value.IsSequence()) {
    errors.Add(value.IsNull() ? entry->second.mark : value.Mark(), what + " must be a list");
    return {};
  }
  return {value.begin(), value.end()};
}

std::vector<YAML::Node> CourseKeys::ReadFilledList(std::string_view key) const {
  const auto entry = entries.find(key);
  const bool isEmptyList =
      entry != entries.end() && entry->second.value.IsSequence() && entry->second.value.size() == 0;
  if (isEmptyList) errors.Add(entry->second.value.Mark(), "'" + entry->first + "' is empty");
  return ReadList(key);
}

void CourseKeys::Require(std::string_view key, std::string_view what) const {
  if (!isMap || Has(key)) return;
  errors.Add(mark, std::string(name) + " needs '" + std::string(key) + "': " + std::string(what));
}
