// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>

#include "host/files/TzZipDirectory.h"
#include "host/files/TzZipProgress.h"

/// Unpacks entries of a checked archive in parallel.
class TzZipExtractor {
 public:
  /// The archive's directory must outlive this.
  TzZipExtractor(const TzZipDirectory& archive, TzZipProgress& counter)
      : directory(archive), progress(counter) {}

  /// Unpacks everything into the folder, which stands and is empty. Of several failures it returns that of
  /// the first entry in the archive's order. What was written stays.
  TzZipFailure Extract(const TzPath& folder);

 private:
  struct Run;

  [[nodiscard]] TzZipFailure MakeFolders(const TzPath& folder) const;
  void Work(Run& run) const;

  const TzZipDirectory& directory;
  TzZipProgress& progress;
};
