// SPDX-License-Identifier: Apache-2.0
#include "host/files/TzPath.h"

#include <algorithm>
#include <ostream>
#include <string_view>

namespace {

/// Calls `take` with every component that is neither empty nor ".".
template <typename Take>
void ForEachComponent(std::string_view path, std::string_view separators, Take take) {
  while (!path.empty()) {
    const std::size_t end = std::min(path.find_first_of(separators), path.size());
    const std::string_view component = path.substr(0, end);
    if (!component.empty() && component != ".") take(component);
    path.remove_prefix(std::min(end + 1, path.size()));
  }
}

}  // namespace

TzPath::TzPath(const TzString& path) : TzPath(FromNative(path.GetUTF8String())) {}

TzPath TzPath::FromNative(std::string native) {
  TzPath path;
  path.native = std::move(native);
  while (path.native.size() > 1 && path.native.back() == '/') path.native.pop_back();
  return path;
}

TzString TzPath::GetString() const { return {native}; }

TzPath& TzPath::Append(const TzString& components) {
  ForEachComponent(components.GetUTF8String(), "/\\", [this](std::string_view component) {
    if (!native.empty() && native.back() != '/') native += '/';
    native += component;
  });
  return *this;
}

TzPath TzPath::GetParentTzPath(int levels) const {
  std::string_view parent = native;
  for (; levels < 0; ++levels) {
    const std::size_t slash = parent.rfind('/');
    if (slash == std::string_view::npos) return {};
    parent = parent.substr(0, std::max<std::size_t>(slash, 1));
  }
  return FromNative(std::string(parent));
}

TzString TzPath::GetFileName() const { return {std::string_view(native).substr(native.rfind('/') + 1)}; }

std::vector<TzString> TzPath::GetComponents() const {
  std::vector<TzString> components;
  ForEachComponent(native, "/", [&](std::string_view component) { components.emplace_back(component); });
  return components;
}

TzPath operator/(TzPath folder, const TzString& components) { return std::move(folder.Append(components)); }

std::ostream& operator<<(std::ostream& stream, const TzPath& path) { return stream << path.GetNative(); }
