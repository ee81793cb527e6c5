// SPDX-License-Identifier: Apache-2.0
#include "host/files/TzArchiveHold.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

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

TzFileDescriptor TzArchiveHold::Open() const {
  return TzFileDescriptor(open(path.GetNative().c_str(), O_RDONLY | O_CLOEXEC));
}

TzZipFailure TzArchiveHold::Confirm(TzZipProgress& /*waiting*/) const { return {}; }
