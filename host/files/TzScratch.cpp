// SPDX-License-Identifier: Apache-2.0
#include "host/files/TzScratch.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <ctime>
#include <string_view>
#include <utility>

#include "host/files/TzDiskFileSystem.h"
#include "host/session/TzProblem.h"

namespace {

constexpr std::string_view kLockName = "/lock";
constexpr std::string_view kPattern = "XXXXXX";

std::string GetTempRoot() {
  const char* folder = std::getenv("TMPDIR");
  struct stat status = {};
  const bool usable =
      folder != nullptr && *folder == '/' && stat(folder, &status) == 0 && S_ISDIR(status.st_mode);
  return usable ? folder : "/tmp";
}

std::string GetPrefix() { return "plexo-" + std::to_string(geteuid()) + "-"; }

/// Takes the lock of a private folder; not open if another process holds it.
TzFileDescriptor TakeLock(const std::string& folder, int flags) {
  constexpr mode_t kPrivateFile = 0600;
  TzFileDescriptor lock(
      open((folder + std::string(kLockName)).c_str(), flags | O_RDWR | O_NOFOLLOW | O_CLOEXEC, kPrivateFile));
  if (!lock.IsOpen() || flock(lock.Get(), LOCK_EX | LOCK_NB) != 0) return {};
  // The lock may have been swept away between the two calls: a lock without a name protects nothing.
  struct stat status = {};
  if (fstat(lock.Get(), &status) == 0 && status.st_nlink != 0) return lock;
  errno = EWOULDBLOCK;
  return {};
}

/// A folder without a lock belongs to a process that is just about to make one, or was killed right there.
bool IsAbandoned(const struct stat& status) {
  constexpr std::time_t kLongSeconds = 60;
  return std::time(nullptr) - status.st_mtime > kLongSeconds;
}

/// The prefix, with the characters behind it that `mkdtemp` puts in the place of its pattern's.
bool IsNameOfOurs(std::string_view name, std::string_view prefix) {
  constexpr std::string_view kCharacters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789";
  return name.size() == prefix.size() + kPattern.size() && name.starts_with(prefix) &&
         name.find_first_not_of(kCharacters, prefix.size()) == std::string_view::npos;
}

/// Deletes a private folder. Its lock goes last: should we be killed meanwhile, nobody could tell without it
/// that the rest is ours.
void DeletePrivateFolder(const std::string& folder) {
  TzDiskFileSystem disk;
  std::vector<TzListedNode> nodes;
  static_cast<void>(disk.List(TzPath::FromNative(folder), nodes));
  for (const TzListedNode& node : nodes) {
    if (!node.path.GetNative().ends_with(kLockName)) static_cast<void>(disk.Delete(node.path));
  }
  static_cast<void>(disk.Delete(TzPath::FromNative(folder)));
}

void SweepFolder(const std::string& folder) {
  struct stat status = {};
  if (lstat(folder.c_str(), &status) != 0) return;
  if (!S_ISDIR(status.st_mode) || status.st_uid != geteuid()) return;
  const TzFileDescriptor lock = TakeLock(folder, 0);
  if (lock.IsOpen()) {
    DeletePrivateFolder(folder);
  } else if (errno == ENOENT && IsAbandoned(status)) {
    // Nothing goes into a folder of ours before its lock: what isn't empty is the user's own.
    rmdir(folder.c_str());
  }
}

void SweepAbandoned(const std::string& tempRoot, const std::string& prefix) {
  TzDiskFileSystem disk;
  std::vector<TzListedNode> entries;
  if (disk.List(TzPath::FromNative(tempRoot), entries) != kTzSuccess) return;
  for (const TzListedNode& entry : entries) {
    const std::string& path = entry.path.GetNative();
    if (IsNameOfOurs(std::string_view(path).substr(path.rfind('/') + 1), prefix)) SweepFolder(path);
  }
}

/// The stem as one component of a path that can't be too long.
std::string MakeName(const TzString& stem, std::size_t number) {
  constexpr std::size_t kMostUnits = 60;
  std::string name = stem.Substring(0, kMostUnits).GetUTF8String();
  std::replace(name.begin(), name.end(), '/', '-');
  return name + "-" + std::to_string(number);
}

bool IsVacant(TzFileSystem& files, const TzPath& folder) {
  std::vector<TzListedNode> entries;
  const TzNodeKind kind = files.GetKind(folder);
  if (kind == TzNodeKind::Absent) return true;
  return kind == TzNodeKind::Folder && files.List(folder, entries) == kTzSuccess && entries.empty();
}

}  // namespace

TzScratch& TzScratch::Instance() {
  static TzScratch scratch;
  return scratch;
}

TzPath TzScratch::MakeFolder(const TzString& stem) {
  const std::lock_guard guard(mutex);
  TzFileSystem& files = TzFileSystem::Current();
  if (const auto kept = std::exchange(keptNext, std::nullopt); kept.has_value()) {
    if (!IsVacant(files, *kept)) {
      TzReportProblem(kTzFailure, kept->GetNative(), "isn't an empty folder");
      return {};
    }
    if (files.MakeFolders(*kept) == kTzSuccess) return *kept;
    TzReportSystemProblem(errno, kept->GetNative(), "can't make the folder");
    return {};
  }
  return MakeBelowRoot(stem, &TzFileSystem::MakeScratchFolder);
}

TzPath TzScratch::MakeDiskFolder(const TzString& stem) {
  const std::lock_guard guard(mutex);
  return MakeBelowRoot(stem, &TzFileSystem::MakeFolder);
}

TzPath TzScratch::MakeDiskFolderFor(const TzString& stem, uid_t user, gid_t group) {
  constexpr mode_t kPassable = S_IRWXU | S_IXGRP | S_IXOTH;
  const std::lock_guard guard(mutex);
  TzPath folder = MakeBelowRoot(stem, &TzFileSystem::MakeFolder);
  if (folder.IsEmpty()) return folder;
  // Who passes the private folder finds the others in it closed.
  if (chmod(root.GetNative().c_str(), kPassable) == 0 &&
      chown(folder.GetNative().c_str(), user, group) == 0) {
    return folder;
  }
  TzReportSystemProblem(errno, folder.GetNative(), "can't be given to another user");
  return {};
}

TzPath TzScratch::MakeBelowRoot(const TzString& stem, Make make) {
  if (!MakeRoot()) return {};
  TzPath folder = TzPath::FromNative(root.GetNative() + "/" + MakeName(stem, made.size() + 1));
  if ((TzFileSystem::Current().*make)(folder) != kTzSuccess) {
    TzReportSystemProblem(errno, folder.GetNative(), "can't make the folder");
    return {};
  }
  static_cast<void>(chmod(folder.GetNative().c_str(), S_IRWXU));
  made.push_back(folder);
  return folder;
}

void TzScratch::KeepNextAt(const TzPath& folder) {
  const std::lock_guard guard(mutex);
  keptNext = folder;
}

void TzScratch::DeleteAll() {
  const std::lock_guard guard(mutex);
  for (const TzPath& folder : made) static_cast<void>(TzFileSystem::Current().Delete(folder));
  made.clear();
  if (!root.IsEmpty()) DeletePrivateFolder(root.GetNative());
  root = {};
  lock = {};
}

bool TzScratch::MakeRoot() {
  if (!root.IsEmpty()) return true;
  const std::string tempRoot = GetTempRoot();
  const std::string prefix = GetPrefix();
  const std::string pattern = std::string(tempRoot).append("/").append(prefix).append(kPattern);
  SweepAbandoned(tempRoot, prefix);
  // Another process may sweep the folder between its making and its locking; a new one then takes its place.
  constexpr int kAttempts = 16;
  for (int attempt = 0; attempt < kAttempts && !lock.IsOpen(); ++attempt) {
    std::string folder = pattern;
    if (mkdtemp(folder.data()) == nullptr) break;
    lock = TakeLock(folder, O_CREAT | O_EXCL);
    if (lock.IsOpen()) root = TzPath::FromNative(folder);
  }
  if (root.IsEmpty()) TzReportSystemProblem(errno, tempRoot, "can't make a temporary folder in it");
  return !root.IsEmpty();
}
