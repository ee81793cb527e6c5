// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

#include "core/PlexoCourseModel.h"
#include "core/PlexoLinearCourseModel.h"
#include "core/PlexoSCOKind.h"
#include "core/PlexoSCOModel.h"
#include "host/files/TzFile.h"

/// Brings the files that an author chooses into the course: unpacks or wraps each in its folder in the
/// working folder, records it, and places it. The chosen file isn't read again afterwards.
///
/// Refusals show a box titled "kPlexoError"; a few are silent, as each operation says. Everything blocks. The
/// panel isn't touched: its caller shows what the operations return.
class PlexoAddFileDriver {
 public:
  /// Lets the author choose files and adds them to a module: one for a pretest or post-test, any number of
  /// contents. The first file that is refused ends the run: the folder of its base name is deleted, even if
  /// another file made it, the files before it stay, and the rest isn't tried. Returns the `scoName` of every
  /// file placed, in order.
  ///
  /// A file whose folder stands already shows "kPlexoErrorSCOFolderExists" and counts as placed: what is
  /// placed is what the run's one record holds by then, the file before it, or an empty one.
  static std::vector<TzString> AddFilesToModule(const TzString& moduleName, PlexoSCOKind kind);
  /// The same for a flat course. Nothing happens while there is no linear course (null).
  static std::vector<TzString> AddFilesToLinearCourse(PlexoLinearCourseModel* linearCourse);

  /// Adds one file and fills `sco`, for the caller to place. 0 for success, and for a file that was added
  /// already, which only shows a box; 1 for a refusal. Silent refusals: no module name for a module's file,
  /// no string dictionary, no such file, an extension that isn't taken, a name that can't be a folder's,
  /// no working folder.
  [[nodiscard]] static int AddFileToCourse(const TzPath& path, PlexoSCOModel& sco, PlexoSCOKind kind,
                                           const TzString& moduleName);

  /// Reads a SCO's manifest as a course of the present version does. 0, or 1 after a box; silently 1 without
  /// a string dictionary or a file.
  [[nodiscard]] static int ReadSCOManifest(const TzFile& manifestFile, PlexoSCOManifest& manifest);

  /// Deletes a SCO's own manifest and schema documents: the published package has one set of each. Always 0.
  static int RemovePackageFiles(const TzPath& scoFolder, const TzString& scormVersion);

  /// True if a file of this base name can have a folder of its own. False for "", ".", ".." and names with a
  /// separator, which would name another folder.
  static bool CanNameFolder(const TzString& baseName);

  /// Where a file of this base name stands: "Linear"/name in a flat course, else the module's folder, that of
  /// the kind, and the name. The names are fixed, whatever the dictionary holds.
  static TzPath GetSCOFolder(const TzString& baseName, PlexoSCOKind kind, const TzString& moduleName);
};
