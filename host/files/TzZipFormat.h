// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <vector>

/// The parts of PKWARE's APPNOTE 6.3 that reading and writing share. All numbers are little-endian.
namespace TzZipFormat {

static_assert(std::endian::native == std::endian::little, "the format's numbers are copied as they stand");

constexpr std::uint32_t kLocalHeader = 0x04034b50;
constexpr std::uint32_t kDirectoryHeader = 0x02014b50;
constexpr std::uint32_t kDirectoryEnd = 0x06054b50;
constexpr std::uint32_t kZip64DirectoryEnd = 0x06064b50;
constexpr std::uint32_t kZip64Locator = 0x07064b50;

constexpr std::size_t kLocalHeaderBytes = 30;
constexpr std::size_t kDirectoryHeaderBytes = 46;
constexpr std::size_t kDirectoryEndBytes = 22;
constexpr std::size_t kZip64DirectoryEndBytes = 56;
constexpr std::size_t kZip64LocatorBytes = 20;

constexpr unsigned kUnixHost = 3;
constexpr unsigned kMacHost = 19;

constexpr std::uint16_t kStored = 0;
constexpr std::uint16_t kDeflated = 8;

constexpr unsigned kEncryptedFlag = 1U << 0U;
constexpr unsigned kDescriptorFlag = 1U << 3U;
constexpr unsigned kStrongEncryptionFlag = 1U << 6U;
constexpr unsigned kUtf8Flag = 1U << 11U;
constexpr unsigned kMaskedHeaderFlag = 1U << 13U;

constexpr std::uint16_t kZip64Extra = 0x0001;
constexpr std::uint16_t kUnicodePathExtra = 0x7075;

/// A field with all bits set says that its value stands in the ZIP64 part.
constexpr std::uint16_t kIn16 = 0xFFFF;
constexpr std::uint32_t kIn32 = 0xFFFFFFFF;

template <typename Number>
Number Get(std::span<const std::byte> bytes, std::size_t offset) {
  Number number = 0;
  std::memcpy(&number, bytes.subspan(offset, sizeof(Number)).data(), sizeof(Number));
  return number;
}
inline std::uint16_t Get16(std::span<const std::byte> bytes, std::size_t offset) {
  return Get<std::uint16_t>(bytes, offset);
}
inline std::uint32_t Get32(std::span<const std::byte> bytes, std::size_t offset) {
  return Get<std::uint32_t>(bytes, offset);
}
inline std::uint64_t Get64(std::span<const std::byte> bytes, std::size_t offset) {
  return Get<std::uint64_t>(bytes, offset);
}

inline void PutBytes(std::vector<std::byte>& bytes, std::span<const std::byte> more) {
  bytes.insert(bytes.end(), more.begin(), more.end());
}
/// The numbers one after another, each as wide as its type.
template <typename... Numbers>
void Put(std::vector<std::byte>& bytes, Numbers... numbers) {
  (PutBytes(bytes, std::as_bytes(std::span(&numbers, 1))), ...);
}

/// Calls `take` with the identifier and the content of every extra field; what is cut short at the end is
/// left out.
template <typename Take>
void ForEachExtra(std::span<const std::byte> extra, Take take) {
  constexpr std::size_t kPrefixBytes = 4;
  while (extra.size() >= kPrefixBytes) {
    const std::size_t length = Get16(extra, 2);
    if (length > extra.size() - kPrefixBytes) return;
    take(Get16(extra, 0), extra.subspan(kPrefixBytes, length));
    extra = extra.subspan(kPrefixBytes + length);
  }
}

}  // namespace TzZipFormat
