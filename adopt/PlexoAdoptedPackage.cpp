// SPDX-License-Identifier: Apache-2.0
#include "adopt/PlexoAdoptedPackage.h"

#include <cerrno>
#include <span>

#include "adopt/PlexoAdoptedManifest.h"
#include "adopt/PlexoLaunchFolder.h"
#include "adopt/PlexoLaunchSettings.h"
#include "check/PlexoFindingList.h"
#include "host/files/TzFileSystem.h"
#include "host/files/TzFileUtil.h"
#include "host/files/TzStreamUtil.h"
#include "host/files/TzZipUtils.h"
#include "host/session/TzProblem.h"

TzErrorCodeEnum PlexoAdoptedPackage::Fill(const std::vector<PlexoAdoptedFile>& content, Taking taking,
                                          const TzPath& launchFolder) {
  TzErrorCodeEnum code = TzFileSystem::Current().MakeFolders(folder);
  if (code != kTzSuccess) return TzReportSystemProblem(errno, folder.GetNative(), "can't make the folder");
  // The metadata file may be one of the content's, which a move takes away.
  if (sco.metadata != nullptr) {
    code = TakeFile(*sco.metadata, PlexoAdoptedManifest::kMetadataFile, Taking::Copy);
  }
  for (std::size_t index = 0; index < content.size() && code == kTzSuccess; ++index) {
    code = TakeFile(*content[index].source, content[index].target, taking);
  }
  if (code == kTzSuccess && sco.HasLaunchPage()) code = AddLaunchPage(launchFolder);
  if (code != kTzSuccess) return code;
  return WriteText(PlexoFindingList::kManifestName,
                   PlexoAdoptedManifest::Write(sco, {files.begin(), files.end()}));
}

TzErrorCodeEnum PlexoAdoptedPackage::TakeFile(const TzZipEntry& entry, const std::string& target,
                                              Taking taking) {
  if (const TzErrorCodeEnum code = MakeParent(target); code != kTzSuccess) return code;
  files.insert(target);
  TzFileSystem& system = TzFileSystem::Current();
  const TzPath from = source / entry.name;
  const TzErrorCodeEnum code = taking == Taking::Move
                                   ? system.Move(from, folder / target)
                                   : system.Copy(from, folder / target, TzCopyMode::FailIfExists);
  if (code == kTzSuccess) return code;
  return TzReportSystemProblem(errno, entry.name, "can't be put into its package");
}

TzErrorCodeEnum PlexoAdoptedPackage::AddLaunchPage(const TzPath& launchFolder) {
  std::vector<std::string> names;
  if (const TzErrorCodeEnum code = PlexoLaunchFolder::List(launchFolder, names); code != kTzSuccess) {
    return code;
  }
  for (const std::string& name : names) {
    const std::string target = PlexoLaunchSettings::kFolder + name;
    if (const TzErrorCodeEnum code = MakeParent(target); code != kTzSuccess) return code;
    files.insert(target);
    if (!TzFileUtil::FileCopy(launchFolder / name, folder / target, true)) return kTzMachineFailure;
  }
  files.insert(PlexoLaunchSettings::kFile);
  return WriteText(PlexoLaunchSettings::kFile, PlexoLaunchSettings::Of(sco).Write());
}

TzErrorCodeEnum PlexoAdoptedPackage::WriteText(const std::string& name, const std::string& text) {
  if (const TzErrorCodeEnum code = MakeParent(name); code != kTzSuccess) return code;
  const auto stream = TzStreamUtil::CreateFileStreamWrite(TzFile(folder / name), 0, 0, 0);
  if (stream == nullptr) return kTzMachineFailure;
  const bool isWritten =
      stream->Write(std::as_bytes(std::span(text))) == kTzSuccess && stream->Close() == kTzSuccess;
  return isWritten ? kTzSuccess : TzReportSystemProblem(errno, name, "can't be written");
}

TzErrorCodeEnum PlexoAdoptedPackage::MakeParent(const std::string& name) {
  const std::size_t slash = name.rfind('/');
  if (slash == std::string::npos || !parents.insert(name.substr(0, slash)).second) return kTzSuccess;
  const TzErrorCodeEnum code = TzFileSystem::Current().MakeFolders(folder / name.substr(0, slash));
  if (code == kTzSuccess) return code;
  return TzReportSystemProblem(errno, name.substr(0, slash), "can't make the folder");
}

TzErrorCodeEnum PlexoAdoptedPackage::Pack(const TzPath& target) const {
  std::vector<TzPath> tops;
  if (TzFileUtil::GetFileNamesInFolderAtPath(folder, tops, true, true) != kTzSuccess) {
    return TzReportSystemProblem(errno, folder.GetNative(), "can't be read");
  }
  return TzZipUtils::ZipFiles(tops, target, folder, 0, {});
}
