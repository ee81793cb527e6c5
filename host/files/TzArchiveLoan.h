// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>

#include "host/files/TzArchiveHold.h"
#include "host/files/TzZipDirectory.h"
#include "host/files/TzZipExtractor.h"
#include "host/files/TzZipProgress.h"

/// An archive that is read where it is, while all cores check its data.
///
/// Guarantees: what `Confirm` confirms was the same at every reading since the loan began, and every entry
/// agrees with its size and CRC-32. The check ends with the loan.
class TzArchiveLoan final : public TzArchiveHold {
 public:
  /// Begins to check the archive whose directory this is.
  TzArchiveLoan(TzPath archive, std::unique_ptr<const TzZipDirectory> opened);

  [[nodiscard]] TzFileDescriptor Open() const override { return directory->GetFile().Duplicate(); }
  /// Waits for the check. A failure names the archive.
  [[nodiscard]] TzZipFailure Confirm(TzZipProgress& waiting) const override;

  [[nodiscard]] const TzZipDirectory& GetDirectory() const { return *directory; }

 private:
  TzPath path;
  std::unique_ptr<const TzZipDirectory> directory;
  TzFileDescriptor::Stamp stamp;
  /// Told to nobody: whoever waits has a progress to tell.
  TzZipProgress progress;
  TzZipExtractor extractor;
};
