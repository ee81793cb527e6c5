// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <set>
#include <string>
#include <vector>

#include "adopt/PlexoAdoptedSCO.h"
#include "host/files/TzPath.h"
#include "host/session/TzErrorCode.h"

/// A file of the source, and where it stands in the adopted package.
struct PlexoAdoptedFile {
  const TzZipEntry* source = nullptr;
  std::string target;
};

/// Puts adopted packages together in a folder, out of the unpacked source, and packs them. Why an operation
/// failed goes to the session's problem sink.
class PlexoAdoptedPackage {
 public:
  /// `Move` takes the files away from the source, for the last package that needs them.
  enum class Taking { Copy, Move };

  /// `sourceFolder` holds the unpacked source, `packageFolder` is made.
  PlexoAdoptedPackage(const PlexoAdoptedSCO& adopted, TzPath sourceFolder, TzPath packageFolder)
      : sco(adopted), source(std::move(sourceFolder)), folder(std::move(packageFolder)) {}

  /// `content` are the files of the SCO's own, without launch page and metadata file.
  [[nodiscard]] TzErrorCodeEnum Fill(const std::vector<PlexoAdoptedFile>& content, Taking taking,
                                     const TzPath& launchFolder);
  /// Writes the archive, replacing one in one step.
  [[nodiscard]] TzErrorCodeEnum Pack(const TzPath& target) const;

 private:
  [[nodiscard]] TzErrorCodeEnum TakeFile(const TzZipEntry& entry, const std::string& target, Taking taking);
  [[nodiscard]] TzErrorCodeEnum AddLaunchPage(const TzPath& launchFolder);
  [[nodiscard]] TzErrorCodeEnum WriteText(const std::string& name, const std::string& text);
  [[nodiscard]] TzErrorCodeEnum MakeParent(const std::string& name);

  const PlexoAdoptedSCO& sco;
  TzPath source;
  TzPath folder;
  /// What lies in the folder, but for the manifest.
  std::set<std::string> files;
  std::set<std::string> parents;
};
