// SPDX-License-Identifier: Apache-2.0
#include "host/files/TzZipName.h"

#include <utf8.h>

#include <algorithm>
#include <array>
#include <iterator>

namespace {

constexpr std::size_t kMostComponentBytes = 255;
constexpr std::size_t kMostNameBytes = 4000;
// Every walk through a folder pays for its level: without a bound a small archive costs minutes.
constexpr std::size_t kMostLevels = 256;

constexpr std::u16string_view kUpperHalfOf437 =
    u"\u00C7\u00FC\u00E9\u00E2\u00E4\u00E0\u00E5\u00E7\u00EA\u00EB\u00E8\u00EF\u00EE\u00EC\u00C4\u00C5"
    u"\u00C9\u00E6\u00C6\u00F4\u00F6\u00F2\u00FB\u00F9\u00FF\u00D6\u00DC\u00A2\u00A3\u00A5\u20A7\u0192"
    u"\u00E1\u00ED\u00F3\u00FA\u00F1\u00D1\u00AA\u00BA\u00BF\u2310\u00AC\u00BD\u00BC\u00A1\u00AB\u00BB"
    u"\u2591\u2592\u2593\u2502\u2524\u2561\u2562\u2556\u2555\u2563\u2551\u2557\u255D\u255C\u255B\u2510"
    u"\u2514\u2534\u252C\u251C\u2500\u253C\u255E\u255F\u255A\u2554\u2569\u2566\u2560\u2550\u256C\u2567"
    u"\u2568\u2564\u2565\u2559\u2558\u2552\u2553\u256B\u256A\u2518\u250C\u2588\u2584\u258C\u2590\u2580"
    u"\u03B1\u00DF\u0393\u03C0\u03A3\u03C3\u00B5\u03C4\u03A6\u0398\u03A9\u03B4\u221E\u03C6\u03B5\u2229"
    u"\u2261\u00B1\u2265\u2264\u2320\u2321\u00F7\u2248\u00B0\u2219\u00B7\u221A\u207F\u00B2\u25A0\u00A0";
static_assert(kUpperHalfOf437.size() == 128);

// These are asked about every character of every name: as objects they are inlined where a pointer isn't.
constexpr auto IsControl = [](char character) {
  const auto byte = static_cast<unsigned char>(character);
  return byte < 0x20 || byte == 0x7F;
};
constexpr auto IsSeparator = [](char character) { return character == '/' || character == '\\'; };

bool IsLetter(char character) {
  return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}

const char* FindFault(std::string_view component) {
  if (component == "..") return "the entry's name leads out of the folder";
  if (component.size() > kMostComponentBytes) return "the entry's name is too long";
  if (std::any_of(component.begin(), component.end(), IsControl)) {
    return "the entry's name holds a control character";
  }
  if (component.size() > 1 && component[1] == ':' && IsLetter(component[0])) {
    return "the entry's name holds a drive letter";
  }
  return TzZipName::IsDevice(component) ? "the entry's name is that of a device" : nullptr;
}

}  // namespace

std::string TzZipName::FromCodePage437(std::string_view bytes) {
  std::string converted;
  for (const char character : bytes) {
    const auto byte = static_cast<unsigned char>(character);
    if (byte < 0x80) {
      converted += character;
    } else {
      utf8::unchecked::append(kUpperHalfOf437[byte - 0x80U], std::back_inserter(converted));
    }
  }
  return converted;
}

bool TzZipName::IsUtf8(std::string_view bytes) {
  // Most names are ASCII, which needs no decoder.
  const auto rest = std::find_if(bytes.begin(), bytes.end(),
                                 [](char byte) { return static_cast<unsigned char>(byte) >= 0x80; });
  return utf8::is_valid(rest, bytes.end());
}

bool TzZipName::IsDevice(std::string_view component) {
  static constexpr std::array<std::string_view, 6> kDevices = {"CON", "PRN",    "AUX",
                                                               "NUL", "CONIN$", "CONOUT$"};
  static constexpr std::array<std::string_view, 12> kPorts = {"1", "2", "3", "4",      "5",      "6",
                                                              "7", "8", "9", "\u00B9", "\u00B2", "\u00B3"};
  std::string stem(component.substr(0, component.find('.')));
  stem.resize(stem.find_last_not_of(' ') + 1);
  for (char& letter : stem) {
    if (IsLetter(letter)) letter = static_cast<char>(letter & ~0x20);
  }
  const std::string_view tail = std::string_view(stem).substr(std::min<std::size_t>(stem.size(), 3));
  const bool isPort = stem.starts_with("COM") || stem.starts_with("LPT");
  return std::find(kDevices.begin(), kDevices.end(), stem) != kDevices.end() ||
         (isPort && std::find(kPorts.begin(), kPorts.end(), tail) != kPorts.end());
}

const char* TzZipName::Read(std::string_view written) {
  text.clear();
  text.reserve(written.size());
  if (written.empty()) return "the entry has no name";
  if (IsSeparator(written.front())) return "the entry's name is absolute";
  if (written.size() > kMostNameBytes) return "the entry's name is too long";
  for (std::size_t levels = 0; !written.empty();) {
    const auto* const separator = std::find_if(written.begin(), written.end(), IsSeparator);
    const auto end = static_cast<std::size_t>(separator - written.begin());
    const std::string_view component = written.substr(0, end);
    isFolder = end < written.size() || component == ".";
    written.remove_prefix(std::min(end + 1, written.size()));
    if (component.empty() || component == ".") continue;
    if (const char* fault = FindFault(component); fault != nullptr) return fault;
    if (++levels > kMostLevels) return "the entry's name has too many levels";
    if (!text.empty()) text += '/';
    text += component;
  }
  return nullptr;
}

std::string TzZipName::ForMessage(std::string_view bytes) {
  constexpr std::size_t kMostBytes = 200;
  std::string shown = IsUtf8(bytes) ? std::string(bytes) : FromCodePage437(bytes);
  std::replace_if(shown.begin(), shown.end(), IsControl, '?');
  if (shown.size() > kMostBytes) {
    shown.resize(kMostBytes);
    shown.erase(utf8::find_invalid(shown.begin(), shown.end()), shown.end());
    shown += "...";
  }
  return shown;
}
