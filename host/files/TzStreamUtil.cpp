// SPDX-License-Identifier: Apache-2.0
#include "host/files/TzStreamUtil.h"

#include <cerrno>

#include "host/session/TzProblem.h"

std::unique_ptr<TzReadStream> TzStreamUtil::CreateFileStreamRead(const TzFile& file) {
  return TzFileSystem::Current().OpenRead(file.GetPath());
}

std::unique_ptr<TzWriteStream> TzStreamUtil::CreateFileStreamWrite(const TzFile& file, int /*mode*/,
                                                                   std::uint32_t /*creator*/,
                                                                   std::uint32_t /*type*/) {
  auto stream = TzFileSystem::Current().OpenWrite(file.GetPath());
  if (stream == nullptr) TzReportSystemProblem(errno, file.GetPath().GetNative(), "can't write");
  return stream;
}
