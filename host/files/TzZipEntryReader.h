// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

#include "host/files/TzFileDescriptor.h"

/// Reads the content of one entry of an archive from its start to its end, in bounded memory.
class TzZipEntryReader {
 public:
  /// The archive must outlive this. The data starts at the offset.
  TzZipEntryReader(const TzFileDescriptor& file, std::uint64_t dataOffset, std::uint64_t dataSize,
                   bool isDataDeflated);
  TzZipEntryReader(const TzZipEntryReader&) = delete;
  TzZipEntryReader& operator=(const TzZipEntryReader&) = delete;
  ~TzZipEntryReader();

  /// Fills the buffer as far as the content reaches and returns the number of bytes; 0 at the end, -1 on
  /// failure, of which `GetFault` or else `errno` tells.
  [[nodiscard]] std::ptrdiff_t Read(std::span<std::byte> buffer);
  /// What is wrong with the data; null if the system failed.
  [[nodiscard]] const char* GetFault() const { return fault; }
  /// How many packed bytes were read so far.
  [[nodiscard]] std::uint64_t GetPosition() const { return position; }

  static constexpr const char* kDamagedData = "the entry's packed data is damaged";
  static constexpr const char* kCutShort = "the archive was cut short while it was read";

 private:
  struct Inflation;

  [[nodiscard]] bool ReadPacked(std::span<std::byte> bytes);
  [[nodiscard]] std::ptrdiff_t ReadStored(std::span<std::byte> buffer);
  [[nodiscard]] std::ptrdiff_t ReadDeflated(std::span<std::byte> buffer);

  const TzFileDescriptor& archive;
  std::uint64_t offset;
  std::uint64_t size;
  std::uint64_t position = 0;
  const char* fault = nullptr;
  /// Null if the data is stored.
  std::unique_ptr<Inflation> inflation;
};
