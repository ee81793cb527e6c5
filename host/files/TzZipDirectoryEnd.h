// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "host/files/TzFileDescriptor.h"
#include "host/files/TzZipFailure.h"

/// Where the central directory of an archive lies in its file.
struct TzZipDirectoryPlace {
  std::uint64_t start = 0;
  std::uint64_t size = 0;
  std::uint64_t count = 0;
  /// What stands before the archive in the file, and is left out of its offsets.
  std::uint64_t prefixBytes = 0;
};

/// The records at the end of an archive, which say where its directory lies: the plain one, and that of ZIP64
/// with its locator.
namespace TzZipDirectoryEnd {

inline constexpr const char* kNoArchive = "isn't a ZIP archive, or is cut short";
inline constexpr const char* kDamagedDirectory = "its directory is damaged";
inline constexpr const char* kSeveralDisks = "is one of several disks";

/// Fails if there are no such records, if they contradict each other, and for an archive of several disks.
/// Throws `std::system_error` if the system can't read.
TzZipFailure Find(const TzFileDescriptor& file, std::uint64_t fileSize, TzZipDirectoryPlace& place);

/// Exactly this part of the file; empty if the file ends before. Throws `std::system_error` if the system
/// can't read.
std::vector<std::byte> ReadPart(const TzFileDescriptor& file, std::uint64_t offset, std::size_t size);

}  // namespace TzZipDirectoryEnd
