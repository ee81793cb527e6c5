// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

#include "core/PlexoLinearCourseModel.h"
#include "core/PlexoModuleCourseModel.h"

/// Takes SCOs out of the course with everything that belongs to them: first the record in the list of all
/// SCOs, then the folder, last the entry in its model. A folder that can't be deleted holds up nothing; it
/// goes when the next course begins.
///
/// The course is dirty afterwards, unless nothing is left of it. Costs about the logarithm of the size of the
/// course for each SCO removed, and one pass for a list of them.
class PlexoSCORemoval {
 public:
  /// Indices as they stand before the removal. Of one out of range nothing is removed.
  static void RemoveLinearSCOs(PlexoLinearCourseModel& course, const std::vector<int>& indices);
  /// A course that lost contents is dirty in any case.
  static void RemoveContentSCOs(PlexoModuleCourseModel& course, const TzString& moduleKey,
                                const std::vector<int>& indices);
  // Likewise; an empty slot stays so.
  static void RemovePreTest(PlexoModuleCourseModel& course, const TzString& moduleKey);
  static void RemovePostTest(PlexoModuleCourseModel& course, const TzString& moduleKey);
  static void RemoveModule(PlexoModuleCourseModel& course, const TzString& moduleKey);
};
