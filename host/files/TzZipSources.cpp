// SPDX-License-Identifier: Apache-2.0
#include "host/files/TzZipSources.h"

#include <algorithm>
#include <cerrno>
#include <string_view>
#include <tuple>

#include "host/files/TzZipName.h"

namespace {

constexpr std::string_view kManifestName = "imsmanifest.xml";

std::string GetNativeName(const TzPath& path) {
  return path.GetNative().substr(path.GetNative().rfind('/') + 1);
}

/// What keeps a name out of an archive; null if nothing does.
const char* FindFault(const std::string& name) {
  if (!TzZipName::IsUtf8(name)) return "the file's name isn't UTF-8";
  if (name.find('\\') != std::string::npos) return "the file's name holds a back-slash";
  return TzZipName().Read(name);
}

}  // namespace

TzZipFailure TzZipSources::Add(const TzPath& path, const TzPath& basePath) {
  const std::string& native = path.GetNative();
  std::string base = basePath.GetNative();
  if (native == base) return AddFolder(path, {});
  if (!base.ends_with('/')) base += '/';
  if (!native.starts_with(base)) {
    return {kTzFailure, native, "lies outside '" + basePath.GetNative() + "'", 0};
  }
  return AddNode(path, TzFileSystem::Current().GetKind(path), native.substr(base.size()));
}

TzZipFailure TzZipSources::AddAtTop(const TzPath& path) {
  const TzNodeKind kind = TzFileSystem::Current().GetKind(path);
  if (kind == TzNodeKind::Folder) return {kTzFailure, path.GetNative(), "is a folder", 0};
  return AddNode(path, kind, GetNativeName(path));
}

TzZipFailure TzZipSources::AddNode(const TzPath& path, TzNodeKind kind, const std::string& name) {
  if (const char* fault = FindFault(name); fault != nullptr) {
    return TzZipFailure::BadContent(TzZipName::ForMessage(name), fault);
  }
  switch (kind) {
    case TzNodeKind::File:
      return AddFile(path, name);
    case TzNodeKind::Folder:
      return AddFolder(path, name + "/");
    case TzNodeKind::Absent:
      return TzZipFailure::System(ENOENT, name, "can't read");
    case TzNodeKind::Other:
      break;
  }
  return TzZipFailure::BadContent(name, "is a link or a device, not a file");
}

TzZipFailure TzZipSources::AddFile(const TzPath& path, const std::string& name) {
  TzFileSystem& files = TzFileSystem::Current();
  auto held = files.GetHeldEntry(path);
  const std::uint64_t size = held.has_value() ? held->size : files.GetSize(path);
  // Whatever an archiver made of nothing, it is stored as nothing.
  if (size == 0) held.reset();
  sources.push_back({name, path, false, size, std::move(held)});
  return {};
}

TzZipFailure TzZipSources::AddFolder(const TzPath& path, const std::string& name) {
  std::vector<TzListedNode> entries;
  if (TzFileSystem::Current().List(path, entries) != kTzSuccess) {
    return TzZipFailure::System(errno, name.empty() ? path.GetNative() : name, "can't read the folder");
  }
  if (entries.empty() && keepsEmptyFolders && !name.empty()) sources.push_back({name, path, true, 0});
  for (const auto& [entry, kind] : entries) {
    if (auto failure = AddNode(entry, kind, name + GetNativeName(entry))) return failure;
  }
  return {};
}

TzZipFailure TzZipSources::Arrange() {
  std::sort(sources.begin(), sources.end(), [](const TzZipSource& left, const TzZipSource& right) {
    return std::forward_as_tuple(left.name != kManifestName, left.name, left.path) <
           std::forward_as_tuple(right.name != kManifestName, right.name, right.path);
  });
  const auto isSame = [](const TzZipSource& left, const TzZipSource& right) {
    return left.name == right.name && left.path == right.path;
  };
  sources.erase(std::unique(sources.begin(), sources.end(), isSame), sources.end());

  // What lies in a folder "a/" stands at the first name that isn't below "a/".
  const auto afterManifest = [this](const std::string& name) {
    const bool hasManifest = !sources.empty() && sources.front().name == kManifestName;
    return std::lower_bound(
        sources.begin() + (hasManifest ? 1 : 0), sources.end(), name,
        [](const TzZipSource& source, const std::string& wanted) { return source.name < wanted; });
  };
  for (std::size_t index = 0; index < sources.size(); ++index) {
    const std::string& name = sources[index].name;
    if (index > 0 && sources[index - 1].name == name) {
      return TzZipFailure::BadContent(name, "two files have this name in the archive");
    }
    const auto below = sources[index].isFolder ? sources.end() : afterManifest(name + "/");
    if (below != sources.end() && below->name.starts_with(name + "/")) {
      return TzZipFailure::BadContent(name, "a file and a folder have this name in the archive");
    }
  }
  return {};
}

std::uint64_t TzZipSources::GetTotalWork() const {
  std::uint64_t total = 0;
  for (const TzZipSource& source : sources) total += source.GetWork();
  return total;
}
