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
  TzFileDescriptor() = default;
  /// Takes what `open` returned, a failure included.
  explicit TzFileDescriptor(int opened) : descriptor(opened) {}
  TzFileDescriptor(TzFileDescriptor&& other) noexcept;
  TzFileDescriptor& operator=(TzFileDescriptor&& other) noexcept;
  ~TzFileDescriptor();

  [[nodiscard]] bool IsOpen() const { return descriptor >= 0; }
  [[nodiscard]] int Get() const { return descriptor; }

  /// Fills the buffer as far as the file reaches and returns the number of bytes; -1 on failure.
  [[nodiscard]] std::ptrdiff_t Read(std::span<std::byte> buffer) const;
  [[nodiscard]] std::ptrdiff_t ReadAt(std::uint64_t offset, std::span<std::byte> buffer) const;
  [[nodiscard]] bool Write(std::span<const std::byte> bytes) const;
  [[nodiscard]] bool WriteAt(std::uint64_t offset, std::span<const std::byte> bytes) const;
  [[nodiscard]] bool Close();

 private:
  int descriptor = -1;
};
