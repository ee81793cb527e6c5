// SPDX-License-Identifier: Apache-2.0
#include "host/files/TzZipDirectoryEnd.h"

#include <algorithm>
#include <cerrno>
#include <optional>
#include <span>
#include <system_error>

#include "host/files/TzZipFormat.h"

using namespace TzZipFormat;
using namespace TzZipDirectoryEnd;

namespace {

using Bytes = std::span<const std::byte>;

/// Looks for the end of the directory: its comment must reach exactly to the end of the file.
std::optional<std::size_t> FindDirectoryEnd(Bytes tail) {
  if (tail.size() < kDirectoryEndBytes) return std::nullopt;
  for (std::size_t at = tail.size() - kDirectoryEndBytes + 1; at-- > 0;) {
    if (Get32(tail, at) != kDirectoryEnd) continue;
    if (at + kDirectoryEndBytes + Get16(tail, at + 20) == tail.size()) return at;
  }
  return std::nullopt;
}

/// The fields of the directory's end, of either form.
struct DirectoryEnd {
  std::uint64_t position = 0;
  std::uint64_t disk = 0;
  std::uint64_t startDisk = 0;
  std::uint64_t countHere = 0;
  std::uint64_t count = 0;
  std::uint64_t size = 0;
  std::uint64_t offset = 0;
};

/// Where the ZIP64 form of the directory's end is, by what its locator says.
struct Zip64Place {
  std::uint64_t told = 0;
  std::uint64_t found = 0;
};

/// The record is just before its locator. Something before the archive in the file isn't counted in the
/// offset that the locator tells; nothing if there is no such record.
std::optional<std::vector<std::byte>> FindZip64Record(const TzFileDescriptor& file, std::uint64_t locatorAt,
                                                      Zip64Place& place) {
  constexpr std::uint64_t kUncountedBytes = 12;
  const auto read = [&](std::uint64_t at) {
    std::vector<std::byte> record = ReadPart(file, at, kZip64DirectoryEndBytes);
    const bool isRecord = !record.empty() && Get32(record, 0) == kZip64DirectoryEnd &&
                          Get64(record, 4) == locatorAt - at - kUncountedBytes;
    return isRecord ? std::optional(std::move(record)) : std::nullopt;
  };
  if (locatorAt < kZip64DirectoryEndBytes) return std::nullopt;
  const std::uint64_t last = locatorAt - kZip64DirectoryEndBytes;
  for (const std::uint64_t at : {std::min(place.told, last), last}) {
    place.found = at;
    if (auto record = read(at)) return record;
  }
  return std::nullopt;
}

/// Reads the ZIP64 form if its locator is before the plain one. Null, or what is wrong: the form is missing,
/// or differs from the plain one where that has a value of its own.
const char* ReadZip64End(const TzFileDescriptor& file, DirectoryEnd& end, Zip64Place& place) {
  if (end.position < kZip64LocatorBytes) return nullptr;
  const std::uint64_t locatorAt = end.position - kZip64LocatorBytes;
  const auto locator = ReadPart(file, locatorAt, kZip64LocatorBytes);
  if (locator.empty()) return kDamagedDirectory;
  if (Get32(locator, 0) != kZip64Locator) return nullptr;
  if (Get32(locator, 4) != 0 || Get32(locator, 16) > 1) return kSeveralDisks;
  place.told = Get64(locator, 8);
  const auto record = FindZip64Record(file, locatorAt, place);
  if (!record) return kDamagedDirectory;
  const DirectoryEnd wide = {place.found,        Get32(*record, 16), Get32(*record, 20), Get64(*record, 24),
                             Get64(*record, 32), Get64(*record, 40), Get64(*record, 48)};
  const auto agree = [](std::uint64_t plain, std::uint64_t mark, std::uint64_t other) {
    return plain == mark || plain == other;
  };
  if (!agree(end.disk, kIn16, wide.disk) || !agree(end.startDisk, kIn16, wide.startDisk))
    return kSeveralDisks;
  const bool agrees = agree(end.countHere, kIn16, wide.countHere) && agree(end.count, kIn16, wide.count) &&
                      agree(end.size, kIn32, wide.size) && agree(end.offset, kIn32, wide.offset);
  end = wide;
  return agrees ? nullptr : kDamagedDirectory;
}

}  // namespace

TzZipFailure TzZipDirectoryEnd::Find(const TzFileDescriptor& file, std::uint64_t fileSize,
                                     TzZipDirectoryPlace& place) {
  constexpr std::uint64_t kMostTailBytes = kDirectoryEndBytes + 0xFFFF;
  const std::uint64_t tailBytes = std::min(fileSize, kMostTailBytes);
  const auto tail = ReadPart(file, fileSize - tailBytes, tailBytes);
  const auto at = FindDirectoryEnd(tail);
  if (!at.has_value()) return TzZipFailure::BadContent({}, kNoArchive);
  const Bytes fields = Bytes(tail).subspan(*at);
  DirectoryEnd end = {fileSize - tailBytes + *at, Get16(fields, 4),  Get16(fields, 6), Get16(fields, 8),
                      Get16(fields, 10),          Get32(fields, 12), Get32(fields, 16)};
  Zip64Place wide;
  if (const char* fault = ReadZip64End(file, end, wide)) return TzZipFailure::BadContent({}, fault);
  if (end.disk != 0 || end.startDisk != 0 || end.countHere != end.count) {
    return TzZipFailure::BadContent({}, kSeveralDisks);
  }
  if (end.size > end.position || end.offset > end.position - end.size) {
    return TzZipFailure::BadContent({}, kNoArchive);
  }
  const std::uint64_t start = end.position - end.size;
  place = {start, end.size, end.count, start - end.offset};
  // What stands before the archive moves the record as it moves the directory.
  if (wide.found != 0 && wide.found - place.prefixBytes != wide.told) {
    return TzZipFailure::BadContent({}, kDamagedDirectory);
  }
  return {};
}

std::vector<std::byte> TzZipDirectoryEnd::ReadPart(const TzFileDescriptor& file, std::uint64_t offset,
                                                   std::size_t size) {
  std::vector<std::byte> part(size);
  const std::ptrdiff_t count = file.ReadAt(offset, part);
  if (count < 0) throw std::system_error(errno, std::generic_category());
  if (count != static_cast<std::ptrdiff_t>(size)) part.clear();
  return part;
}
