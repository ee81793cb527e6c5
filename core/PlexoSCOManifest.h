// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

#include "host/text/TzString.h"

/// What is known of one SCO: what its own manifest said, and where its files are. A value: copied freely.
struct PlexoSCOManifest {
  /// False keeps the SCO's folder out of the package if it stands at the top of the working folder.
  bool keepFolderEntry = true;
  /// The file that the author chose.
  TzString sourcePath;
  /// The SCO's folder in the working folder: the identity of the SCO.
  TzString folderPath;
  /// Base name of the chosen file.
  TzString scoName;
  /// Launch file, relative to the folder.
  TzString href;
  /// File named by `adlcp:location`.
  TzString metadataLocation;
  /// Identifier of the primary objective. Need not be unique.
  TzString objectiveId;
  /// "1.2" or "2004".
  TzString scormVersion;
  TzString identifier;
  TzString title;
  /// Decimal, 0 to 100.
  TzString masteryScore = "0";
  /// "hh:mm:ss"
  TzString maxTimeAllowed = "00:00:00";
  TzString timeLimitAction = "Exit with message";
  /// Launch data.
  TzString dataFromLMS;
  /// Each says that the value of its name is to be published.
  bool hasMasteryScore = false;
  bool hasMaxTimeAllowed = false;
  bool hasTimeLimitAction = false;
  bool hasDataFromLMS = false;
  /// Every file that the SCO's manifest lists, in its order.
  std::vector<TzString> files;
  /// The title that the author gave the file when choosing it; empty if none was given. It is published in
  /// place of whatever else titles the SCO.
  TzString givenTitle;

  /// The title to publish: the given one, or else this one.
  [[nodiscard]] TzString GetTitleOr(const TzString& otherwise) const {
    return givenTitle.IsEmpty() ? otherwise : givenTitle;
  }

  bool operator==(const PlexoSCOManifest&) const = default;
};
