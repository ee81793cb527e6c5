// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <memory>

#include "host/files/TzFileDescriptor.h"
#include "host/files/TzPath.h"

/// An archive from which entries are read for as long as any of them is needed: a private copy, or for a
/// short while the archive itself.
///
/// Guarantees: what happens to an archive that was copied doesn't matter. No copy stays open, so that a
/// course may hold any number. The copy goes with its last owner.
class TzArchiveHold {
 public:
  /// The copy will be this file, which doesn't exist yet, in a folder of this process alone.
  explicit TzArchiveHold(TzPath place) : path(std::move(place)) {}
  /// Not a copy but the archive itself, which is open here.
  explicit TzArchiveHold(const TzFileDescriptor& archive);
  TzArchiveHold(const TzArchiveHold&) = delete;
  TzArchiveHold& operator=(const TzArchiveHold&) = delete;
  ~TzArchiveHold();

  /// Makes the copy, still empty, for writing and reading. Not open on failure.
  [[nodiscard]] TzFileDescriptor Create() const;
  [[nodiscard]] const TzPath& GetPath() const { return path; }
  /// Opens the archive for reading.
  [[nodiscard]] TzFileDescriptor Open() const;
  /// Whether an archive that isn't a copy was written to since it was taken. Not even a copy of what was read
  /// by then can be trusted.
  [[nodiscard]] bool HasChanged() const;

 private:
  /// What every write to a file changes, and its removal or another name doesn't.
  struct Stamp {
    std::int64_t size = -1;
    std::int64_t seconds = 0;
    std::int64_t nanoseconds = 0;

    bool operator==(const Stamp& other) const = default;
  };

  static Stamp GetStamp(const TzFileDescriptor& archive);

  /// Empty if it is no copy.
  TzPath path;
  TzFileDescriptor lent;
  Stamp stamp;
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
