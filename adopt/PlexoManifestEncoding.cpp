// SPDX-License-Identifier: Apache-2.0
#include "adopt/PlexoManifestEncoding.h"

#include <array>
#include <cstddef>
#include <span>

#include "check/PlexoCheckedPackage.h"
#include "host/files/TzStreamUtil.h"

std::string PlexoManifestEncoding::Find(const TzPath& document) {
  constexpr std::size_t kDeclarationBytes = 400;
  std::array<std::byte, kDeclarationBytes> bytes{};
  const auto stream = TzStreamUtil::CreateFileStreamRead(TzFile(document));
  const std::ptrdiff_t count = stream != nullptr ? stream->Read(bytes) : 0;
  std::string text;
  // The declaration is in ASCII, but for the zeros of wider encodings.
  for (const std::byte byte : std::span(bytes).first(static_cast<std::size_t>(count > 0 ? count : 0))) {
    if (byte != std::byte{0}) text += static_cast<char>(byte);
  }
  text.resize(std::min(text.find("?>"), text.size()));
  const std::size_t name = text.find("encoding");
  if (name == std::string::npos) return {};
  const std::size_t start = text.find_first_of("\"'", name);
  if (start == std::string::npos) return {};
  const std::string encoding = text.substr(start + 1, text.find(text[start], start + 1) - start - 1);
  const std::string folded = PlexoCheckedPackage::FoldCase(encoding);
  return folded == "utf-8" || folded == "utf8" || folded == "us-ascii" ? std::string() : encoding;
}
