// SPDX-License-Identifier: Apache-2.0
#include "host/text/TzString.h"

#include <utf8.h>

#include <algorithm>
#include <charconv>
#include <iterator>
#include <ostream>

namespace {

constexpr auto IsASCII = [](char byte) { return static_cast<unsigned char>(byte) < 0x80; };

void AppendAsUnits(std::string_view utf8Text, std::u16string& units) {
  units.reserve(units.size() + utf8Text.size());
  auto next = utf8Text.begin();
  while (next != utf8Text.end()) {
    // Nearly all of what passes here is ASCII, which needs no decoder.
    if (IsASCII(*next)) {
      const auto end = std::find_if_not(next, utf8Text.end(), IsASCII);
      const std::size_t start = units.size();
      units.resize(start + static_cast<std::size_t>(end - next));
      std::copy(next, end, units.begin() + static_cast<std::ptrdiff_t>(start));
      next = end;
      continue;
    }
    const auto run = utf8::find_invalid(next, utf8Text.end());
    utf8::unchecked::utf8to16(next, run, std::back_inserter(units));
    next = run;
    if (next == utf8Text.end()) break;
    units.push_back(u'\uFFFD');
    do {
      ++next;
    } while (next != utf8Text.end() && (static_cast<unsigned char>(*next) & 0xC0U) == 0x80);
  }
}

bool IsHighSurrogate(char16_t unit) { return unit >= 0xD800 && unit < 0xDC00; }
bool IsLowSurrogate(char16_t unit) { return unit >= 0xDC00 && unit < 0xE000; }

}  // namespace

TzString::TzString(const char* utf8) {
  if (utf8 != nullptr) AppendAsUnits(utf8, units);
}

TzString::TzString(const std::string& utf8) { AppendAsUnits(utf8, units); }

TzString::TzString(std::string_view utf8) { AppendAsUnits(utf8, units); }

TzString::TzString(std::u16string content) : units(std::move(content)) {}

TzString TzString::FromNumber(std::uint64_t number) { return {std::to_string(number)}; }

TzString TzString::Substring(std::size_t start, std::size_t count) const {
  return start < units.size() ? TzString(units.substr(start, count)) : TzString();
}

TzString& TzString::operator+=(const TzString& tail) {
  units += tail.units;
  return *this;
}

void TzString::AppendUTF8(std::string_view utf8) { AppendAsUnits(utf8, units); }

void TzString::ReplaceAll(const TzString& find, const TzString& replacement) {
  std::size_t found = find.IsEmpty() ? std::u16string::npos : units.find(find.units);
  if (found == std::u16string::npos) return;
  if (find.Length() == replacement.Length()) {
    for (; found != std::u16string::npos; found = units.find(find.units, found + find.Length())) {
      units.replace(found, find.Length(), replacement.units);
    }
    return;
  }
  std::u16string result;
  result.reserve(units.size());
  std::size_t kept = 0;
  for (; found != std::u16string::npos; found = units.find(find.units, kept)) {
    result.append(units, kept, found - kept).append(replacement.units);
    kept = found + find.units.size();
  }
  result.append(units, kept);
  units = std::move(result);
}

std::string TzString::GetUTF8String() const {
  const auto foreign = std::find_if(units.begin(), units.end(), [](char16_t unit) { return unit >= 0x80; });
  std::size_t index = static_cast<std::size_t>(foreign - units.begin());
  std::string result(index, '\0');
  std::transform(units.begin(), foreign, result.begin(),
                 [](char16_t unit) { return static_cast<char>(unit); });
  result.reserve(units.size());
  for (; index < units.size(); ++index) {
    const char16_t unit = units[index];
    if (unit < 0x80) {
      result.push_back(static_cast<char>(unit));
      continue;
    }
    char32_t point = unit;
    if (IsHighSurrogate(unit) && index + 1 < units.size() && IsLowSurrogate(units[index + 1])) {
      point = 0x10000U + ((char32_t{unit} - 0xD800U) << 10U) + (char32_t{units[++index]} - 0xDC00U);
    } else if (IsHighSurrogate(unit) || IsLowSurrogate(unit)) {
      point = U'\uFFFD';
    }
    utf8::unchecked::append(point, std::back_inserter(result));
  }
  return result;
}

long TzString::ToInteger() const { return std::strtol(GetUTF8String().c_str(), nullptr, 10); }

double TzString::ToDouble() const {
  const std::string text = GetUTF8String();
  const std::size_t start = text.find_first_not_of(" \t\r\n");
  if (start == std::string::npos) return 0.0;
  const char* first = text.data() + start;
  if (*first == '+') ++first;
  double value = 0.0;
  std::from_chars(first, text.data() + text.size(), value);
  return value;
}

TzString operator+(TzString head, const TzString& tail) { return std::move(head += tail); }

std::ostream& operator<<(std::ostream& stream, const TzString& text) {
  return stream << text.GetUTF8String();
}
