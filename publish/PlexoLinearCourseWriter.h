// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "publish/PlexoManifestWriter.h"

/// Writes the items and resources of a flat course and, in SCORM 2004, the sequencing that makes it free or
/// forced. 0 for success; 1 without the string dictionary or the linear course.
[[nodiscard]] int WriteLinearCourse(PlexoManifestWriter& manifest);
