// SPDX-License-Identifier: Apache-2.0
#include "intake/PlexoWrappedFile.h"

#include <utility>

#include "core/PlexoCourseModel.h"
#include "core/PlexoErrorBox.h"
#include "host/files/TzFileUtil.h"
#include "host/session/TzFileChooser.h"

PlexoWrappedFile::PlexoWrappedFile(TzPath chosenFile, TzPath scoFolder, const TzString& extension)
    : source(std::move(chosenFile)),
      folder(std::move(scoFolder)),
      baseName(TzFileUtil::GetBaseFileName(source)),
      copyName(baseName + "." + extension) {}

bool PlexoWrappedFile::WasAddedAlready(const ITzStringDictionary& dictionary) const {
  if (!TzFile(folder).Exists()) return false;
  ShowErrorBox(dictionary, "kPlexoErrorSCOFolderExists");
  return true;
}

bool PlexoWrappedFile::CopyIn() const {
  return TzFileUtil::CreateDirectory(folder, true) && TzFileUtil::FileCopy(source, GetCopy(), true);
}

PlexoSCOManifest PlexoWrappedFile::Describe(PlexoSCOModel& sco) const {
  const TzString page = baseName + ".htm";
  PlexoSCOManifest manifest;
  manifest.sourcePath = sco.sourcePath = source.GetString();
  manifest.folderPath = sco.folderPath = folder.GetString();
  manifest.scoName = sco.scoName = baseName;
  manifest.href = sco.launchFile = page;
  manifest.scormVersion = sco.scormVersion = GetCourseModel()->GetScormVersion();
  manifest.files = {copyName};
  manifest.givenTitle = TzFileChooserUtils::GetGivenTitle(source);
  // Appended, for one record serves a whole selection of files.
  sco.files.push_back(page);
  sco.files.push_back(copyName);
  return manifest;
}

void PlexoWrappedFile::Record(PlexoSCOManifest manifest, const std::vector<TzString>& generatedFiles,
                              PlexoSCOModel& sco) const {
  for (TzString path : generatedFiles) {
    path.ReplaceAll(folder.GetString() + "/", {});
    manifest.files.push_back(std::move(path));
  }
  GetCourseModel()->AddSCOManifest(manifest);
  sco.manifest = std::move(manifest);
}
