// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "adopt/PlexoCourseEdition.h"
#include "check/PlexoCheckedPackage.h"

/// What an item hands to the content at its launch. Empty texts stand for what the item lacks.
struct PlexoLaunchData {
  std::string masteryScore;
  std::string maxTimeAllowed;
  std::string timeLimitAction;
  std::string dataFromLms;
  std::string scaledPassingScore;
  std::string completionThreshold;
  /// The objectiveIDs that an LMS of SCORM 2004 lists before the content asks: the primary objective's, and
  /// those of the others, separated by blanks.
  std::string primaryObjective;
  std::string objectives;

  bool operator==(const PlexoLaunchData& other) const = default;
};

/// One SCO of a package, with all that its adopted package says.
struct PlexoAdoptedSCO {
  /// Of its item, as the source writes it; empty if no item launches it.
  std::string item;
  std::string title;
  /// Of the source's manifest, as it writes it.
  std::string manifest;

  PlexoCourseEdition contentEdition = PlexoCourseEdition::Scorm2004;
  PlexoCourseEdition courseEdition = PlexoCourseEdition::Scorm2004;
  bool completionPasses = false;

  /// Of the content's page in the adopted package, query and fragment included: "content/index.htm?x=1".
  std::string launch;
  /// The objectiveID of the primary objective; empty if it has none.
  std::string objective;
  PlexoLaunchData data;
  /// Null if it has no metadata file.
  const TzZipEntry* metadata = nullptr;

  /// It is launched through our launch page, which translates between content and LMS, lets completion pass,
  /// and lists objectives of the content beside the primary one: a course has no place for them.
  [[nodiscard]] bool HasLaunchPage() const {
    return contentEdition != courseEdition || completionPasses || !data.objectives.empty();
  }
};
