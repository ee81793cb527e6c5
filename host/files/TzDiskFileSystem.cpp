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
#include <string_view>

#include "host/files/TzFileDescriptor.h"

namespace {

constexpr mode_t kAllWriteBits = S_IWUSR | S_IWGRP | S_IWOTH;
constexpr mode_t kNewFileMode = 0666;
constexpr mode_t kNewFolderMode = 0777;

TzErrorCodeEnum Failed() {
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

TzErrorCodeEnum Result(bool succeeded) { return succeeded ? kTzSuccess : Failed(); }

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
    if (gathered.size() + bytes.size() > kGatheredBytes && Flush() != kTzSuccess) return Failed();
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
    return Failed();
  }

  TzFileDescriptor file;
  std::vector<std::byte> gathered;
  int error = 0;
};

bool CopyBytes(const TzFileDescriptor& source, const TzFileDescriptor& target) {
  constexpr std::size_t kPieceBytes = std::size_t{1} << 30U;
  while (copy_file_range(source.Get(), nullptr, target.Get(), nullptr, kPieceBytes, 0) > 0) {
  }
  // Not every pair of file systems copies by itself, or all of a file: what is left goes by hand.
  std::vector<std::byte> buffer(std::size_t{64} << 10U);
  for (;;) {
    const std::ptrdiff_t count = source.Read(buffer);
    if (count <= 0) return count == 0;
    if (!target.Write(std::span(buffer).first(static_cast<std::size_t>(count)))) return false;
  }
}

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
  if (lstat(path.GetNative().c_str(), &status) != 0) return TzNodeKind::Absent;
  if (S_ISREG(status.st_mode)) return TzNodeKind::File;
  return S_ISDIR(status.st_mode) ? TzNodeKind::Folder : TzNodeKind::Other;
}

TzErrorCodeEnum TzDiskFileSystem::List(const TzPath& folder, std::vector<TzPath>& entries) {
  entries.clear();
  const std::unique_ptr<DIR, int (*)(DIR*)> stream(opendir(folder.GetNative().c_str()), closedir);
  if (stream == nullptr) return Failed();
  std::string prefix = folder.GetNative();
  if (prefix.back() != '/') prefix += '/';
  errno = 0;
  while (const dirent* entry = readdir(stream.get())) {
    const std::string_view name = &entry->d_name[0];
    if (name != "." && name != "..") entries.push_back(TzPath::FromNative(prefix + std::string(name)));
  }
  if (errno != 0) return Failed();
  std::sort(entries.begin(), entries.end());
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
  return Result(result == 0 || IsAbsent(result));
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
  if (CopyBytes(from, to) && to.Close()) return kTzSuccess;
  const int error = errno;
  unlink(target.GetNative().c_str());
  errno = error;
  return Failed();
}

TzErrorCodeEnum TzDiskFileSystem::Move(const TzPath& source, const TzPath& target) {
  return Result(rename(source.GetNative().c_str(), target.GetNative().c_str()) == 0);
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
  return Result(chmod(file.GetNative().c_str(), mode & ~static_cast<mode_t>(S_IFMT)) == 0);
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
