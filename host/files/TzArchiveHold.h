// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <memory>

#include "host/files/TzFileDescriptor.h"
#include "host/files/TzPath.h"
#include "host/files/TzZipFailure.h"

class TzZipProgress;

/// An archive from which entries are read for as long as any of them is needed: a private copy, or for a
/// short while the archive itself (`TzArchiveLoan`).
///
/// Guarantees: what happens to an archive that was copied doesn't matter. No copy stays open, so that a
/// course may hold any number. The copy goes with its last owner.
class TzArchiveHold {
 public:
  /// The copy will be this file, which doesn't exist yet, in a folder of this process alone.
  explicit TzArchiveHold(TzPath place) : path(std::move(place)) {}
  TzArchiveHold(const TzArchiveHold&) = delete;
  TzArchiveHold& operator=(const TzArchiveHold&) = delete;
  virtual ~TzArchiveHold();

  /// Makes the copy, still empty, for writing and reading. Not open on failure.
  [[nodiscard]] TzFileDescriptor Create() const;
  [[nodiscard]] const TzPath& GetPath() const { return path; }
  /// Opens the archive for reading.
  [[nodiscard]] virtual TzFileDescriptor Open() const;
  /// Fails if what was read from the archive so far can't be trusted. May wait to know, and then reports to
  /// the sink of `waiting`, which may stop it.
  [[nodiscard]] virtual TzZipFailure Confirm(TzZipProgress& waiting) const;

 protected:
  /// No copy.
  TzArchiveHold() = default;

 private:
  /// Empty if it is no copy.
  TzPath path;
};

/// An entry of a held archive whose data was checked against its size and CRC-32, or will have been when the
/// hold confirms it.
struct TzHeldEntry {
  std::shared_ptr<const TzArchiveHold> hold;
  /// Where the packed data starts in the copy.
  std::uint64_t offset = 0;
  std::uint64_t packedSize = 0;
  std::uint64_t size = 0;
  std::uint32_t crc = 0;
  bool isDeflated = false;
};
