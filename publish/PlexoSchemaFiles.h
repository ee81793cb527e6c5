// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "core/PlexoCourseModel.h"

/// Copies the published schema documents of the course's version from the install tree to the top of the
/// working folder: for "2004" all that the install tree holds of it, else the four named files, up to the
/// first that can't be copied. 0 for success, else 1; what was copied stays.
[[nodiscard]] int CopySchemaFiles(const PlexoCourseModel& course);
