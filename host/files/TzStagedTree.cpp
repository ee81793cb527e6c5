// SPDX-License-Identifier: Apache-2.0
#include "host/files/TzStagedTree.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <utility>
#include <vector>

namespace {

using Folder = TzStagedNode::Folder;

/// Cuts the first name off a path; empty once there is none.
std::string_view TakeName(std::string_view& path) {
  path.remove_prefix(std::min(path.find_first_not_of('/'), path.size()));
  const std::string_view name = path.substr(0, path.find('/'));
  path.remove_prefix(name.size());
  return name;
}

/// Null, with `errno` set, if the folder holds no such name.
TzStagedNode* FindChild(Folder& folder, std::string_view name) {
  const auto found = folder.find(name);
  if (found != folder.end()) return found->second.get();
  errno = name.size() > NAME_MAX ? ENAMETOOLONG : ENOENT;
  return nullptr;
}

/// The folder of this path, made with its parents.
Folder& MakeFolders(Folder& top, std::string_view path) {
  Folder* folder = &top;
  for (std::string_view name = TakeName(path); !name.empty(); name = TakeName(path)) {
    auto& child = (*folder)[std::string(name)];
    if (child == nullptr) child = std::make_unique<TzStagedNode>();
    folder = child->AsFolder();
  }
  return *folder;
}

}  // namespace

TzStoredFile::~TzStoredFile() {
  const int error = errno;
  unlink(path.GetNative().c_str());
  errno = error;
}

/// Where a path leads: to a name in a folder, or without a name to the folder itself.
struct TzStagedTree::Place {
  /// From the top to the folder.
  std::vector<TzStagedNode*> folders;
  std::string_view name;

  [[nodiscard]] Folder& GetFolder() const { return *folders.back()->AsFolder(); }
  [[nodiscard]] TzStagedNode* Find() const {
    return name.empty() ? folders.back() : FindChild(GetFolder(), name);
  }
};

bool TzStagedTree::Locate(std::string_view path, Place& place) {
  place.folders.push_back(&top);
  for (std::string_view name = TakeName(path); !name.empty(); name = TakeName(path)) {
    if (!place.name.empty()) {
      TzStagedNode* folder = place.Find();
      if (folder == nullptr) return false;
      if (!folder->IsFolder()) {
        errno = ENOTDIR;
        return false;
      }
      place.folders.push_back(folder);
    }
    place.name = name;
    if (name != "." && name != "..") continue;
    place.name = {};
    if (name == ".." && place.folders.size() > 1) place.folders.pop_back();
  }
  return true;
}

TzStagedNode* TzStagedTree::Find(std::string_view path) {
  Place place;
  return Locate(path, place) ? place.Find() : nullptr;
}

TzStagedNode* TzStagedTree::Put(std::string_view path, std::unique_ptr<TzStagedNode> node) {
  Place place;
  if (!Locate(path, place)) return nullptr;
  TzStagedNode* standing = place.Find();
  if (standing != nullptr && standing->IsFolder()) {
    errno = EISDIR;
    return nullptr;
  }
  if (standing == nullptr && errno == ENAMETOOLONG) return nullptr;
  auto& child = place.GetFolder()[std::string(place.name)];
  child = std::move(node);
  return child.get();
}

std::unique_ptr<TzStagedNode> TzStagedTree::Take(std::string_view path) {
  Place place;
  if (!Locate(path, place) || place.Find() == nullptr) return nullptr;
  if (place.name.empty()) {
    errno = EINVAL;
    return nullptr;
  }
  Folder& folder = place.GetFolder();
  return std::move(folder.extract(folder.find(place.name)).mapped());
}

bool TzStagedTree::Move(std::string_view source, std::string_view target) {
  Place from;
  Place to;
  if (!Locate(source, from) || !Locate(target, to)) return false;
  TzStagedNode* moved = from.Find();
  if (moved == nullptr) return false;
  const bool isInside = std::find(to.folders.begin(), to.folders.end(), moved) != to.folders.end();
  if (from.name.empty() || to.name.empty() || isInside) {
    errno = EINVAL;
    return false;
  }
  TzStagedNode* replaced = to.Find();
  if (replaced == moved) return true;
  if (replaced == nullptr && errno == ENAMETOOLONG) return false;
  if (std::find(from.folders.begin(), from.folders.end(), replaced) != from.folders.end()) {
    errno = ENOTEMPTY;
    return false;
  }
  if (replaced != nullptr && replaced->IsFolder() != moved->IsFolder()) {
    errno = moved->IsFolder() ? ENOTDIR : EISDIR;
    return false;
  }
  if (replaced != nullptr && replaced->IsFolder() && !replaced->AsFolder()->empty()) {
    errno = ENOTEMPTY;
    return false;
  }
  auto node = from.GetFolder().extract(from.GetFolder().find(from.name));
  to.GetFolder()[std::string(to.name)] = std::move(node.mapped());
  return true;
}

void TzStagedTree::Fill(Folder& folder, const std::shared_ptr<const TzArchiveHold>& hold,
                        std::span<const TzZipEntry> entries) {
  // Archives list the files of a folder one after another.
  std::string_view lastPath;
  Folder* last = &folder;
  for (const TzZipEntry& entry : entries) {
    const std::string_view name = entry.name;
    const std::size_t slash = entry.isFolder ? name.size() : name.rfind('/');
    const std::string_view path = name.substr(0, slash == std::string_view::npos ? 0 : slash);
    if (path != lastPath) last = &MakeFolders(folder, path);
    lastPath = path;
    if (entry.isFolder) continue;
    auto node = std::make_unique<TzStagedNode>();
    node->content =
        TzHeldEntry{hold, entry.dataOffset, entry.packedSize, entry.size, entry.crc, entry.isDeflated};
    last->emplace_hint(last->end(), name.substr(path.empty() ? 0 : path.size() + 1), std::move(node));
  }
}
