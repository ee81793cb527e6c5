// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "apps/cli/CommandOutput.h"
#include "apps/cli/CommandSession.h"
#include "apps/cli/CourseReport.h"
#include "apps/cli/PackageTarget.h"
#include "apps/cli/WorkingFolder.h"
#include "apps/course/CourseDocument.h"
#include "core/PlexoSCOKind.h"

struct BuildOptions {
  std::string courseFile;
  std::string package;
  /// Where the course is put together, and left; empty for a temporary folder.
  std::string workingFolder;
  PackageTarget::Existing existing = PackageTarget::Existing::Keep;
  enum class Report { Full, PathOnly } report = Report::Full;
};

/// `plexo build`: makes one package of a course file, over the models, the driver and the publisher that the
/// panel uses. Runs once in a process, for there is one course in it.
class BuildCommand {
 public:
  BuildCommand(const BuildOptions& buildOptions, CommandSession& commandSession,
               CommandOutput& commandOutput);

  [[nodiscard]] ExitStatus Run();

 private:
  using Failure = std::optional<CommandFailure>;

  /// Where in the course a file goes. Index and module index count from 0, as in the package's identifiers.
  struct Place {
    PlexoSCOKind kind = PlexoSCOKind::LINEAR;
    /// Null for a flat course.
    const CourseModule* module = nullptr;
    std::uint32_t index = 0;
    std::uint32_t moduleIndex = 0;
    TzString moduleKey = {};
  };

  /// What the command line says, looked at before any work starts.
  [[nodiscard]] Failure CheckOptions() const;
  [[nodiscard]] std::vector<CommandFailure> ReadCourse();
  [[nodiscard]] Failure CheckCourse() const;
  void WarnOfIdentifier() const;
  [[nodiscard]] Failure StartCourse();
  [[nodiscard]] Failure AddFiles();
  [[nodiscard]] Failure AddModule(const CourseModule& module);
  /// Adds the packages that the file becomes, from this place on, and moves the place behind them.
  [[nodiscard]] Failure AddFile(const ListedFile& file, Place& place);
  [[nodiscard]] Failure AddPackage(const ListedFile& file, const TzPath& package, const Place& place);
  /// The package under a name that a package can carry, which is said if it isn't its own.
  [[nodiscard]] std::optional<TzPath> ProvideSafeName(const ListedFile& file, const TzPath& package);
  [[nodiscard]] CommandFailure FailToName(const ListedFile& file);
  /// Fails if another file has the package's base name in this place. Asked before the component hears of the
  /// file: a refusal for any other reason would delete what has the name.
  [[nodiscard]] Failure RefuseTakenName(const ListedFile& file, const TzPath& package, const Place& place);
  void NotePlaced(const ListedFile& file, const Place& place, bool isAdopted);
  /// The text with listed files in the place of the files that stand in for them.
  [[nodiscard]] std::string NameListedFiles(std::string text) const;
  [[nodiscard]] Failure Publish();
  [[nodiscard]] Failure MakePackage();
  void PrintReport();

  BuildOptions options;
  CommandSession& session;
  CommandOutput& output;
  PackageTarget target;
  WorkingFolder workingFolder;
  CourseDocument course;
  /// Of its modules, as texts of fractions.
  std::vector<std::string> shares;
  std::vector<PlacedSCO> placed;
  /// Packages that were made of listed files and links to such files, and those files as the course file
  /// writes them.
  std::vector<std::pair<std::string, std::string>> standIns;
  std::uint32_t moduleCount = 0;
};
