// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <memory>

#include "host/files/TzFileDescriptor.h"
#include "host/files/TzPath.h"

/// A private copy of an archive, from which its entries are read for as long as any of them is needed.
///
/// Guarantees: what happens to the archive that was copied doesn't matter. No file stays open, so that a
/// course may hold any number. The copy goes with its last owner.
class TzArchiveHold {
 public:
  /// The copy will be this file, which doesn't exist yet, in a folder of this process alone.
  explicit TzArchiveHold(TzPath place) : path(std::move(place)) {}
  TzArchiveHold(const TzArchiveHold&) = delete;
  TzArchiveHold& operator=(const TzArchiveHold&) = delete;
  ~TzArchiveHold();

  /// Makes the copy, still empty, for writing and reading. Not open on failure.
  [[nodiscard]] TzFileDescriptor Create() const;
  [[nodiscard]] const TzPath& GetPath() const { return path; }
  /// Opens the copy for reading.
  [[nodiscard]] TzFileDescriptor Open() const;

 private:
  TzPath path;
};

/// An entry of a held archive whose data was checked against its size and CRC-32.
struct TzHeldEntry {
  std::shared_ptr<const TzArchiveHold> hold;
  /// Where the packed data starts in the copy.
  std::uint64_t offset = 0;
  std::uint64_t packedSize = 0;
  std::uint64_t size = 0;
  std::uint32_t crc = 0;
  bool isDeflated = false;
};
