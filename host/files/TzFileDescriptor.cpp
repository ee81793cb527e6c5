// SPDX-License-Identifier: Apache-2.0
#include "host/files/TzFileDescriptor.h"

#include <unistd.h>

#include <cerrno>
#include <utility>

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

std::ptrdiff_t TzFileDescriptor::Read(std::span<std::byte> buffer) const {
  return TransferAll(
      buffer, [this](std::byte* at, std::size_t size, std::size_t) { return read(descriptor, at, size); });
}

std::ptrdiff_t TzFileDescriptor::ReadAt(std::uint64_t offset, std::span<std::byte> buffer) const {
  return TransferAll(buffer, [this, offset](std::byte* at, std::size_t size, std::size_t done) {
    return pread(descriptor, at, size, static_cast<off_t>(offset + done));
  });
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

bool TzFileDescriptor::Close() {
  if (!IsOpen()) return true;
  // The descriptor is gone whatever close() says; EINTR is therefore no failure.
  return close(std::exchange(descriptor, -1)) == 0 || errno == EINTR;
}
