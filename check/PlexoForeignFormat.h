// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

#include "check/PlexoCheckedPackage.h"

/// Packages of formats that people take for SCORM.
class PlexoForeignFormat {
 public:
  /// The format of a package without an imsmanifest.xml, by the files that it has in its place; empty if it
  /// isn't known.
  static std::string_view FindByFiles(const PlexoCheckedPackage& package);
  /// The format of a package whose manifest is of the kind that SCORM uses, by the namespace of its root and
  /// the schema that it names; empty if nothing speaks against SCORM.
  static std::string FindByManifest(const PlexoCheckedPackage& package);
};
