// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "adopt/PlexoAdoptFindings.h"
#include "adopt/PlexoAdoptedPackage.h"
#include "adopt/PlexoAdoptedSCO.h"
#include "adopt/PlexoAdopter.h"
#include "adopt/PlexoContentLinks.h"
#include "adopt/PlexoFileShares.h"
#include "adopt/PlexoLaunchableItems.h"
#include "adopt/PlexoPackageLayout.h"
#include "check/PlexoCheckedPackage.h"
#include "check/PlexoScriptIndex.h"

/// Decides what a package becomes, step by step; each step's changes are findings. Reads the archive's
/// directory, the manifest and the scripts, of a package of several items also pages and style sheets; writes
/// nothing.
class PlexoExamination {
 public:
  /// `launchFileNames` are the names of the launch page's files within their folder.
  PlexoExamination(const PlexoAdoptRequest& adoptRequest, std::vector<std::string> launchFileNames)
      : request(adoptRequest), launchFiles(std::move(launchFileNames)) {}
  PlexoExamination(const PlexoExamination&) = delete;
  PlexoExamination& operator=(const PlexoExamination&) = delete;

  /// Called once. `kTzBadContent` if the package can't be adopted, with an error among the findings; with
  /// another code, `failure` is what the machine said.
  [[nodiscard]] TzErrorCodeEnum Run(std::string& failure);

  /// What the package becomes, in the order of its items.
  [[nodiscard]] const std::vector<PlexoAdoptedSCO>& GetSCOs() const { return scos; }
  /// The files that the SCO of this index needs, and where they go.
  [[nodiscard]] std::vector<PlexoAdoptedFile> GetFiles(std::size_t index) const;
  [[nodiscard]] PlexoAdoptFindings& GetFindings() { return findings; }

 private:
  [[nodiscard]] TzErrorCodeEnum OpenArchive();
  [[nodiscard]] TzErrorCodeEnum ReadManifest();
  [[nodiscard]] TzErrorCodeEnum CheckManifest();
  [[nodiscard]] TzErrorCodeEnum FindEditions();
  [[nodiscard]] TzErrorCodeEnum ChooseItems();
  [[nodiscard]] TzErrorCodeEnum ReadScripts();
  [[nodiscard]] TzErrorCodeEnum MakeSCOs();
  [[nodiscard]] TzErrorCodeEnum ReadLinks();
  [[nodiscard]] TzErrorCodeEnum ShareFiles();
  /// The packages of all items that are taken hold at most so many bytes.
  [[nodiscard]] bool FitTogether(std::uint64_t most) const;
  void TellGrowth(std::uint64_t source, std::uint64_t together);
  [[nodiscard]] TzErrorCodeEnum Refuse(PlexoFindingId id, const std::vector<std::string>& words);
  [[nodiscard]] TzErrorCodeEnum Take(const TzZipFailure& problem);

  /// Takes out the items that launch something else than content: the manifest, or what a system left behind.
  void LeaveOutItemsOutsideContent();

  const PlexoAdoptRequest& request;
  std::vector<std::string> launchFiles;
  PlexoAdoptFindings findings;
  std::string failureText;
  PlexoCheckedPackage package;
  const TzZipEntry* manifestEntry = nullptr;
  std::optional<PlexoPackageLayout> layout;
  /// What the manifest says the package is, and what its content is made for: they differ behind a launch
  /// page.
  PlexoCourseEdition manifestEdition = PlexoCourseEdition::Scorm2004;
  PlexoCourseEdition contentEdition = PlexoCourseEdition::Scorm2004;
  /// Of all the package's launchable items, those that are taken.
  std::vector<PlexoLaunchable> launchables;
  std::vector<PlexoLaunchable> taken;
  /// None if it doesn't matter what they report.
  std::optional<PlexoScriptIndex> scripts;
  /// None for a single item, whose package holds everything.
  std::optional<PlexoContentLinks> links;
  std::optional<PlexoFileShares> shares;
  std::vector<PlexoAdoptedSCO> scos;
};
