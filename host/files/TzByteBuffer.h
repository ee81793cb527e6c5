// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <memory>
#include <span>

/// Room for bytes that is used again and again, and never cleared.
class TzByteBuffer {
 public:
  /// Room for this many bytes, of unknown content; what an earlier call returned is gone.
  std::span<std::byte> Take(std::size_t size) {
    if (size > capacity) {
      bytes = std::make_unique_for_overwrite<std::byte[]>(size);
      capacity = size;
    }
    return {bytes.get(), size};
  }

 private:
  std::unique_ptr<std::byte[]> bytes;
  std::size_t capacity = 0;
};
