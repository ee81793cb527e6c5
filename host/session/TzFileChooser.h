// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

#include "host/files/TzPath.h"
#include "host/session/TzWindow.h"
#include "host/text/TzString.h"

/// The sets of file types that a chooser can offer.
enum TzUIFileExtensionType : int {
  /// SCO packages.
  kTzFileTypeSCO = 39,
  /// SCO packages and what can be wrapped as one: PDF documents and SWF movies.
  kTzFileTypeSCOOrWrapped = 40,
};

/// One row of a chooser's list of file types.
struct TzFileFilter {
  TzString name;
  /// Without their points: "zip", "pdf".
  std::vector<TzString> extensions;
};

/// What a file chooser is asked.
struct TzFileChooserRequest {
  TzString title;
  TzPath startFolder;
  std::vector<TzFileFilter> filters;
  TzWindowHandle parent = nullptr;
  bool multiple = false;
};

/// What a folder chooser is asked.
struct TzFolderChooserRequest {
  TzString title;
  /// The folder's path, as texts of sheets hold it.
  TzString startFolder;
  TzWindowHandle parent = nullptr;
};

class TzFileChooserUtils {
 public:
  static std::vector<TzFileFilter> GetFileFilterInfoForFileExtensions(
      const std::vector<TzUIFileExtensionType>& types);

  /// The files chosen, in the chooser's order; none if it was cancelled or there is no user interface.
  static std::vector<TzPath> OpenOSDialogSelectFile(const std::vector<TzFileFilter>& filters,
                                                    const TzString& title, const TzPath& startFolder,
                                                    TzWindowHandle parent, bool multiple);

  /// The title that the author gave the chosen file; empty if none was given or there is no user interface.
  static TzString GetGivenTitle(const TzPath& file);

  /// The folder chosen; empty if the chooser was cancelled or there is no user interface.
  static TzString BrowseForFolders(const TzString& title, TzWindowHandle parent, const TzString& startFolder);
};
