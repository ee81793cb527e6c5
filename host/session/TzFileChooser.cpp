// SPDX-License-Identifier: Apache-2.0
#include "host/session/TzFileChooser.h"

#include "host/session/ITzUserInterface.h"
#include "host/session/TzSession.h"

std::vector<TzFileFilter> TzFileChooserUtils::GetFileFilterInfoForFileExtensions(
    const std::vector<TzUIFileExtensionType>& types) {
  std::vector<TzFileFilter> filters;
  for (const TzUIFileExtensionType type : types) {
    if (type == kTzFileTypeSCOOrWrapped) filters.push_back({"SCO, PDF and SWF files", {"zip", "pdf", "swf"}});
    filters.push_back({"SCO files", {"zip"}});
  }
  return filters;
}

std::vector<TzPath> TzFileChooserUtils::OpenOSDialogSelectFile(const std::vector<TzFileFilter>& filters,
                                                               const TzString& title,
                                                               const TzPath& startFolder,
                                                               TzWindowHandle parent, bool multiple) {
  ITzUserInterface* userInterface = GetUserInterface();
  if (userInterface == nullptr) return {};
  return userInterface->ChooseFiles({title, startFolder, filters, parent, multiple});
}

TzString TzFileChooserUtils::GetGivenTitle(const TzPath& file) {
  const ITzUserInterface* userInterface = GetUserInterface();
  return userInterface != nullptr ? userInterface->GetGivenTitle(file) : TzString();
}

TzString TzFileChooserUtils::BrowseForFolders(const TzString& title, TzWindowHandle parent,
                                              const TzString& startFolder) {
  ITzUserInterface* userInterface = GetUserInterface();
  return userInterface != nullptr ? userInterface->ChooseFolder({title, startFolder, parent}) : TzString();
}
