// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <vector>

#include "host/files/TzPath.h"
#include "intake/PlexoTemplateSubstitution.h"

/// What is wrapped.
enum class PlexoWrapperKind : std::uint32_t { PDF = 0, SWF = 1 };

/// Makes a SCO of a document or a movie that stands in its SCO folder: a launch page beside it, named after
/// it, made from the install tree's template, and the scripts and support files that the page loads. Built
/// for one file and thrown away.
class PlexoSCOWrapper {
 public:
  /// The document or movie, in its SCO folder.
  void SetSourcePath(const TzPath& path) { sourcePath = path; }
  void SetKind(PlexoWrapperKind wrapperKind) { kind = wrapperKind; }
  /// "1.2" or "2004"; anything else counts as "2004".
  void SetScormVersion(const TzString& version) { scormVersion = version; }
  /// The major version of the player that the page asks for, and the movie's size. For a movie only.
  void SetPlayerVersion(std::int32_t version) { playerVersion = version; }
  void SetWidth(std::int32_t movieWidth) { width = movieWidth; }
  void SetHeight(std::int32_t movieHeight) { height = movieHeight; }

  /// 0, or 1 if the page or "standard.js" couldn't be made; why goes to the session's problem sink. A support
  /// file that can't be copied is no failure here.
  [[nodiscard]] int GenerateWrapper();
  /// Absolute paths in the order of making, the support files whether they could be copied or not. Valid
  /// after `GenerateWrapper`, also after a failure.
  [[nodiscard]] std::vector<TzString> GetGeneratedFiles() const { return generatedFiles; }

 private:
  void CollectWrapperSettings();
  void SetStrobePlaceholders();
  void SetPdfPlaceholders();
  void CopySupportFiles(const TzPath& versionRoot);
  int CopyStandardScript();
  int GenerateHtmlFile();

  TzPath sourcePath;
  TzString scormVersion;
  std::int32_t playerVersion = 0;
  std::int32_t width = 0;
  std::int32_t height = 0;
  std::vector<TzString> generatedFiles;
  TzPath scoFolder;
  TzString baseName;
  TzString htmlName;
  PlexoTemplateSubstitution::Placeholders placeholders;
  TzPath templateRoot;
  TzPath templateFile;
  TzPath outputFile;
  PlexoWrapperKind kind = PlexoWrapperKind::PDF;
};
