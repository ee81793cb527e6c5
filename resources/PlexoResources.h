// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "host/files/TzResource.h"

/// The files that are embedded in the component: sheets by their numbers, images by their names.
TzResourceInfo GetPlexoResources();
