// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>

#include "check/PlexoCheckedPackage.h"
#include "check/PlexoContentReading.h"
#include "check/PlexoFindingList.h"
#include "check/PlexoScriptWords.h"

/// What the scripts of a package's content hold. Looks at JavaScript and HTML; what other files do isn't
/// seen. Of a launch page of ours, which can say everything, only its settings count, and the content that
/// they name.
class PlexoScriptIndex {
 public:
  PlexoScriptIndex(const PlexoCheckedPackage& checked, const PlexoContentReading& reading);
  /// Reads the scripts of the package. One that is damaged is a finding.
  PlexoScriptIndex(PlexoCheckedPackage& checked, PlexoFindingList& findings);

  /// What kept the scripts from being read: a fault of the machine, or a stop that was asked for.
  [[nodiscard]] const TzZipFailure& GetFailure() const { return failure; }

  /// What the resource's files hold: those it lists, those of its dependencies, and all in the folder of its
  /// launch file, for many manifests list a part only.
  [[nodiscard]] PlexoScriptWords GetWordsOf(const PlexoResource& resource) const;
  /// The same where the launch file is known, and the reference to it may not be right.
  [[nodiscard]] PlexoScriptWords GetWordsOf(const PlexoResource& resource,
                                            const TzZipEntry& launchFile) const;
  /// What the files hold that the resource itself lists.
  [[nodiscard]] PlexoScriptWords GetListedWords(const PlexoResource& resource) const;
  /// True if all scripts of the resource were looked at: it is in the package, and the package could be read.
  [[nodiscard]] bool Knows(const PlexoResource& resource) const;

 private:
  void AddScripts(const std::vector<PlexoScript>& scripts);
  [[nodiscard]] bool IsWrapperScript(const TzZipEntry& entry) const;
  [[nodiscard]] PlexoScriptWords GetWordsBelow(std::string_view folder) const;
  void AddFile(const TzZipEntry& entry, PlexoScriptWords words);
  void AddDependencies();

  const PlexoCheckedPackage& package;
  bool isRead = false;
  TzZipFailure failure;
  std::unordered_map<const TzZipEntry*, PlexoScriptWords> byFile;
  /// The folder of the content behind each launch page, by that of the launch page.
  std::unordered_map<std::string, std::string> contentFolders;
  /// What the files of a resource and of its dependencies hold.
  std::unordered_map<const PlexoResource*, PlexoScriptWords> byResource;
  /// What all files below a folder hold.
  std::unordered_map<std::string_view, PlexoScriptWords> byFolder;
  /// The same for the top of the package, below which everything is.
  PlexoScriptWords atTop;
};
