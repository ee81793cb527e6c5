// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <vector>

#include "host/files/TzFile.h"

/// Operations on files and folders by path.
class TzFileUtil {
 public:
  /// Makes a new empty folder for temporary files, its name made unique from the stem, private to the user.
  /// Empty path if none could be made. It lives until `DeleteAllTempFilesCreated`; what a killed process
  /// leaves behind is removed by the next process that calls this.
  static TzPath CreateTempDir(const TzString& stem);
  /// Likewise, but a folder of the disk, for archives: these are read and written by their path.
  static TzPath CreateTempDiskDir(const TzString& stem);
  /// Lets the next `CreateTempDir` take this very folder, which must not exist yet or be empty, and which
  /// `DeleteAllTempFilesCreated` then leaves alone.
  static void KeepNextTempDirAt(const TzPath& folder);
  /// Deletes every folder that `CreateTempDir` made in this process.
  static void DeleteAllTempFilesCreated();

  /// The user's folder for documents, as the desktop's settings name it. The path is only computed.
  static TzPath GetUserDocumentsFolder();
  /// The file of the running program.
  static TzPath GetCurrentExecutablePath();

  /// The file's name without folder and extension ("intro" for "/home/a/intro.zip").
  static TzString GetBaseFileName(const TzPath& path);
  /// The extension without its point and with ASCII capitals folded ("zip" for "A.ZIP"); empty if none.
  static TzString GetExtension(const TzPath& path);
  /// The same with its capitals ("ZIP" for "A.ZIP").
  static TzString GetExtensionAsWritten(const TzPath& path);

  /// True if the system takes the text as a path, whatever is there: not empty, without control characters,
  /// nothing longer than the system's bounds.
  static bool IsValidPath(const TzString& text);
  /// True if the text can name a file in a folder of any system that the file may be taken to: a valid path
  /// without < > : " / \ | ? *, without a blank or point at its end, and not the name of a device.
  static bool IsValidFileName(const TzString& text);

  /// True if the folder is gone afterwards. A folder that isn't empty goes only if `recursive`.
  static bool DeleteDirectory(const TzPath& folder, bool recursive);
  /// True if the file is gone afterwards.
  static bool DeleteFile(const TzPath& file);
  /// True if the folder stands afterwards. Without `withParents`, the parent must exist.
  static bool CreateDirectory(const TzPath& folder, bool withParents);
  /// Copies a file, making the target's folder where it is missing. True if it was copied.
  static bool FileCopy(const TzPath& source, const TzPath& target, bool failIfExists);

  /// How many operations of this class have failed in this process because the disk had no room. Whoever lets
  /// single copies fail can tell by it whether going on makes sense. UI thread only.
  [[nodiscard]] static std::uint64_t GetNoSpaceCount();

  /// One level of a folder, as full paths in the order of their names: files if `files`, folders if
  /// `folders`. `kTzFailure` if the folder can't be read.
  [[nodiscard]] static int GetFileNamesInFolderAtPath(const TzPath& folder, std::vector<TzPath>& list,
                                                      bool files, bool folders);
};
