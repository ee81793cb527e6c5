// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <span>
#include <vector>

#include "host/files/TzZipDirectory.h"

class TzZipInflater;
class TzZipProgress;

/// What an archive holds, faults and all, for tools that tell people about an archive instead of unpacking
/// it.
///
/// The rules are those of `TzZipUtils::ExtractFiles`; what breaks one is listed, in the same words, and the
/// rest is still shown. Memory grows with the number of entries, never with what they hold.
class TzZipInspection {
 public:
  /// Takes an entry's content piece by piece.
  using PieceHandler = std::function<void(std::span<const std::byte>)>;

  TzZipInspection();
  TzZipInspection(const TzZipInspection&) = delete;
  TzZipInspection& operator=(const TzZipInspection&) = delete;
  ~TzZipInspection();

  /// Reads the archive's directory; called once. Fails if it has none that can be read.
  [[nodiscard]] TzZipFailure Open(const TzPath& archive);

  /// In the archive's order.
  [[nodiscard]] const std::vector<TzZipEntry>& GetEntries() const { return directory.GetEntries(); }
  [[nodiscard]] const std::vector<TzZipFault>& GetFaults() const { return faults; }

  /// Hands out the content of an entry of this archive, which must not be faulty. What was handed out before
  /// a failure counts for nothing.
  [[nodiscard]] TzZipFailure Read(const TzZipEntry& entry, const PieceHandler& take);

  /// Reads a file for its visitor as `Read` does; with an empty handler, only checks its data.
  using Reader = std::function<TzZipFailure(const PieceHandler& take)>;
  /// May leave the file alone. Returns what its reader returned.
  using Visitor = std::function<TzZipFailure(const TzZipEntry& entry, const Reader& read)>;
  /// Visits every file that isn't faulty, on all cores: the visitor is called from several threads at once.
  /// Goes on behind a file whose content is bad, and adds its failure to the list, in the archive's order.
  [[nodiscard]] TzZipFailure VisitAll(const Visitor& visit, std::vector<TzZipFailure>& badFiles);

 private:
  TzZipDirectory directory;
  std::vector<TzZipFault> faults;
  std::unique_ptr<TzZipProgress> progress;
  std::unique_ptr<TzZipInflater> inflater;
};
