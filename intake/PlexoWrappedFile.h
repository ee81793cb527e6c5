// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

#include "core/PlexoSCOManifest.h"
#include "core/PlexoSCOModel.h"
#include "host/files/TzPath.h"
#include "host/text/ITzStringDictionary.h"

/// A file that isn't a SCO by itself, on its way to become one: the steps that every kind of such files
/// takes. What stands in its folder after a failure goes when the driver deletes the folder.
class PlexoWrappedFile {
 public:
  /// `extension` is that of the copy ("pdf").
  PlexoWrappedFile(TzPath chosenFile, TzPath scoFolder, const TzString& extension);

  [[nodiscard]] const TzPath& GetSource() const { return source; }
  [[nodiscard]] TzPath GetCopy() const { return folder / copyName; }

  /// True, after the box "kPlexoErrorSCOFolderExists", if the folder stands already.
  [[nodiscard]] bool WasAddedAlready(const ITzStringDictionary& dictionary) const;
  /// Makes the folder and copies the file into it. False if that failed.
  [[nodiscard]] bool CopyIn() const;
  /// A record of the SCO, which the course doesn't know yet; the page "NAME.htm" launches it. Fills `sco`
  /// too.
  [[nodiscard]] PlexoSCOManifest Describe(PlexoSCOModel& sco) const;
  /// Adds the files that the wrapper made to the record, and the record to the course and to `sco`.
  void Record(PlexoSCOManifest manifest, const std::vector<TzString>& generatedFiles,
              PlexoSCOModel& sco) const;

 private:
  TzPath source;
  TzPath folder;
  TzString baseName;
  TzString copyName;
};
