// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <unordered_map>
#include <unordered_set>

#include "check/PlexoCheckedPackage.h"
#include "check/PlexoFindingList.h"

/// Which files of a package its pages and style sheets refer to, by the addresses that they state.
class PlexoContentLinks {
 public:
  using Files = std::unordered_set<const TzZipEntry*>;

  /// Reads every page and style sheet of the package once, piece by piece. One that is damaged is a finding.
  PlexoContentLinks(PlexoCheckedPackage& checked, PlexoFindingList& findings);

  /// What kept a file from being read: a fault of the machine, or a stop that was asked for.
  [[nodiscard]] const TzZipFailure& GetFailure() const { return failure; }

  /// These files, and all that they refer to, directly or through other files, but for `closed`. What is met
  /// of those is put into `met`.
  [[nodiscard]] Files GetReached(Files start, const Files& closed, Files& met) const;

 private:
  void ReadFile(PlexoCheckedPackage& checked, const TzZipEntry& file, PlexoFindingList& findings);

  TzZipFailure failure;
  std::unordered_map<const TzZipEntry*, Files> links;
};
