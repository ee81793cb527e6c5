// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// One entry as a `RawZip` writes it. What isn't given follows from the content.
struct RawEntry {
  std::string name = {};
  std::string content = {};
  bool deflate = false;
  std::uint16_t flags = 0;
  /// The system that wrote it: 0 DOS, 3 Unix.
  unsigned host = 0;
  std::uint32_t attributes = 0;
  /// Date and time in the form of DOS; 1980-01-01.
  std::uint32_t time = 0x00210000;
  /// Writes the sizes behind the data instead of into the local header.
  bool descriptor = false;
  /// Writes all sizes and the offset into ZIP64 fields.
  bool zip64 = false;

  /// Told by both headers in place of the truth.
  std::optional<std::uint16_t> method = {};
  std::optional<std::uint32_t> crc = {};
  std::optional<std::uint64_t> size = {};
  std::optional<std::uint64_t> packedSize = {};
  std::optional<std::string> packed = {};
  /// Told by one header only.
  std::optional<std::string> localName = {};
  std::optional<std::uint16_t> localMethod = {};
  std::optional<std::uint16_t> localFlags = {};
  std::optional<std::uint32_t> localSize = {};
  std::optional<std::uint64_t> offset = {};
  std::uint16_t disk = 0;
  /// Further extra fields of the directory.
  std::string extra = {};
};

/// An archive in which every field can lie.
struct RawZip {
  std::vector<RawEntry> entries = {};
  /// Stands before the archive; the offsets don't count it.
  std::string prefix = {};
  std::string comment = {};
  bool zip64End = false;
  /// Told by the locator of the ZIP64 form, and by the plain form beside it.
  std::optional<std::uint64_t> locatorOffset = {};
  std::uint32_t locatorDisks = 1;
  std::optional<std::uint16_t> plainDisk = {};
  std::uint16_t disk = 0;
  std::optional<std::uint64_t> count = {};
  std::optional<std::uint32_t> directorySize = {};

  [[nodiscard]] std::string Build() const;

  /// An entry of this many zeros, which never stand in memory together.
  static RawEntry Zeros(const std::string& name, std::uint64_t size);
  /// An extra field: identifier, length, content.
  static std::string Extra(std::uint16_t identifier, const std::string& content);
  /// The extra field by which some archivers give the UTF-8 name of an entry written under another.
  static std::string UnicodePath(const std::string& writtenName, const std::string& utf8Name);
};
