// SPDX-License-Identifier: Apache-2.0
#include "host/files/TzArchiveHold.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

TzArchiveHold::TzArchiveHold(const TzFileDescriptor& archive)
    : lent(archive.Duplicate()), stamp(GetStamp(archive)) {}

TzArchiveHold::~TzArchiveHold() {
  if (path.IsEmpty()) return;
  const int error = errno;
  unlink(path.GetNative().c_str());
  errno = error;
}

TzFileDescriptor TzArchiveHold::Create() const {
  constexpr mode_t kPrivateFile = 0600;
  return TzFileDescriptor(
      open(path.GetNative().c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, kPrivateFile));
}

bool TzArchiveHold::HasChanged() const { return path.IsEmpty() && GetStamp(lent) != stamp; }

TzArchiveHold::Stamp TzArchiveHold::GetStamp(const TzFileDescriptor& archive) {
  struct stat status = {};
  if (fstat(archive.Get(), &status) != 0) return {};
  return {status.st_size, status.st_mtim.tv_sec, status.st_mtim.tv_nsec};
}

TzFileDescriptor TzArchiveHold::Open() const {
  if (path.IsEmpty()) return lent.Duplicate();
  return TzFileDescriptor(open(path.GetNative().c_str(), O_RDONLY | O_CLOEXEC));
}
