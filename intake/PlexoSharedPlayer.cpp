// SPDX-License-Identifier: Apache-2.0
#include "intake/PlexoSharedPlayer.h"

#include <vector>

#include "core/PlexoCourseModel.h"
#include "core/PlexoInstallFolder.h"
#include "host/files/TzFile.h"
#include "host/files/TzFileUtil.h"
#include "host/session/TzProblem.h"

namespace {

const char* GetPlayerName(PlexoWrapperKind kind) {
  return kind == PlexoWrapperKind::SWF ? "ruffle" : "pdfjs";
}

bool CopyTree(const TzPath& source, const TzPath& target) {
  std::vector<TzPath> entries;
  if (TzFileUtil::GetFileNamesInFolderAtPath(source, entries, true, true) != 0) return false;
  for (const TzPath& entry : entries) {
    const TzPath copy = target / entry.GetFileName();
    const bool isFolder = TzFile(entry).GetAttribute(TzFileAttribute::IsFolder);
    if (!(isFolder ? CopyTree(entry, copy) : TzFileUtil::FileCopy(entry, copy, true))) return false;
  }
  return !entries.empty();
}

}  // namespace

void PlexoSharedPlayer::CopySharedPlayer(PlexoWrapperKind kind) {
  const TzString name = GetPlayerName(kind);
  const TzPath target = GetCourseModel()->GetWorkingFolder() / "plexo_players" / name;
  if (TzFile(target).Exists()) return;
  const TzPath source = GetPlexoInstallFolder() / "Players" / name;
  if (CopyTree(source, target)) return;
  TzFileUtil::DeleteDirectory(target, true);
  TzReportProblem(kTzFailure, source.GetNative(),
                  "the player couldn't be copied into the package; install the program again with its "
                  "Templates folder");
}
