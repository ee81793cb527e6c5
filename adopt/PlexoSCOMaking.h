// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "adopt/PlexoAdoptFindings.h"
#include "adopt/PlexoAdoptedSCO.h"
#include "adopt/PlexoAdopter.h"
#include "adopt/PlexoLaunchableItems.h"
#include "adopt/PlexoMetadataFiles.h"
#include "adopt/PlexoPackageLayout.h"
#include "check/PlexoCheckedPackage.h"
#include "check/PlexoScriptIndex.h"

/// Makes the SCOs that a package becomes out of what it says about them. What differs is a finding.
class PlexoSCOMaking {
 public:
  /// What is known about the package as a whole.
  struct Task {
    const PlexoAdoptRequest& request;
    PlexoCourseEdition manifestEdition;
    PlexoCourseEdition contentEdition;
    /// Nothing else of the package can be launched, so that what is said about the package is said about it.
    bool isOnly;
  };

  PlexoSCOMaking(const PlexoCheckedPackage& checked, const PlexoPackageLayout& packageLayout,
                 const Task& given, PlexoAdoptFindings& adoptFindings)
      : package(checked),
        layout(packageLayout),
        task(given),
        findings(adoptFindings),
        metadataFiles(checked) {}

  /// `scripts` is null if it doesn't matter what they report.
  [[nodiscard]] PlexoAdoptedSCO Make(const PlexoLaunchable& launchable, const PlexoScriptIndex* scripts);

 private:
  [[nodiscard]] std::string MakeLaunchAddress(const PlexoLaunchable& launchable);
  void AddLaunchPageFindings(const PlexoAdoptedSCO& sco);
  /// Adds that the SCO may keep closed what waits for it.
  void AddDoubts(const PlexoLaunchable& launchable, const PlexoScriptIndex& scripts,
                 const PlexoAdoptedSCO& sco);
  void CheckVersion(const PlexoAdoptedSCO& sco);

  const PlexoCheckedPackage& package;
  const PlexoPackageLayout& layout;
  Task task;
  PlexoAdoptFindings& findings;
  PlexoMetadataFiles metadataFiles;
};
