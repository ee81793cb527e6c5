// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <span>

#include "host/files/TzZipProgress.h"
#include "host/files/TzZipSources.h"
#include "host/files/TzZipWriter.h"

/// An entry that is ready to be written.
struct TzPackedEntry {
  TzZipFailure failure;
  TzZipEntryHeader header;
  std::unique_ptr<std::byte[]> data;
};

/// Packs files, one after another; every worker has its own. What doesn't shrink is stored, and a larger file
/// whose beginning doesn't is stored without trying the rest.
///
/// Guarantees: the result depends on the file's content alone.
class TzZipDeflater {
 public:
  /// Up to this size a file is packed in memory.
  static constexpr std::uint64_t kWholeBytes = std::uint64_t{8} << 20U;

  TzZipDeflater();
  TzZipDeflater(const TzZipDeflater&) = delete;
  TzZipDeflater& operator=(const TzZipDeflater&) = delete;
  ~TzZipDeflater();

  /// Packs a file of up to `kWholeBytes`.
  TzPackedEntry PackWhole(const TzZipSource& source);
  /// Packs a file of any size straight into the archive. Called on the calling thread, since it reports.
  TzZipFailure PackStream(const TzZipSource& source, TzZipWriter& writer, TzZipProgress& progress);

 private:
  struct Encoder;
  using TakePiece = std::function<TzZipFailure(std::span<const std::byte> piece, bool isLast)>;

  [[nodiscard]] bool Shrinks(std::span<const std::byte> content);
  TzZipFailure IsWorthDeflating(const TzZipSource& source, bool& isWorth);
  TzZipFailure ForEachPiece(const TzZipSource& source, TzZipProgress& progress, const TakePiece& take);
  TzZipFailure DeflatePieces(const TzZipSource& source, TzZipWriter& writer, TzZipProgress& progress,
                             TzZipEntryHeader& header);
  TzZipFailure StorePieces(const TzZipSource& source, TzZipWriter& writer, TzZipProgress& progress,
                           TzZipEntryHeader& header);

  std::unique_ptr<Encoder> encoder;
};
