// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>

#include "host/files/TzPath.h"

/// A new folder for temporary files, deleted with the session. None, with a problem reported, if none can be
/// made: a name appended to an empty path would be one of the user's own files.
std::optional<TzPath> MakeScratchFolder(const char* stem);
