// SPDX-License-Identifier: Apache-2.0
#include "host/files/TzReplacementFile.h"

#include <fcntl.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <string_view>
#include <utility>

namespace {

constexpr std::size_t kGatheredBytes = std::size_t{1} << 20U;
/// What is smaller is faster gathered than handed to the system by itself.
constexpr std::uint64_t kSmallBytes = std::uint64_t{64} << 10U;
/// How much the disk is given to write at a time.
constexpr std::uint64_t kBegunBytes = std::uint64_t{16} << 20U;
constexpr mode_t kNewFileMode = 0666;
constexpr mode_t kPermissionBits = 0777;
constexpr int kAttempts = 64;

/// The name under which the system knows an open file, even one without a name of its own.
std::string GetOpenFilePath(const TzFileDescriptor& file) {
  return "/proc/self/fd/" + std::to_string(file.Get());
}

}  // namespace

TzReplacementFile::~TzReplacementFile() {
  const int error = errno;
  if (!hiddenPath.empty()) unlink(hiddenPath.c_str());
  errno = error;
}

bool TzReplacementFile::Create() {
  const TzPath parent = target.GetParentTzPath();
  folder = parent.IsEmpty() ? "." : parent.GetNative();
  struct stat status = {};
  if (stat(target.GetNative().c_str(), &status) == 0 && S_ISDIR(status.st_mode)) {
    errno = EISDIR;
    return false;
  }
  file = TzFileDescriptor(open(folder.c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, kNewFileMode));
  const bool canBeNamed = file.IsOpen() && access(GetOpenFilePath(file).c_str(), F_OK) == 0;
  return canBeNamed || CreateNamed();
}

bool TzReplacementFile::CreateNamed() {
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    const std::string path = MakeHiddenPath();
    file = TzFileDescriptor(open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kNewFileMode));
    if (file.IsOpen()) hiddenPath = path;
    if (file.IsOpen() || errno != EEXIST) break;
  }
  return file.IsOpen();
}

bool TzReplacementFile::Append(std::span<const std::byte> bytes) {
  if (gatheredCount + bytes.size() > kGatheredBytes && !Send()) return false;
  size += bytes.size();
  if (bytes.size() > kGatheredBytes) return file.WriteAt(size - bytes.size(), bytes);
  std::copy(bytes.begin(), bytes.end(), Gather(bytes.size()).begin());
  return true;
}

bool TzReplacementFile::AppendFrom(const TzFileDescriptor& source, std::uint64_t offset,
                                   std::uint64_t bytes) {
  const bool isLarge = bytes > kSmallBytes;
  if ((isLarge || gatheredCount + bytes > kGatheredBytes) && !Send()) return false;
  std::int64_t count = 0;
  if (isLarge) {
    count = source.CopyRange(offset, bytes, file, size);
  } else {
    count = source.ReadAt(offset, Gather(bytes));
  }
  if (count >= 0) errno = 0;
  size += bytes;
  if (isLarge) StartWriting();
  return count == static_cast<std::int64_t>(bytes);
}

bool TzReplacementFile::Overwrite(std::uint64_t offset, std::span<const std::byte> bytes) {
  return Flush() && file.WriteAt(offset, bytes);
}

bool TzReplacementFile::Truncate(std::uint64_t newSize) {
  if (!Flush()) return false;
  size = newSize;
  begunSize = std::min(begunSize, newSize);
  return ftruncate(file.Get(), static_cast<off_t>(newSize)) == 0;
}

bool TzReplacementFile::Commit() {
  struct stat status = {};
  if (lstat(target.GetNative().c_str(), &status) == 0 && S_ISREG(status.st_mode) &&
      fchmod(file.Get(), status.st_mode & kPermissionBits) != 0) {
    return false;
  }
  return Flush() && fsync(file.Get()) == 0 && TakeName() && file.Close() && SyncFolder();
}

std::span<std::byte> TzReplacementFile::Gather(std::size_t bytes) {
  const auto room = gathered.Take(kGatheredBytes).subspan(gatheredCount, bytes);
  gatheredCount += bytes;
  return room;
}

bool TzReplacementFile::Send() {
  if (gatheredCount == 0) return true;
  StartWriting();
  const std::size_t count = std::exchange(gatheredCount, 0);
  return writer.Write(gathered, count, size - count);
}

bool TzReplacementFile::Flush() { return Send() && writer.Wait(); }

void TzReplacementFile::StartWriting() {
  if (size < begunSize + kBegunBytes) return;
  // No failure counts: the file is synced at the end.
  const int error = errno;
  sync_file_range(file.Get(), static_cast<off_t>(begunSize), static_cast<off_t>(size - begunSize),
                  SYNC_FILE_RANGE_WRITE);
  errno = error;
  begunSize = size;
}

bool TzReplacementFile::TakeName() {
  const std::string openPath = GetOpenFilePath(file);
  const char* targetPath = target.GetNative().c_str();
  if (hiddenPath.empty()) {
    const auto link = [&](const char* path) {
      return linkat(AT_FDCWD, openPath.c_str(), AT_FDCWD, path, AT_SYMLINK_FOLLOW) == 0;
    };
    // A link never replaces a file, so an existing target is replaced by renaming.
    if (link(targetPath)) return true;
    for (int attempt = 0; errno == EEXIST && hiddenPath.empty() && attempt < kAttempts; ++attempt) {
      const std::string path = MakeHiddenPath();
      if (link(path.c_str())) hiddenPath = path;
    }
    if (hiddenPath.empty()) return false;
  }
  if (std::rename(hiddenPath.c_str(), targetPath) != 0) return false;
  hiddenPath.clear();
  return true;
}

bool TzReplacementFile::SyncFolder() const {
  const TzFileDescriptor opened(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  // A folder that may be written but not read, or a file system that can't sync folders, is no failure: the
  // file itself is complete and on the disk.
  return !opened.IsOpen() || fsync(opened.Get()) == 0 || errno == EINVAL || errno == ENOTSUP;
}

std::string TzReplacementFile::MakeHiddenPath() const {
  constexpr std::string_view kLetters = "abcdefghijklmnopqrstuvwxyz234567";
  constexpr std::size_t kMostStemBytes = 200;
  std::array<unsigned char, 6> random = {};
  static_cast<void>(getrandom(random.data(), random.size(), 0));
  const std::string& native = target.GetNative();
  std::string path = folder + "/." + native.substr(native.rfind('/') + 1, kMostStemBytes) + ".plexo-";
  for (const unsigned char byte : random) path += kLetters[byte % kLetters.size()];
  return path;
}
