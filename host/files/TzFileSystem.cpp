// SPDX-License-Identifier: Apache-2.0
#include "host/files/TzFileSystem.h"

#include <cerrno>
#include <utility>

#include "host/files/TzDiskFileSystem.h"

namespace {

TzFileSystem& Disk() {
  static TzDiskFileSystem disk;
  return disk;
}

TzFileSystem* installed = nullptr;

}  // namespace

TzFileSystem& TzFileSystem::Current() { return installed != nullptr ? *installed : Disk(); }

TzFileSystem* TzFileSystem::Install(TzFileSystem* fileSystem) { return std::exchange(installed, fileSystem); }

TzErrorCodeEnum TzFileSystem::MakeFolders(const TzPath& folder) {
  const TzErrorCodeEnum result = MakeFolder(folder);
  if (result == kTzSuccess || errno != ENOENT) return result;
  const TzPath parent = folder.GetParentTzPath();
  if (parent.IsEmpty() || parent == folder) return result;
  if (const TzErrorCodeEnum made = MakeFolders(parent); made != kTzSuccess) return made;
  return MakeFolder(folder);
}
