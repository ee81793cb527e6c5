// SPDX-License-Identifier: Apache-2.0
#include "host/files/TzZipWriter.h"

#include <sys/stat.h>

#include <algorithm>
#include <chrono>

#include "host/files/TzZipFormat.h"

using namespace TzZipFormat;

namespace {

constexpr std::uint16_t kPlainVersion = 20;
constexpr std::uint16_t kZip64Version = 45;
/// Of a local header: identifier, length, and both sizes.
constexpr std::uint16_t kZip64ExtraBytes = 20;
constexpr std::uint16_t kMadeByUnix = (kUnixHost << 8U) | kZip64Version;
constexpr std::uint32_t kFileAttributes = (S_IFREG | 0644U) << 16U;
constexpr std::uint32_t kFolderAttributes = ((S_IFDIR | 0755U) << 16U) | 0x10U;

bool IsWide(std::uint64_t number) { return number >= kIn32; }
std::uint32_t Narrow(std::uint64_t number) {
  return IsWide(number) ? kIn32 : static_cast<std::uint32_t>(number);
}

bool HasWideSize(const TzZipEntryHeader& entry) { return IsWide(entry.size) || IsWide(entry.packedSize); }

std::uint16_t GetFlags(const std::string& name) {
  const bool isAscii = std::all_of(
      name.begin(), name.end(), [](char character) { return static_cast<unsigned char>(character) < 0x80; });
  return isAscii ? 0 : kUtf8Flag;
}

std::uint16_t GetMethod(const TzZipEntryHeader& entry) { return entry.isDeflated ? kDeflated : kStored; }
std::uint16_t GetVersion(bool isZip64) { return isZip64 ? kZip64Version : kPlainVersion; }

}  // namespace

TzZipWriter::TzZipWriter(TzReplacementFile& archive, std::int64_t time) : file(archive) {
  using namespace std::chrono;
  const sys_seconds earliest = sys_days(1980y / January / 1);
  const sys_seconds latest = sys_days(2107y / December / 31) + 23h + 59min + 58s;
  const sys_seconds clamped = std::clamp(sys_seconds(seconds(time)), earliest, latest);
  const sys_days day = floor<days>(clamped);
  const year_month_day date(day);
  const hh_mm_ss clock(clamped - day);
  dosDate = static_cast<std::uint16_t>(((static_cast<int>(date.year()) - 1980) << 9) |
                                       static_cast<int>(static_cast<unsigned>(date.month()) << 5U) |
                                       static_cast<int>(static_cast<unsigned>(date.day())));
  dosTime = static_cast<std::uint16_t>((clock.hours().count() << 11) | (clock.minutes().count() << 5) |
                                       (clock.seconds().count() / 2));
}

bool TzZipWriter::Add(const TzZipEntryHeader& entry, std::span<const std::byte> packed) {
  const std::uint64_t offset = file.GetSize();
  AddToDirectory(entry, offset);
  return file.Append(MakeLocalHeader(entry)) && file.Append(packed);
}

bool TzZipWriter::Begin(const TzZipEntryHeader& entry) {
  headerOffset = file.GetSize();
  const auto header = MakeLocalHeader(entry);
  dataOffset = headerOffset + header.size();
  return file.Append(header);
}

bool TzZipWriter::End(TzZipEntryHeader entry) {
  // Data is never longer than what it was made of, so this header is as long as the one that holds its place.
  entry.packedSize = file.GetSize() - dataOffset;
  AddToDirectory(entry, headerOffset);
  return file.Overwrite(headerOffset, MakeLocalHeader(entry));
}

std::vector<std::byte> TzZipWriter::MakeLocalHeader(const TzZipEntryHeader& entry) const {
  const bool isWide = HasWideSize(entry);
  std::vector<std::byte> header;
  header.reserve(kLocalHeaderBytes + entry.name.size() + (isWide ? kZip64ExtraBytes : 0));
  Put(header, kLocalHeader, GetVersion(isWide), GetFlags(entry.name), GetMethod(entry), dosTime, dosDate,
      entry.crc, isWide ? kIn32 : Narrow(entry.packedSize), isWide ? kIn32 : Narrow(entry.size),
      static_cast<std::uint16_t>(entry.name.size()), isWide ? kZip64ExtraBytes : std::uint16_t{0});
  PutBytes(header, std::as_bytes(std::span(entry.name)));
  // A local header holds both sizes or none.
  if (isWide) Put(header, kZip64Extra, std::uint16_t{16}, entry.size, entry.packedSize);
  return header;
}

void TzZipWriter::AddToDirectory(const TzZipEntryHeader& entry, std::uint64_t offset) {
  constexpr std::uint16_t kNone = 0;
  std::vector<std::byte> wide;
  for (const std::uint64_t number : {entry.size, entry.packedSize, offset}) {
    if (IsWide(number)) Put(wide, number);
  }
  const std::size_t extraBytes = wide.empty() ? 0 : wide.size() + 2 * sizeof(std::uint16_t);
  Put(directory, kDirectoryHeader, kMadeByUnix, GetVersion(!wide.empty()), GetFlags(entry.name),
      GetMethod(entry), dosTime, dosDate, entry.crc, Narrow(entry.packedSize), Narrow(entry.size),
      static_cast<std::uint16_t>(entry.name.size()), static_cast<std::uint16_t>(extraBytes), kNone, kNone,
      kNone, entry.name.ends_with('/') ? kFolderAttributes : kFileAttributes, Narrow(offset));
  PutBytes(directory, std::as_bytes(std::span(entry.name)));
  if (!wide.empty()) Put(directory, kZip64Extra, static_cast<std::uint16_t>(wide.size()));
  PutBytes(directory, wide);
  ++entryCount;
}

bool TzZipWriter::Finish() {
  constexpr std::uint16_t kFirstDisk = 0;
  constexpr std::uint32_t kFirstDisk32 = 0;
  const std::uint64_t start = file.GetSize();
  const std::uint64_t size = directory.size();
  std::vector<std::byte> end;
  if (IsWide(start) || IsWide(size) || entryCount >= kIn16) {
    constexpr std::uint64_t kRecordBytes = kZip64DirectoryEndBytes - 12;
    Put(end, kZip64DirectoryEnd, kRecordBytes, kMadeByUnix, kZip64Version, kFirstDisk32, kFirstDisk32,
        entryCount, entryCount, size, start);
    Put(end, kZip64Locator, kFirstDisk32, start + size, std::uint32_t{1});
  }
  const auto count = static_cast<std::uint16_t>(std::min<std::uint64_t>(entryCount, kIn16));
  Put(end, kDirectoryEnd, kFirstDisk, kFirstDisk, count, count, Narrow(size), Narrow(start),
      std::uint16_t{0});
  return file.Append(directory) && file.Append(end);
}
