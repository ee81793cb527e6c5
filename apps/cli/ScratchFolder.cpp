// SPDX-License-Identifier: Apache-2.0
#include "apps/cli/ScratchFolder.h"

#include "host/files/TzFileUtil.h"

std::optional<TzPath> MakeScratchFolder(const char* stem) {
  TzPath folder = TzFileUtil::CreateTempDir(stem);
  return folder.IsEmpty() ? std::nullopt : std::optional(std::move(folder));
}
