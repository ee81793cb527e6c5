// SPDX-License-Identifier: Apache-2.0
#include "intake/PlexoSharedPlayer.h"

#include <vector>

#include "core/PlexoCourseModel.h"
#include "core/PlexoInstallFolder.h"
#include "host/files/TzFile.h"
#include "host/files/TzFileUtil.h"
#include "host/session/TzProblem.h"

namespace {

struct Player {
  const char* name;
  /// Of the files that it shows.
  const char* extension;
};

/// In the order of `PlexoWrapperKind`.
constexpr Player kPlayers[] = {{"pdfjs", "pdf"}, {"ruffle", "swf"}};

TzPath GetSharedFolder() { return GetCourseModel()->GetWorkingFolder() / "plexo_players"; }

bool IsNeeded(const Player& player) {
  const PlexoCourseModel& course = *GetCourseModel();
  for (std::size_t index = 0; index < course.GetSCOManifestCount(); ++index) {
    const TzPath source(course.GetSCOManifest(index).sourcePath);
    if (TzFileUtil::GetExtension(source) == player.extension) return true;
  }
  return false;
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
  const TzString name = kPlayers[static_cast<std::size_t>(kind)].name;
  const TzPath target = GetSharedFolder() / name;
  if (TzFile(target).Exists()) return;
  const TzPath source = GetPlexoInstallFolder() / "Players" / name;
  if (CopyTree(source, target)) return;
  TzFileUtil::DeleteDirectory(target, true);
  TzReportProblem(kTzFailure, source.GetNative(),
                  TzFile(source).Exists()
                      ? "the player couldn't be copied into the package"
                      : "the player isn't there; install the program again with its Templates folder");
}

void PlexoSharedPlayer::RemoveUnusedPlayers() {
  const TzPath shared = GetSharedFolder();
  if (!TzFile(shared).Exists()) return;
  for (const Player& player : kPlayers) {
    const TzPath folder = shared / player.name;
    if (TzFile(folder).Exists() && !IsNeeded(player)) TzFileUtil::DeleteDirectory(folder, true);
  }
  TzFileUtil::DeleteDirectory(shared, false);
}
