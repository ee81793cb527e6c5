// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "core/PlexoCourseModel.h"
#include "publish/PlexoManifestTree.h"

/// The course's record in the manifest's metadata for SCORM 2004 3rd Edition (IEEE 1484.12.3 LOM). Title,
/// description and subject have defaults; version and duration depend on their enable flags.
void WriteScorm2004Metadata(PlexoManifestTree& tree, TzDOMNode metadata, const PlexoCourseModel& course);
