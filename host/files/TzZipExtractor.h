// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "host/files/TzArchiveHold.h"
#include "host/files/TzZipDirectory.h"
#include "host/files/TzZipInflater.h"
#include "host/files/TzZipProgress.h"

/// Takes what a checked archive holds, on all cores: unpacked, or packed as it is.
///
/// Guarantees: the data of every entry was checked against its size and CRC-32. Of several failures it
/// returns that of the first entry, in the archive's order, of which one was found. The progress counts
/// packed bytes.
class TzZipExtractor {
 public:
  /// The archive's directory must outlive this.
  TzZipExtractor(const TzZipDirectory& archive, TzZipProgress& counter);
  TzZipExtractor(const TzZipExtractor&) = delete;
  TzZipExtractor& operator=(const TzZipExtractor&) = delete;
  /// Gives up a check that was begun.
  ~TzZipExtractor();

  /// Unpacks everything into the folder, which stands and is empty. A failure leaves what was written.
  TzZipFailure Extract(const TzPath& folder);
  /// Copies the archive, and checks in the copy what has arrived there: whatever happens to the archive
  /// meanwhile, the directory and the copy agree afterwards. The progress counts the copied bytes too.
  TzZipFailure Hold(const TzArchiveHold& hold);
  /// What is done with a file, on any of several threads.
  using Visit = std::function<TzZipFailure(TzZipInflater&, const TzZipEntry&)>;
  /// Visits every file that isn't faulty. One whose content is bad doesn't end it: its failure goes to the
  /// list, in the archive's order.
  [[nodiscard]] TzZipFailure VisitAll(const Visit& visit, std::vector<TzZipFailure>& badFiles);
  /// Begins to check the data of everything where it is, while the caller goes on.
  void BeginCheck();
  /// Waits for the end of that check. The caller's own progress is reported meanwhile, and may stop it.
  [[nodiscard]] TzZipFailure FinishCheck(TzZipProgress& waiting) const;

 private:
  struct Run;

  [[nodiscard]] TzZipFailure MakeFolders(const TzPath& folder) const;
  TzZipFailure CopyInto(const TzFileDescriptor& copy, const TzArchiveHold& hold, Run& run);
  TzZipFailure RunWorkers(Run& run, const std::function<TzZipFailure()>& meanwhile);
  void StartWorkers(Run& run) const;
  /// Until all are done.
  void AwaitWorkers(Run& run, TzZipProgress& waiting) const;
  void Work(Run& run) const;

  const TzZipDirectory& directory;
  TzZipProgress& progress;
  std::unique_ptr<Run> check;
};
