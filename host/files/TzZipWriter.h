// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "host/files/TzReplacementFile.h"

/// What an entry's headers say about it.
struct TzZipEntryHeader {
  /// UTF-8 with slashes; a folder's ends with one.
  std::string name;
  bool isDeflated = false;
  std::uint32_t crc = 0;
  std::uint64_t packedSize = 0;
  std::uint64_t size = 0;
};

/// Writes the structure of an archive around packed data. Parts of ZIP64 appear only where a number needs
/// them. False from an operation leaves `errno` telling why.
class TzZipWriter {
 public:
  /// All entries bear this time, in seconds since 1970; it is brought into what the format can hold.
  TzZipWriter(TzReplacementFile& archive, std::int64_t time);

  /// Writes an entry whose packed data is at hand.
  [[nodiscard]] bool Add(const TzZipEntryHeader& entry, std::span<const std::byte> packed);

  /// Writes the headers of an entry whose packed data follows by `AppendFrom`.
  [[nodiscard]] bool AddHeader(const TzZipEntryHeader& entry) { return Add(entry, {}); }
  /// Appends packed data that lies in another file. False, without an `errno`, if that file is shorter.
  [[nodiscard]] bool AppendFrom(const TzFileDescriptor& source, std::uint64_t offset, std::uint64_t bytes) {
    return file.AppendFrom(source, offset, bytes);
  }

  /// Starts an entry whose data follows in pieces; only its name and size need be known.
  [[nodiscard]] bool Begin(const TzZipEntryHeader& entry);
  [[nodiscard]] bool AppendData(std::span<const std::byte> packed) { return file.Append(packed); }
  /// Forgets the data since `Begin`.
  [[nodiscard]] bool RestartData() { return file.Truncate(dataOffset); }
  /// Completes the entry; its packed size is counted here.
  [[nodiscard]] bool End(TzZipEntryHeader entry);

  /// Writes the directory.
  [[nodiscard]] bool Finish();

 private:
  [[nodiscard]] std::vector<std::byte> MakeLocalHeader(const TzZipEntryHeader& entry) const;
  void AddToDirectory(const TzZipEntryHeader& entry, std::uint64_t headerOffset);

  TzReplacementFile& file;
  std::uint16_t dosDate = 0;
  std::uint16_t dosTime = 0;
  std::uint64_t headerOffset = 0;
  std::uint64_t dataOffset = 0;
  std::uint64_t entryCount = 0;
  std::vector<std::byte> directory;
};
