// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

#include "adopt/PlexoCourseEdition.h"

/// The names of the published schema documents of SCORM 1.2 and SCORM 2004, which makers copy into packages.
class PlexoSchemaNames {
 public:
  /// True for a document of this name, counted from the manifest's folder. Letters count in either case. Only
  /// packages of SCORM 2004 have folders of them.
  static bool Has(std::string_view name, PlexoCourseEdition edition);
};
