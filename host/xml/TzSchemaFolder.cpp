// SPDX-License-Identifier: Apache-2.0
#include "host/xml/TzSchemaFolder.h"

#include <algorithm>
#include <array>
#include <memory>
#include <span>

#include "host/files/TzStreamUtil.h"

namespace {

struct Mend {
  std::string_view file;
  std::string_view published;
  std::string_view mended;
};

constexpr std::array kMends = {
    // No document may make the xml namespace its default one (Namespaces in XML 1.0, clause 3).
    Mend{"ims_xml.xsd", R"(xmlns="http://www.w3.org/XML/1998/namespace")", ""},
};

std::optional<std::string> ReadFile(const TzPath& path) {
  const std::unique_ptr<TzReadStream> stream = TzStreamUtil::CreateFileStreamRead(TzFile(path));
  if (stream == nullptr) return std::nullopt;
  std::string text;
  std::array<std::byte, 16384> buffer;
  for (;;) {
    const std::ptrdiff_t count = stream->Read(buffer);
    if (count < 0) return std::nullopt;
    if (count == 0) return text;
    text.append(reinterpret_cast<const char*>(buffer.data()), static_cast<std::size_t>(count));
  }
}

void MendText(const TzPath& path, std::string& text) {
  for (const Mend& mend : kMends) {
    if (path.GetFileName() != TzString(mend.file)) continue;
    // " xmlns:xml=" of the same value is allowed, and longer than what is looked for.
    if (const std::size_t at = text.find(mend.published); at != std::string::npos) {
      text.replace(at, mend.published.size(), mend.mended);
    }
  }
}

}  // namespace

std::optional<std::string> TzSchemaFolder::Read(std::string_view address) {
  std::vector<TzString> tail = TzPath(TzString(address)).GetComponents();
  const bool leavesFolder = std::find(tail.begin(), tail.end(), TzString("..")) != tail.end();
  while (!tail.empty() && !leavesFolder) {
    TzPath path = folder;
    for (const TzString& component : tail) path.Append(component);
    if (std::optional<std::string> text = ReadFile(path); text.has_value()) {
      MendText(path, *text);
      return text;
    }
    tail.erase(tail.begin());
  }
  missing.emplace_back(address);
  return std::nullopt;
}
