// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

/// Gathers values as bytes: whole numbers in seven bits a byte, the lowest first; other numbers as decimals
/// where that is exact, else as eight bytes; texts with their length.
class PlexoByteWriter {
 public:
  void Byte(std::uint8_t byte) { bytes.push_back(byte); }
  void Whole(std::uint64_t number);
  void Real(double number);
  void Text(std::string_view text);
  /// Eight bytes, the lowest first.
  void Fixed(std::uint64_t number);
  [[nodiscard]] std::vector<std::uint8_t> Take() { return std::move(bytes); }

 private:
  std::vector<std::uint8_t> bytes;
};
