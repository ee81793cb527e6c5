// SPDX-License-Identifier: Apache-2.0
#include "apps/course/CourseEncoding.h"

#include <cstddef>
#include <string_view>

#include "host/text/TzString.h"

namespace {

using namespace std::string_view_literals;

struct CodeUnits {
  std::size_t size;
  bool isBigEndian;
};

/// A mark's or first character's bytes, with '?' for any byte; the longer ones first.
constexpr struct {
  std::string_view start;
  CodeUnits units;
} kStarts[] = {
    {"\0\0\xFE\xFF"sv, {4, true}}, {"\0\0\0?"sv, {4, true}},  {"\xFF\xFE\0\0"sv, {4, false}},
    {"?\0\0\0"sv, {4, false}},     {"\xFE\xFF"sv, {2, true}}, {"\0?"sv, {2, true}},
    {"\xFF\xFE"sv, {2, false}},    {"?\0"sv, {2, false}},
};

bool StartsWith(std::string_view bytes, std::string_view start) {
  if (bytes.size() < start.size()) return false;
  for (std::size_t index = 0; index < start.size(); ++index) {
    if (start[index] != '?' && start[index] != bytes[index]) return false;
  }
  return true;
}

CodeUnits FindUnits(std::string_view bytes) {
  for (const auto& [start, units] : kStarts) {
    if (StartsWith(bytes, start)) return units;
  }
  return {1, false};
}

char32_t ReadUnit(std::string_view bytes, const CodeUnits& units) {
  constexpr unsigned kBits = 8;
  char32_t unit = 0;
  for (std::size_t index = 0; index < units.size; ++index) {
    const char byte = bytes[units.isBigEndian ? index : units.size - 1 - index];
    unit = (unit << kBits) | static_cast<unsigned char>(byte);
  }
  return unit;
}

void Append(std::u16string& text, char32_t character) {
  constexpr char32_t kFirstOfPairs = 0x10000;
  constexpr char32_t kLast = 0x10FFFF;
  if (character < kFirstOfPairs) {
    text += static_cast<char16_t>(character);
  } else if (character > kLast) {
    text += u'\uFFFD';
  } else {
    text += static_cast<char16_t>(0xD800 + ((character - kFirstOfPairs) >> 10U));
    text += static_cast<char16_t>(0xDC00 + (character & 0x3FFU));
  }
}

}  // namespace

std::string DecodeCourseText(std::string bytes) {
  constexpr std::string_view kMark = "\xEF\xBB\xBF";
  const CodeUnits units = FindUnits(bytes);
  if (units.size > 1) {
    std::u16string text;
    for (std::string_view rest = bytes; rest.size() >= units.size; rest.remove_prefix(units.size)) {
      Append(text, ReadUnit(rest, units));
    }
    bytes = TzString(std::move(text)).GetUTF8String();
  }
  if (bytes.starts_with(kMark)) bytes.erase(0, kMark.size());
  return bytes;
}
