// SPDX-License-Identifier: Apache-2.0
#include "host/files/TzArchiveLoan.h"

#include <utility>

TzArchiveLoan::TzArchiveLoan(TzPath archive, std::unique_ptr<const TzZipDirectory> opened)
    : path(std::move(archive)),
      directory(std::move(opened)),
      stamp(directory->GetFile().GetStamp()),
      progress({}, directory->GetPackedSize()),
      extractor(*directory, progress) {
  extractor.BeginCheck();
}

TzZipFailure TzArchiveLoan::Confirm(TzZipProgress& waiting) const {
  TzZipFailure failure = extractor.FinishCheck(waiting);
  if (failure.code == kTzCancelled) return failure;
  // Asked last: what was read after it was checked must be the same too.
  if (directory->GetFile().GetStamp() != stamp) {
    failure = {kTzFailure, {}, "changed while it was read; try again", 0};
  }
  failure.source = path;
  return failure;
}
