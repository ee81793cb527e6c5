// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "host/files/TzFileUtil.h"

/// A temporary folder that goes with this object. Its path is empty if none could be made.
class PlexoScratchFolder {
 public:
  explicit PlexoScratchFolder(const char* stem) : path(TzFileUtil::CreateTempDir(stem)) {}
  ~PlexoScratchFolder() {
    if (!path.IsEmpty()) TzFileUtil::DeleteDirectory(path, true);
  }
  PlexoScratchFolder(const PlexoScratchFolder&) = delete;
  PlexoScratchFolder& operator=(const PlexoScratchFolder&) = delete;

  [[nodiscard]] const TzPath& GetPath() const { return path; }

 private:
  TzPath path;
};
