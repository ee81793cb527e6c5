// SPDX-License-Identifier: Apache-2.0
#include "host/files/TzFileDescriptor.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <utility>
#include <vector>

#include "host/files/TzByteBuffer.h"

namespace {

/// Calls `transfer` on what is left of the bytes until all are through, the file ends or a call fails.
template <typename Byte, typename Transfer>
std::ptrdiff_t TransferAll(std::span<Byte> bytes, Transfer transfer) {
  std::size_t done = 0;
  while (done < bytes.size()) {
    const ssize_t count = transfer(bytes.data() + done, bytes.size() - done, done);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return -1;
    if (count == 0) break;
    done += static_cast<std::size_t>(count);
  }
  return static_cast<std::ptrdiff_t>(done);
}

/// A write that takes nothing is a failure which the system didn't name.
bool IsWhole(std::ptrdiff_t written, std::size_t wanted) {
  if (written >= 0 && static_cast<std::size_t>(written) < wanted) errno = EIO;
  return written == static_cast<std::ptrdiff_t>(wanted);
}

constexpr std::size_t kCopiedBytes = std::size_t{256} << 10U;

/// A part of a file that goes to another.
struct Part {
  int source;
  std::uint64_t offset;
  std::uint64_t size;
  int target;
  std::uint64_t targetOffset;
};

/// How many bytes without content the part has from there on. What a system can't tell is content.
std::uint64_t GetHoleSize(const Part& part, std::uint64_t done) {
  const std::uint64_t from = part.offset + done;
  const off_t data = lseek(part.source, static_cast<off_t>(from), SEEK_DATA);
  struct stat status = {};
  if (data >= 0) return std::min(static_cast<std::uint64_t>(data) - from, part.size - done);
  if (errno != ENXIO || fstat(part.source, &status) != 0) return 0;
  const auto end = static_cast<std::uint64_t>(status.st_size);
  return end > from ? std::min(end - from, part.size - done) : 0;
}

/// Lets the system copy as much as it will, and returns how much that was. `errno` tells why it stopped; 0 if
/// it says that the source ends, which some file systems do wrongly.
std::uint64_t CopyInside(const Part& part) {
  constexpr std::uint64_t kMostBytes = std::uint64_t{1} << 30U;
  constexpr std::uint64_t kLargeBytes = std::uint64_t{1} << 20U;
  std::uint64_t done = 0;
  std::uint64_t hole = 0;
  while (done < part.size) {
    hole = part.size >= kLargeBytes ? GetHoleSize(part, done) : 0;
    done += hole;
    if (done == part.size) break;
    auto from = static_cast<off_t>(part.offset + done);
    auto to = static_cast<off_t>(part.targetOffset + done);
    errno = 0;
    const ssize_t count =
        copy_file_range(part.source, &from, part.target, &to, std::min(part.size - done, kMostBytes), 0);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) break;
    done += static_cast<std::uint64_t>(count);
  }
  struct stat status = {};
  const auto end = static_cast<off_t>(part.targetOffset + done);
  if (hole > 0 && fstat(part.target, &status) == 0 && status.st_size < end &&
      ftruncate(part.target, end) != 0) {
    return done - hole;
  }
  return done;
}

/// The ways in which a system says that it doesn't copy between two files, but for a fault of one of them.
bool IsLeftToUs(int error) {
  return error == EXDEV || error == EINVAL || error == ENOSYS || error == EOPNOTSUPP || error == EPERM;
}

}  // namespace

TzFileDescriptor::TzFileDescriptor(TzFileDescriptor&& other) noexcept
    : descriptor(std::exchange(other.descriptor, -1)) {}

TzFileDescriptor& TzFileDescriptor::operator=(TzFileDescriptor&& other) noexcept {
  std::swap(descriptor, other.descriptor);
  return *this;
}

TzFileDescriptor::~TzFileDescriptor() {
  const int error = errno;
  static_cast<void>(Close());
  errno = error;
}

TzFileDescriptor TzFileDescriptor::Duplicate() const {
  return TzFileDescriptor(fcntl(descriptor, F_DUPFD_CLOEXEC, 0));
}

TzFileDescriptor::Stamp TzFileDescriptor::GetStamp() const {
  struct stat status = {};
  if (fstat(descriptor, &status) != 0) return {};
  return {status.st_size, status.st_mtim.tv_sec, status.st_mtim.tv_nsec};
}

std::ptrdiff_t TzFileDescriptor::Read(std::span<std::byte> buffer) const {
  return TransferAll(
      buffer, [this](std::byte* at, std::size_t size, std::size_t) { return read(descriptor, at, size); });
}

std::ptrdiff_t TzFileDescriptor::ReadAt(std::uint64_t offset, std::span<std::byte> buffer) const {
  return TransferAll(buffer, [this, offset](std::byte* at, std::size_t size, std::size_t done) {
    return pread(descriptor, at, size, static_cast<off_t>(offset + done));
  });
}

bool TzFileDescriptor::CanRead(std::uint64_t offset, std::uint64_t size) const {
  const int error = errno;
  std::vector<std::byte> buffer(std::min<std::uint64_t>(size, kCopiedBytes));
  for (std::uint64_t done = 0; done < size; done += buffer.size()) {
    if (ReadAt(offset + done, buffer) < 0) return false;
  }
  errno = error;
  return true;
}

bool TzFileDescriptor::Write(std::span<const std::byte> bytes) const {
  const auto written = TransferAll(bytes, [this](const std::byte* at, std::size_t size, std::size_t) {
    return write(descriptor, at, size);
  });
  return IsWhole(written, bytes.size());
}

bool TzFileDescriptor::WriteAt(std::uint64_t offset, std::span<const std::byte> bytes) const {
  const auto written =
      TransferAll(bytes, [this, offset](const std::byte* at, std::size_t size, std::size_t done) {
        return pwrite(descriptor, at, size, static_cast<off_t>(offset + done));
      });
  return IsWhole(written, bytes.size());
}

std::int64_t TzFileDescriptor::CopyRange(std::uint64_t offset, std::uint64_t size,
                                         const TzFileDescriptor& target, std::uint64_t targetOffset) const {
  std::uint64_t done = CopyInside({descriptor, offset, size, target.descriptor, targetOffset});
  if (done < size && errno != 0 && !IsLeftToUs(errno)) return -1;
  // Not every pair of file systems copies by itself, or all of a file: what is left goes by hand.
  TzByteBuffer buffer;
  while (done < size) {
    const auto piece = buffer.Take(std::min<std::uint64_t>(size - done, kCopiedBytes));
    const std::ptrdiff_t count = ReadAt(offset + done, piece);
    if (count < 0) return -1;
    const auto read = static_cast<std::size_t>(count);
    if (!target.WriteAt(targetOffset + done, piece.first(read))) return -1;
    done += read;
    if (read < piece.size()) break;
  }
  return static_cast<std::int64_t>(done);
}

bool TzFileDescriptor::Close() {
  if (!IsOpen()) return true;
  // The descriptor is gone whatever close() says; EINTR is therefore no failure.
  return close(std::exchange(descriptor, -1)) == 0 || errno == EINTR;
}
