// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "core/PlexoSCOModel.h"

/// A record of a SCO of this name, with nothing behind it.
PlexoSCOModel MakeSCO(const std::string& name);
std::vector<std::string> NamesOf(const std::vector<PlexoSCOModel>& scos);

/// Puts SCOs into the process's flat course as intake would leave them, without a package: each with its
/// files in the working folder and its record in the models.
class StagedCourse {
 public:
  /// The record of a SCO of this name with the launch page "index.htm", for a test to change before it is
  /// added.
  static PlexoSCOManifest Manifest(const std::string& name);
  /// Writes the listed files and those of `strays`, each holding its own name, and adds the SCO.
  static void AddLinear(PlexoSCOManifest manifest, const std::vector<std::string>& strays = {});
  /// Adds `count` SCOs "sco1", "sco2" ...
  static void AddLinearSCOs(int count);
  /// Adds a module with these contents, a post-test "post" and, where the course's template has them, a
  /// pretest "pre".
  static void AddModule(const std::string& key, const std::string& title, int contents);
};
