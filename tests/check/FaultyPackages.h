// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "check/PlexoFinding.h"

/// A minimal package with one fault, and what must be found in it: this with what comes of it, and nothing
/// else.
struct FaultyPackage {
  PlexoFindingId id;
  /// A word of the finding's text.
  std::string word;
  std::string archive;
  std::vector<PlexoFindingId> consequences = {};
};

std::vector<FaultyPackage> FaultyArchives();
std::vector<FaultyPackage> FaultyManifests();
std::vector<FaultyPackage> FaultyReferences();
std::vector<FaultyPackage> LongTexts();
/// In FaultyCourses.cpp, as those below.
std::vector<FaultyPackage> FaultySequencing();
std::vector<FaultyPackage> SilentContents();

/// Packages that differ from those above in what matters.
std::vector<std::string> GoodPackages();
