// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "core/PlexoCourseModel.h"
#include "publish/PlexoManifestTree.h"

/// The course's record in the manifest's metadata for SCORM 1.2 (IMS Learning Resource Metadata 1.2.1). All
/// details are written, those without a text as empty elements; only the title has a default.
void WriteScorm12Metadata(PlexoManifestTree& tree, TzDOMNode metadata, const PlexoCourseModel& course);
