// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

/// Owns a file descriptor of the system.
///
/// Guarantees: an operation that fails leaves `errno` telling why, and the destructor leaves `errno` as it
/// is, so that a caller can still report it. Interrupted and partial calls are carried on to their end.
class TzFileDescriptor {
 public:
  /// What every write to a file changes, and its removal or another name doesn't.
  struct Stamp {
    std::int64_t size = -1;
    std::int64_t seconds = 0;
    std::int64_t nanoseconds = 0;

    bool operator==(const Stamp& other) const = default;
  };

  TzFileDescriptor() = default;
  /// Takes what `open` returned, a failure included.
  explicit TzFileDescriptor(int opened) : descriptor(opened) {}
  TzFileDescriptor(TzFileDescriptor&& other) noexcept;
  TzFileDescriptor& operator=(TzFileDescriptor&& other) noexcept;
  ~TzFileDescriptor();

  [[nodiscard]] bool IsOpen() const { return descriptor >= 0; }
  [[nodiscard]] int Get() const { return descriptor; }

  /// The same open file once more. Not open on failure.
  [[nodiscard]] TzFileDescriptor Duplicate() const;
  [[nodiscard]] Stamp GetStamp() const;

  /// Fills the buffer as far as the file reaches and returns the number of bytes; -1 on failure.
  [[nodiscard]] std::ptrdiff_t Read(std::span<std::byte> buffer) const;
  [[nodiscard]] std::ptrdiff_t ReadAt(std::uint64_t offset, std::span<std::byte> buffer) const;
  /// Whether the bytes of this part can be read, as far as the file reaches. Leaves `errno` alone if they
  /// can.
  [[nodiscard]] bool CanRead(std::uint64_t offset, std::uint64_t size) const;
  [[nodiscard]] bool Write(std::span<const std::byte> bytes) const;
  [[nodiscard]] bool WriteAt(std::uint64_t offset, std::span<const std::byte> bytes) const;
  /// Copies a part of this file to a place in another, inside the system where that can be: there the file
  /// system may even share the bytes. Holes of a large part become holes, where nothing was written before.
  /// Returns the number of bytes, less than the size only where this file ends; -1 on failure.
  [[nodiscard]] std::int64_t CopyRange(std::uint64_t offset, std::uint64_t size,
                                       const TzFileDescriptor& target, std::uint64_t targetOffset) const;
  [[nodiscard]] bool Close();

 private:
  int descriptor = -1;
};
