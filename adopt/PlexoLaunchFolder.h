// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "host/files/TzPath.h"
#include "host/session/TzErrorCode.h"

/// The files of the launch page, as they are installed.
class PlexoLaunchFolder {
 public:
  /// Adds the names of all files below the folder, relative to it.
  [[nodiscard]] static TzErrorCodeEnum List(const TzPath& folder, std::vector<std::string>& names);
};
