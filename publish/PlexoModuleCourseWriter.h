// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "publish/PlexoManifestWriter.h"

/// Writes the items, resources and sequencing of a module course (SCORM 2004 3rd Edition, IMS Simple
/// Sequencing 1.0). Every module must be complete, and the weightages must add up to 1.0.
///
/// In a course of content and post-tests a post-test opens when its module's content is done, and the
/// course's result comes from the post-tests. In a course with pretests, a learner who passes a module's
/// pretest skips the rest of the module. 0 for success; 1 without the string dictionary or the module course.
[[nodiscard]] int WriteModuleCourse(PlexoManifestWriter& manifest, PlexoCourseType courseType);
