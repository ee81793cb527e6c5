// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "adopt/PlexoAdoptFindings.h"
#include "adopt/PlexoLaunchSettings.h"
#include "check/PlexoCheckedPackage.h"

/// Where the files of a package lie, and where they go: the content under one folder of its own, so that
/// nothing of it is taken for a manifest, a schema document or a stray.
class PlexoPackageLayout {
 public:
  static constexpr const char* kContentFolder = "content/";

  /// The manifest of the package; null, with a finding, if there is none or it can't be told.
  static const TzZipEntry* FindManifest(const PlexoCheckedPackage& package, PlexoFindingList& findings);

  /// The package was indexed for this manifest, which is of this edition. `launchFiles` are the names of the
  /// launch page's files within their folder.
  PlexoPackageLayout(PlexoCheckedPackage& checked, const TzZipEntry& manifestEntry,
                     PlexoCourseEdition manifestEdition, const std::vector<std::string>& launchFiles,
                     PlexoAdoptFindings& adoptFindings);

  /// The files of the content, in the archive's order: without manifest, unlisted schema documents, launch
  /// page and what a system left behind.
  [[nodiscard]] const std::vector<const TzZipEntry*>& GetContent() const { return content; }
  /// Where a file of the content goes: "content/index.htm".
  [[nodiscard]] std::string GetTarget(const TzZipEntry& file) const;
  /// What the launch page says that an earlier adoption put in front of the content; none without.
  [[nodiscard]] const std::optional<PlexoLaunchSettings>& GetLaunchSettings() const { return settings; }
  /// The content's page that such a launch page launches.
  [[nodiscard]] const TzZipEntry* GetLaunchedPage() const { return launchedPage; }

 private:
  void Sort(const TzZipEntry& manifestEntry);
  [[nodiscard]] std::unordered_set<const TzZipEntry*> GetListed() const;
  [[nodiscard]] bool IsSchemaDocument(std::string_view name) const;
  /// The package is as an adoption writes it: nothing stands outside the content but what is written anew.
  [[nodiscard]] bool IsInPlace(const std::vector<std::string>& launchFiles) const;
  [[nodiscard]] bool IsMetadataFile(const TzZipEntry& file) const;
  void ReadLaunchSettings();

  PlexoCheckedPackage& package;
  PlexoAdoptFindings& findings;
  PlexoCourseEdition edition;
  /// Of the manifest, with a slash; empty at the top.
  std::string manifestFolder;
  /// What is cut off the names of the content.
  std::string root;
  std::vector<const TzZipEntry*> content;
  std::optional<PlexoLaunchSettings> settings;
  const TzZipEntry* launchedPage = nullptr;
};
