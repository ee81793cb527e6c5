// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

/// Takes back what PlexoByteWriter wrote. Bytes from outside may be anything: after the first fault every
/// value is zero or empty, and HasFailed says so.
class PlexoByteReader {
 public:
  explicit PlexoByteReader(std::span<const std::uint8_t> source) : bytes(source) {}

  std::uint8_t Byte();
  /// A whole number up to a bound; more is a fault.
  std::uint64_t Whole(std::uint64_t most = UINT64_MAX);
  /// A count of things that take at least one byte each: a larger one than there are bytes is a fault.
  std::uint32_t Count();
  double Real();
  std::string Text();
  std::uint64_t Fixed();
  /// An enumerator, as a byte up to the last one.
  template <typename Enum>
  Enum Choice(Enum last) {
    const std::uint8_t byte = Byte();
    if (byte > static_cast<std::uint8_t>(last)) Fail();
    return hasFailed ? Enum{} : static_cast<Enum>(byte);
  }
  void Fail() { hasFailed = true; }
  [[nodiscard]] bool HasFailed() const { return hasFailed; }
  [[nodiscard]] bool IsAtEnd() const { return at == bytes.size(); }

 private:
  std::span<const std::uint8_t> bytes;
  std::size_t at = 0;
  bool hasFailed = false;
};
