// SPDX-License-Identifier: Apache-2.0
#include "host/files/TzDiskFileSystem.h"

#include <dirent.h>
#include <fcntl.h>
#include <ftw.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <limits>
#include <string_view>

#include "host/files/TzFileDescriptor.h"

namespace {

constexpr mode_t kAllWriteBits = S_IWUSR | S_IWGRP | S_IWOTH;
constexpr mode_t kNewFileMode = 0666;
constexpr mode_t kNewFolderMode = 0777;

TzNodeKind KindOf(mode_t mode) {
  if (S_ISREG(mode)) return TzNodeKind::File;
  return S_ISDIR(mode) ? TzNodeKind::Folder : TzNodeKind::Other;
}

TzFileDescriptor Open(const TzPath& path, int flags) {
  return TzFileDescriptor(open(path.GetNative().c_str(), flags | O_CLOEXEC, kNewFileMode));
}

/// Opens a regular file only. A pipe without a writer would block the call for good otherwise.
TzFileDescriptor OpenRegular(const TzPath& path, struct stat& status) {
  TzFileDescriptor file = Open(path, O_RDONLY | O_NONBLOCK);
  if (!file.IsOpen() || fstat(file.Get(), &status) != 0) return {};
  if (S_ISREG(status.st_mode)) return file;
  errno = S_ISDIR(status.st_mode) ? EISDIR : EINVAL;
  return {};
}

class DiskReadStream final : public TzReadStream {
 public:
  explicit DiskReadStream(TzFileDescriptor opened) : file(std::move(opened)) {}
  std::ptrdiff_t Read(std::span<std::byte> buffer) override { return file.Read(buffer); }

 private:
  TzFileDescriptor file;
};

/// Gathers small writes. The first failure stays: every later call fails with the same `errno`.
class DiskWriteStream final : public TzWriteStream {
 public:
  explicit DiskWriteStream(TzFileDescriptor opened) : file(std::move(opened)) {}

  TzErrorCodeEnum Write(std::span<const std::byte> bytes) override {
    if (gathered.size() + bytes.size() > kGatheredBytes && Flush() != kTzSuccess)
      return TzFileSystem::Failed();
    if (bytes.size() > kGatheredBytes) return Remember(file.Write(bytes));
    gathered.insert(gathered.end(), bytes.begin(), bytes.end());
    return Remember(true);
  }

  TzErrorCodeEnum Flush() override {
    const TzErrorCodeEnum result = Remember(error == 0 && file.Write(gathered));
    gathered.clear();
    return result;
  }

  TzErrorCodeEnum Close() override {
    static_cast<void>(Flush());
    return Remember(file.Close());
  }

 private:
  static constexpr std::size_t kGatheredBytes = std::size_t{16} << 10U;

  TzErrorCodeEnum Remember(bool succeeded) {
    if (error == 0 && !succeeded) error = errno;
    if (error == 0) return kTzSuccess;
    errno = error;
    return TzFileSystem::Failed();
  }

  TzFileDescriptor file;
  std::vector<std::byte> gathered;
  int error = 0;
};

bool IsSameFile(const struct stat& status, const TzPath& path) {
  struct stat other = {};
  return stat(path.GetNative().c_str(), &other) == 0 && other.st_dev == status.st_dev &&
         other.st_ino == status.st_ino;
}

bool IsAbsent(int result) { return result != 0 && errno == ENOENT; }

int DeleteNode(const char* path, const struct stat*, int, FTW*) {
  const int result = std::remove(path);
  return IsAbsent(result) ? 0 : result;
}

}  // namespace

TzNodeKind TzDiskFileSystem::GetKind(const TzPath& path) {
  struct stat status = {};
  return lstat(path.GetNative().c_str(), &status) == 0 ? KindOf(status.st_mode) : TzNodeKind::Absent;
}

TzErrorCodeEnum TzDiskFileSystem::List(const TzPath& folder, std::vector<TzListedNode>& entries) {
  entries.clear();
  const std::unique_ptr<DIR, int (*)(DIR*)> stream(opendir(folder.GetNative().c_str()), closedir);
  if (stream == nullptr) return Failed();
  std::string prefix = folder.GetNative();
  if (prefix.back() != '/') prefix += '/';
  errno = 0;
  while (const dirent* entry = readdir(stream.get())) {
    const std::string_view name = &entry->d_name[0];
    if (name == "." || name == "..") continue;
    TzPath path = TzPath::FromNative(prefix + std::string(name));
    const TzNodeKind kind =
        entry->d_type == DT_UNKNOWN ? GetKind(path) : KindOf(static_cast<mode_t>(DTTOIF(entry->d_type)));
    entries.push_back({std::move(path), kind});
    errno = 0;
  }
  if (errno != 0) return Failed();
  std::sort(entries.begin(), entries.end(),
            [](const TzListedNode& left, const TzListedNode& right) { return left.path < right.path; });
  return kTzSuccess;
}

TzErrorCodeEnum TzDiskFileSystem::MakeFolder(const TzPath& folder) {
  if (mkdir(folder.GetNative().c_str(), kNewFolderMode) == 0) return kTzSuccess;
  struct stat status = {};
  const int error = errno;
  if (stat(folder.GetNative().c_str(), &status) == 0 && S_ISDIR(status.st_mode)) return kTzSuccess;
  errno = error;
  return Failed();
}

TzErrorCodeEnum TzDiskFileSystem::Delete(const TzPath& path) {
  constexpr int kOpenFolders = 16;
  const char* native = path.GetNative().c_str();
  const int result = GetKind(path) == TzNodeKind::Folder
                         ? nftw(native, DeleteNode, kOpenFolders, FTW_DEPTH | FTW_PHYS)
                         : unlink(native);
  return result == 0 || IsAbsent(result) ? kTzSuccess : Failed();
}

TzErrorCodeEnum TzDiskFileSystem::Copy(const TzPath& source, const TzPath& target, TzCopyMode mode) {
  struct stat status = {};
  const TzFileDescriptor from = OpenRegular(source, status);
  if (!from.IsOpen()) return Failed();
  if (mode == TzCopyMode::Replace) {
    if (IsSameFile(status, target)) return kTzSuccess;
    // A target that is read-only, or a link to elsewhere, is replaced rather than written through.
    unlink(target.GetNative().c_str());
  }
  TzFileDescriptor to = Open(target, O_WRONLY | O_CREAT | O_EXCL);
  if (!to.IsOpen()) return Failed();
  constexpr std::uint64_t kToTheEnd = std::numeric_limits<std::int64_t>::max();
  if (from.CopyRange(0, kToTheEnd, to, 0) >= 0 && to.Close()) return kTzSuccess;
  const int error = errno;
  unlink(target.GetNative().c_str());
  errno = error;
  return Failed();
}

TzErrorCodeEnum TzDiskFileSystem::Move(const TzPath& source, const TzPath& target) {
  return rename(source.GetNative().c_str(), target.GetNative().c_str()) == 0 ? kTzSuccess : Failed();
}

std::uint64_t TzDiskFileSystem::GetSize(const TzPath& file) {
  struct stat status = {};
  if (stat(file.GetNative().c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return 0;
  return static_cast<std::uint64_t>(status.st_size);
}

bool TzDiskFileSystem::IsReadOnly(const TzPath& file) {
  struct stat status = {};
  return stat(file.GetNative().c_str(), &status) == 0 && (status.st_mode & S_IWUSR) == 0;
}

TzErrorCodeEnum TzDiskFileSystem::SetReadOnly(const TzPath& file, bool readOnly) {
  struct stat status = {};
  if (stat(file.GetNative().c_str(), &status) != 0) return Failed();
  const mode_t mode = readOnly ? status.st_mode & ~kAllWriteBits : status.st_mode | S_IWUSR;
  return chmod(file.GetNative().c_str(), mode & ~static_cast<mode_t>(S_IFMT)) == 0 ? kTzSuccess : Failed();
}

std::unique_ptr<TzReadStream> TzDiskFileSystem::OpenRead(const TzPath& file) {
  struct stat status = {};
  TzFileDescriptor opened = OpenRegular(file, status);
  return opened.IsOpen() ? std::make_unique<DiskReadStream>(std::move(opened)) : nullptr;
}

std::unique_ptr<TzWriteStream> TzDiskFileSystem::OpenWrite(const TzPath& file) {
  TzFileDescriptor opened = Open(file, O_WRONLY | O_CREAT | O_TRUNC);
  return opened.IsOpen() ? std::make_unique<DiskWriteStream>(std::move(opened)) : nullptr;
}
