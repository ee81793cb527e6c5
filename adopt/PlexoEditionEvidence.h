// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>

#include "adopt/PlexoCourseEdition.h"
#include "check/PlexoCheckedPackage.h"

/// The edition of SCORM that a package was made for, whatever its manifest's version says: makers agree on
/// little else.
class PlexoEditionEvidence {
 public:
  /// By the schemaversion; where that tells none by the namespaces, then by the spelling of the resources'
  /// SCORM type, last by the version. None if nothing tells.
  static std::optional<PlexoCourseEdition> Find(const PlexoCheckedPackage& package);
};
