// SPDX-License-Identifier: Apache-2.0
#include "adopt/PlexoLaunchAddress.h"

#include <algorithm>

#include "check/PlexoHref.h"

namespace {

void AppendEscape(char character, std::string& text) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  const auto byte = static_cast<unsigned char>(character);
  text += '%';
  text += kDigits[byte >> 4U];
  text += kDigits[byte & 0xFU];
}

/// What no part of an address can hold, but for a path's own "?" and "#".
constexpr std::string_view kNeverHeld = " \"<>[\\]^`{|}";

}  // namespace

std::string PlexoLaunchAddress::AddParameters(std::string address, std::string_view parameters) {
  parameters.remove_prefix(std::min(parameters.find_first_not_of("?&"), parameters.size()));
  if (parameters.empty()) return address;
  if (parameters.front() == '#') {
    // An address has one fragment: its own stays.
    return address.find('#') != std::string::npos ? address : address.append(parameters);
  }
  address += address.find('?') != std::string::npos ? '&' : '?';
  return address.append(parameters);
}

std::string_view PlexoLaunchAddress::GetSuffix(std::string_view address) {
  return address.substr(std::min(address.find_first_of("?#"), address.size()));
}

bool PlexoLaunchAddress::IsJoinable(std::string_view suffix) {
  return suffix.find('\\') == std::string_view::npos && suffix.find("//") == std::string_view::npos &&
         suffix.find("/./") == std::string_view::npos && !suffix.ends_with('/') && !suffix.ends_with("/.");
}

std::string PlexoLaunchAddress::ProtectSuffix(std::string_view suffix) {
  const std::string_view slashes = IsJoinable(suffix) ? "" : "/\\";
  std::string safe;
  bool isFragment = false;
  for (std::size_t at = 0; at < suffix.size(); ++at) {
    const char character = suffix[at];
    const bool isSecondFragment = character == '#' && isFragment;
    isFragment = isFragment || character == '#';
    const bool isHeld = slashes.find(character) == std::string_view::npos &&
                        kNeverHeld.find(character) == std::string_view::npos && !isSecondFragment &&
                        (character != '%' || PlexoHref::StartsEscape(suffix.substr(at)));
    if (isHeld) {
      safe += character;
    } else {
      AppendEscape(character, safe);
    }
  }
  return safe;
}

std::string PlexoLaunchAddress::EncodePath(std::string_view path) {
  std::string encoded;
  for (const char character : path) {
    if (kNeverHeld.find(character) != std::string_view::npos || character == '#' || character == '%' ||
        character == '?') {
      AppendEscape(character, encoded);
    } else {
      encoded += character;
    }
  }
  return encoded;
}
