// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "adopt/PlexoAdopter.h"
#include "apps/cli/CommandOutput.h"
#include "apps/cli/CommandSession.h"
#include "apps/course/CourseDocument.h"
#include "core/PlexoSCOKind.h"

/// Makes of each file of a course the packages that the course takes: adopted ones, where it would refuse or
/// damage the file as it stands, or where the course file asks for it. Says so in a line for each file. What
/// isn't a package, the course wraps itself.
class PackageIntake {
 public:
  PackageIntake(const CourseDocument& courseFile, CommandSession& commandSession,
                CommandOutput& commandOutput)
      : course(courseFile), session(commandSession), output(commandOutput) {}

  struct Result {
    /// In the order in which they are added. The file itself, if it is taken as it stands.
    std::vector<TzPath> packages = {};
    bool isAdopted = false;
    /// Set if the file can't be taken.
    std::optional<CommandFailure> failure = std::nullopt;
  };
  /// `module` is the file's module; null for a file of a flat course.
  [[nodiscard]] Result Take(const ListedFile& file, PlexoSCOKind kind, const CourseModule* module);

 private:
  [[nodiscard]] PlexoAdoptRequest MakeRequest(const ListedFile& file, PlexoSCOKind kind) const;
  [[nodiscard]] bool ReadsScripts() const;
  [[nodiscard]] Result Write(const ListedFile& file, PlexoAdopter& adopter);
  [[nodiscard]] Result Fail(const ListedFile& file, const PlexoAdoptResult& result) const;
  void TellReasons(const ListedFile& file, const std::vector<PlexoFinding>& reasons,
                   const std::vector<PlexoFinding>& findings);
  void TellDoubts(const ListedFile& file, const std::vector<PlexoFinding>& findings);

  const CourseDocument& course;
  CommandSession& session;
  CommandOutput& output;
};
