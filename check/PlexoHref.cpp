// SPDX-License-Identifier: Apache-2.0
#include "check/PlexoHref.h"

#include <algorithm>
#include <cctype>
#include <cstddef>

namespace {

bool IsHex(char character) { return std::isxdigit(static_cast<unsigned char>(character)) != 0; }

/// "http:", "data:"; a drive letter is no scheme.
bool HasScheme(std::string_view href) {
  const std::size_t colon = href.find(':');
  if (colon == std::string_view::npos || colon < 2) return false;
  return std::all_of(
      href.begin(), href.begin() + static_cast<std::ptrdiff_t>(colon), [](unsigned char character) {
        return std::isalnum(character) != 0 || character == '+' || character == '-' || character == '.';
      });
}

std::string Decode(std::string_view text) {
  std::string decoded;
  decoded.reserve(text.size());
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (PlexoHref::StartsEscape(text.substr(at))) {
      decoded += static_cast<char>(std::stoi(std::string(text.substr(at + 1, 2)), nullptr, 16));
      at += 2;
    } else {
      decoded += text[at];
    }
  }
  return decoded;
}

/// Resolves "." and "..". False if the path leads above its start.
bool Normalise(std::string_view path, std::string& normal) {
  normal.clear();
  while (!path.empty()) {
    const auto* const separator =
        std::find_if(path.begin(), path.end(), [](char letter) { return letter == '/' || letter == '\\'; });
    const auto end = static_cast<std::size_t>(separator - path.begin());
    const std::string_view component = path.substr(0, end);
    path.remove_prefix(std::min(end + 1, path.size()));
    if (component.empty() || component == ".") continue;
    if (component == "..") {
      if (normal.empty()) return false;
      const std::size_t slash = normal.rfind('/');
      normal.resize(slash == std::string::npos ? 0 : slash);
      continue;
    }
    if (!normal.empty()) normal += '/';
    normal += component;
  }
  return true;
}

}  // namespace

bool PlexoHref::StartsEscape(std::string_view text) {
  return text.size() > 2 && text[0] == '%' && IsHex(text[1]) && IsHex(text[2]);
}

PlexoHref PlexoHref::Read(std::string_view base, std::string_view href) {
  PlexoHref read;
  read.isExternal = HasScheme(href) || href.starts_with("//");
  if (read.isExternal) return read;
  href = href.substr(0, href.find_first_of("?#"));
  std::string whole(base);
  if (!whole.empty() && !whole.ends_with('/')) whole.resize(whole.rfind('/') + 1);
  whole += href;
  read.isExternal = HasScheme(whole);
  if (read.isExternal) return read;
  read.hasBackslash = href.find('\\') != std::string_view::npos;
  for (std::size_t at = 0; at < href.size(); ++at) {
    if (href[at] == '[' || href[at] == ']' || (href[at] == '%' && !StartsEscape(href.substr(at)))) {
      read.hasRawCharacters = true;
    }
  }
  const bool isAbsolute = whole.starts_with('/') || whole.starts_with('\\') || whole.find(':') == 1;
  const bool isEncoded = whole.find('%') != std::string::npos;
  read.leavesPackage = isAbsolute || !Normalise(isEncoded ? Decode(whole) : whole, read.path) ||
                       (isEncoded && !Normalise(whole, read.rawPath));
  if (read.leavesPackage) read.path.clear();
  if (!isEncoded) read.rawPath = read.path;
  return read;
}
