// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <memory>

#include "host/files/TzFileSystem.h"
#include "host/files/TzZipDirectory.h"
#include "host/files/TzZipProgress.h"

/// Unpacks entries of an archive, one after another; every worker has its own.
///
/// Guarantees: uses a bounded amount of memory, whatever the entries hold, and never writes more than an
/// entry's size.
class TzZipInflater {
 public:
  TzZipInflater(const TzFileDescriptor& file, TzZipProgress& counter);
  TzZipInflater(const TzZipInflater&) = delete;
  TzZipInflater& operator=(const TzZipInflater&) = delete;
  ~TzZipInflater();

  /// Writes the entry's content to the file, which is made or replaced. A failure leaves a file of unknown
  /// content.
  TzZipFailure Unpack(const TzZipEntry& entry, const TzPath& path);
  /// Writes the entry's content to the stream and closes it. A stream that fails ends the unpacking, as a
  /// failure of the machine.
  TzZipFailure Unpack(const TzZipEntry& entry, std::unique_ptr<TzWriteStream> stream);

 private:
  struct Decoder;
  struct Output;

  TzZipFailure InflateWhole(const TzZipEntry& entry, Output& output);
  TzZipFailure InflateStream(const TzZipEntry& entry, Output& output);
  TzZipFailure CopyStored(const TzZipEntry& entry, Output& output);
  TzZipFailure ReadPacked(const TzZipEntry& entry, std::uint64_t position, std::span<std::byte> bytes) const;

  const TzFileDescriptor& archive;
  TzZipProgress& progress;
  std::unique_ptr<Decoder> decoder;
};
