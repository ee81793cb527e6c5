// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

#include "check/PlexoFinding.h"
#include "check/PlexoPlayExtent.h"
#include "host/files/TzPath.h"
#include "host/session/TzErrorCode.h"

struct PlexoCheckResult {
  /// `kTzSuccess`; `kTzMachineFailure` if the package couldn't be read for a fault of the machine, or
  /// `kTzCancelled`: nothing is known of the package then.
  TzErrorCodeEnum code = kTzSuccess;
  /// What the machine said.
  std::string failure;
  /// By id, then line.
  std::vector<PlexoFinding> findings;
  PlexoPlayExtent play;
};

/// Says whether a SCORM package (SCORM 1.2, SCORM 2004) will work.
///
/// Guarantees: nothing of the package is trusted, and nothing is written outside the process's temporary
/// folders. Every file is read, on all cores, and checked against its CRC-32, but only piece by piece: memory
/// grows with the manifest and the number of files, never with their sizes. The same package gives the same
/// findings in the same order.
class PlexoPackageChecker {
 public:
  /// The folder of the published schema documents: "1_2/static" and "2004/static/3rd" stand under it.
  explicit PlexoPackageChecker(TzPath schemas) : schemaFolder(std::move(schemas)) {}

  [[nodiscard]] PlexoCheckResult Check(const TzPath& package) const;

 private:
  TzPath schemaFolder;
};
