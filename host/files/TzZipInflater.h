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
/// entry's size. The progress counts packed bytes.
class TzZipInflater {
 public:
  /// Beside other workers each takes its share of the memory.
  TzZipInflater(const TzFileDescriptor& file, TzZipProgress& counter, std::size_t workers = 1);
  TzZipInflater(const TzZipInflater&) = delete;
  TzZipInflater& operator=(const TzZipInflater&) = delete;
  ~TzZipInflater();

  /// Writes the entry's content to the file, which is made or replaced. A failure leaves a file of unknown
  /// content.
  TzZipFailure Unpack(const TzZipEntry& entry, const TzPath& path);
  /// Writes the entry's content to the stream and closes it. A stream that fails ends the unpacking, as a
  /// failure of the machine.
  TzZipFailure Unpack(const TzZipEntry& entry, std::unique_ptr<TzWriteStream> stream);
  /// Unpacks the entry to nowhere, which shows whether its data is what it says.
  TzZipFailure Check(const TzZipEntry& entry);

 private:
  struct Decoder;
  struct Output;

  TzZipFailure Run(const TzZipEntry& entry, Output& output);
  TzZipFailure InflateWhole(const TzZipEntry& entry, Output& output);
  TzZipFailure ReadPieces(const TzZipEntry& entry, Output& output);

  const TzFileDescriptor& archive;
  TzZipProgress& progress;
  /// Up to this size, packed and unpacked, an entry is unpacked in memory in one go.
  std::uint64_t wholeBytes;
  std::unique_ptr<Decoder> decoder;
};
