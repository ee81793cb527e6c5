// SPDX-License-Identifier: Apache-2.0
#include "host/files/TzFileSystem.h"

#include <cerrno>
#include <filesystem>
#include <stdexcept>
#include <system_error>
#include <utility>

#include "host/files/TzArchiveHold.h"
#include "host/files/TzDiskFileSystem.h"
#include "host/files/TzStagedFileSystem.h"

namespace {

TzFileSystem& Default() {
  static TzDiskFileSystem disk;
  static TzStagedFileSystem staged(disk);
  return staged;
}

TzFileSystem* installed = nullptr;

}  // namespace

TzFileSystem& TzFileSystem::Current() { return installed != nullptr ? *installed : Default(); }

TzFileSystem* TzFileSystem::Install(TzFileSystem* fileSystem) { return std::exchange(installed, fileSystem); }

TzErrorCodeEnum TzFileSystem::MakeFolders(const TzPath& folder) {
  const TzErrorCodeEnum result = MakeFolder(folder);
  if (result == kTzSuccess || errno != ENOENT) return result;
  const TzPath parent = folder.GetParentTzPath();
  if (parent.IsEmpty() || parent == folder) return result;
  if (const TzErrorCodeEnum made = MakeFolders(parent); made != kTzSuccess) return made;
  return MakeFolder(folder);
}

TzErrorCodeEnum TzFileSystem::MakeScratchFolder(const TzPath& folder) { return MakeFolder(folder); }

std::shared_ptr<TzArchiveHold> TzFileSystem::MakeHold(const TzPath& /*folder*/) { return nullptr; }

TzErrorCodeEnum TzFileSystem::AddEntries(const TzPath& /*folder*/,
                                         const std::shared_ptr<const TzArchiveHold>& /*hold*/,
                                         std::span<const TzZipEntry> /*entries*/) {
  throw std::logic_error("no hold was given, so none has entries");
}

std::optional<TzHeldEntry> TzFileSystem::GetHeldEntry(const TzPath& /*file*/) { return std::nullopt; }

TzPath TzFileSystem::GetRealFile(const TzPath& file) {
  // A chosen file may be a link to one.
  std::error_code error;
  return std::filesystem::is_regular_file(file.GetNative(), error) ? file : TzPath();
}

TzErrorCodeEnum TzFileSystem::Failed() {
  switch (errno) {
    case ENOENT:
    case EEXIST:
    case ENOTDIR:
    case EISDIR:
    case ENOTEMPTY:
    case EINVAL:
    case ENAMETOOLONG:
      return kTzFailure;
    default:
      return kTzMachineFailure;
  }
}
