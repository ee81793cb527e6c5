// SPDX-License-Identifier: Apache-2.0
#include "intake/PlexoSCOWrapper.h"

#include <string>

#include "core/PlexoInstallFolder.h"
#include "host/files/TzFile.h"
#include "host/files/TzFileUtil.h"
#include "host/session/TzProblem.h"

namespace {

// Nobody offers the player's installer any more. The addresses lie in the domain that is reserved for names
// which never exist, so that no browser can ever be sent to a stranger's program.
constexpr const char* kDownloadHost = "https://download.invalid";
constexpr const char* kPlayerDownloadHost = "https://player.invalid";
constexpr const char* kInstallerPath = "/pub/quiver/cabs/strobe/swstrobe.cab#version=";

struct InstallerVersion {
  std::int32_t playerVersion;
  const char* host;
  const char* version;
};

constexpr InstallerVersion kInstallerVersions[] = {
    {6, kDownloadHost, "6,0,29,0"},        {7, kPlayerDownloadHost, "7,0,0,0"},
    {8, kPlayerDownloadHost, "8,0,0,0"},   {9, kPlayerDownloadHost, "9,0,0,0"},
    {10, kPlayerDownloadHost, "10,0,0,0"},
};

TzString GetCodeBase(std::int32_t playerVersion) {
  for (const InstallerVersion& each : kInstallerVersions) {
    if (each.playerVersion == playerVersion) return TzString(each.host) + kInstallerPath + each.version;
  }
  return {};
}

bool CheckFileExists(const TzPath& path) {
  if (TzFile(path).Exists()) return true;
  TzReportProblem(kTzMachineFailure, path.GetNative(),
                  "the file doesn't exist; install the program again with its Templates folder");
  return false;
}

}  // namespace

int PlexoSCOWrapper::GenerateWrapper() {
  CollectWrapperSettings();
  const TzPath versionRoot = templateRoot / "SCORM" / (scormVersion == "1.2" ? "1_2" : "2004");
  templateFile = versionRoot / (kind == PlexoWrapperKind::SWF ? "Default.htm" : "DefaultPDF.htm");
  CopySupportFiles(versionRoot);
  const int result = CopyStandardScript();
  return result != 0 ? result : GenerateHtmlFile();
}

void PlexoSCOWrapper::CollectWrapperSettings() {
  scoFolder = sourcePath.GetParentTzPath();
  baseName = TzFileUtil::GetBaseFileName(sourcePath);
  htmlName = baseName + ".htm";
  if (kind == PlexoWrapperKind::SWF) {
    SetStrobePlaceholders();
  } else {
    SetPdfPlaceholders();
  }
  placeholders["@FILENAME"] = htmlName;
  templateRoot = GetPlexoInstallFolder();
  outputFile = scoFolder / htmlName;
}

void PlexoSCOWrapper::SetStrobePlaceholders() {
  placeholders = {
      {"@STROBEPLAYER_CLASSID", "clsid:d27cdb6e-ae6d-11cf-96b8-444553540000"},
      {"@STROBEPLAYER_CODEBASE", GetCodeBase(playerVersion)},
      {"@MOVIETITLE", ""},
      {"@MOVIEDESCRIPTION", ""},
      {"@SKINCOLOR", "#ffffff"},
      {"@MOVIEWIDTH", std::to_string(width)},
      {"@MOVIEHEIGHT", std::to_string(height)},
      {"@MOVIENAME", sourcePath.GetFileName()},
      {"@MOVIELOOP", "false"},
      {"@IsRightClickFunctionalityRequired", ""},
      {"@Comment1ForRightClickFunctionality", ""},
      {"@Comment2ForRightClickFunctionality", ""},
      {"@Comment3ForRightClickFunctionality", ""},
      {"@WMODEVALUE", "window"},
      {"@StrobePlayerVersion", std::to_string(playerVersion)},
  };
}

void PlexoSCOWrapper::SetPdfPlaceholders() { placeholders = {{"@PDFNAME", sourcePath.GetFileName()}}; }

void PlexoSCOWrapper::CopySupportFiles(const TzPath& versionRoot) {
  std::vector<const char*> names;
  if (kind == PlexoWrapperKind::SWF) names = {"scorm_support.htm", "scorm_support.swf"};
  names.push_back("scorm_support.js");
  const TzPath target = scoFolder / "SCORM_support";
  if (!TzFile(target).Exists() && !TzFileUtil::CreateDirectory(target, false)) return;
  for (const char* name : names) {
    TzFileUtil::FileCopy(versionRoot / "SCORM_support" / name, target / name, true);
    generatedFiles.push_back((target / name).GetString());
  }
}

int PlexoSCOWrapper::CopyStandardScript() {
  const TzPath source = templateRoot / "standard.js";
  const TzPath target = scoFolder / "standard.js";
  if (!CheckFileExists(source)) return 1;
  TzFileUtil::FileCopy(source, target, true);
  TzFile(target).SetAttribute(TzFileAttribute::ReadOnly, false);
  generatedFiles.push_back(target.GetString());
  return TzFile(target).Exists() ? 0 : 1;
}

int PlexoSCOWrapper::GenerateHtmlFile() {
  if (!CheckFileExists(templateFile)) return 1;
  if (PlexoTemplateSubstitution::SubstituteTemplate(TzFile(templateFile), TzFile(outputFile), placeholders) !=
      0) {
    return 1;
  }
  generatedFiles.push_back(outputFile.GetString());
  return TzFile(outputFile).Exists() ? 0 : 1;
}
