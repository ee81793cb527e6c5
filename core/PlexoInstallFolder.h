// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "host/files/TzPath.h"

/// Folders of the install tree, which stands beside the running program. Computed on each call, never made.

/// Wrapper templates, their support files and the tracking scripts.
TzPath GetPlexoInstallFolder();
/// The published schema documents: "1_2/static" and "2004/static/3rd" stand under it.
TzPath GetSchemaInstallFolder();
