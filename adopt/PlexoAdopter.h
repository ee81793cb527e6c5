// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "adopt/PlexoCourseEdition.h"
#include "check/PlexoFinding.h"
#include "host/files/TzPath.h"
#include "host/session/TzErrorCode.h"

class PlexoExamination;

/// What a package is to become.
struct PlexoAdoptRequest {
  TzPath package;
  /// The edition of the course that it is for; none for the package's own.
  std::optional<PlexoCourseEdition> edition;
  /// The identifier of the one item that is wanted; empty for all that can be launched.
  std::string item;
  /// For the one SCO that is taken; empty for its own.
  std::string title = {};
  /// What the place can take: a pretest one SCO, a list any number.
  enum class Place { OneSCO, List } place = Place::OneSCO;
  /// `Passes`: what completes has passed, for content that reports no success.
  enum class Completion { AsReported, Passes } completion = Completion::AsReported;
  /// `Read` finds content that may complete and never pass, which matters where a course waits for success.
  enum class Scripts { Read, Skip } scripts = Scripts::Read;
};

/// What became of a request.
struct PlexoAdoptResult {
  /// `kTzBadContent` if the package can't be adopted: the first finding that is an error says why.
  /// `kTzMachineFailure` and `kTzCancelled` say nothing about the package.
  TzErrorCodeEnum code = kTzSuccess;
  /// What the machine said.
  std::string failure;
  /// What differs between the package and what is made of it, by id.
  std::vector<PlexoFinding> findings;
};

/// One SCO that a package becomes.
struct PlexoAdoptedItem {
  /// As the package writes it; empty if no item launches the resource.
  std::string identifier;
  std::string title;
  /// Of the content in the adopted package, query and fragment included: "content/index.htm?x=1".
  std::string page = {};
  PlexoCourseEdition contentEdition = PlexoCourseEdition::Scorm2004;
  PlexoCourseEdition courseEdition = PlexoCourseEdition::Scorm2004;
};

/// Brings a package of any maker into the form that a course takes without loss: SCORM 1.2 or SCORM 2004 3rd
/// Edition, one item, one resource that lists every file, the content in a folder of its own.
///
/// Guarantees: the files of the content keep their bytes and their places towards each other, and each is in
/// at least one of the packages that all items become; only unlisted schema documents and what a system left
/// behind are no content. Nothing of the package is trusted. The same package and request give the same
/// bytes, and a package that was adopted stays as it is. Only the manifest, scripts, and the pages and style
/// sheets of a package of several items are read; the other entries are copied as they are packed.
class PlexoAdopter {
 public:
  /// `launchFiles` is the folder of the launch page, for content of the other edition.
  PlexoAdopter(PlexoAdoptRequest adoptRequest, TzPath launchFiles);
  PlexoAdopter(const PlexoAdopter&) = delete;
  PlexoAdopter& operator=(const PlexoAdopter&) = delete;
  ~PlexoAdopter();

  /// Looks at the package and decides what it becomes; writes nothing. Called once, before the others.
  [[nodiscard]] PlexoAdoptResult Examine();

  /// The SCOs that the package becomes, in the order of its items; empty if it can't be adopted.
  [[nodiscard]] const std::vector<PlexoAdoptedItem>& GetItems() const { return items; }
  /// The number of content files that the item of this index has.
  [[nodiscard]] std::size_t CountFiles(std::size_t index) const;
  /// The findings for which a course would refuse the package as it stands, or damage it; empty if it takes
  /// it as it is.
  [[nodiscard]] const std::vector<PlexoFinding>& GetReasons() const { return reasons; }

  /// Writes each item's package to the target of the same index. An existing file is replaced, in one step.
  /// After a failure some targets may be written, each of them whole. No findings.
  [[nodiscard]] PlexoAdoptResult Write(const std::vector<TzPath>& targets);

  /// The folder of the launch page in the install tree beside the running program.
  [[nodiscard]] static TzPath GetLaunchInstallFolder();

 private:
  PlexoAdoptRequest request;
  TzPath launchFolder;
  std::unique_ptr<PlexoExamination> examination;
  std::vector<PlexoAdoptedItem> items;
  std::vector<PlexoFinding> reasons;
};
