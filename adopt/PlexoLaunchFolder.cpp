// SPDX-License-Identifier: Apache-2.0
#include "adopt/PlexoLaunchFolder.h"

#include <cerrno>

#include "host/files/TzFile.h"
#include "host/files/TzFileUtil.h"
#include "host/session/TzProblem.h"

TzErrorCodeEnum PlexoLaunchFolder::List(const TzPath& folder, std::vector<std::string>& names) {
  std::vector<std::string> open = {""};
  while (!open.empty()) {
    const std::string below = open.back();
    open.pop_back();
    const TzPath place = below.empty() ? folder : folder / below;
    std::vector<TzPath> paths;
    if (TzFileUtil::GetFileNamesInFolderAtPath(place, paths, true, true) != kTzSuccess) {
      return TzReportSystemProblem(errno, place.GetNative(), "can't be read");
    }
    for (const TzPath& path : paths) {
      const std::string name = (below.empty() ? "" : below + "/") + path.GetFileName().GetUTF8String();
      (TzFile(path).GetAttribute(TzFileAttribute::IsFolder) ? open : names).push_back(name);
    }
  }
  return kTzSuccess;
}
