// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "adopt/PlexoAdopter.h"
#include "apps/cli/CommandOutput.h"
#include "apps/cli/CommandSession.h"
#include "apps/cli/PackageTarget.h"

struct AdoptOptions {
  std::string package;
  /// The one package to write; or the folder for any number of them, made if it is missing. With neither, one
  /// package beside the source.
  std::string output;
  std::string folder;
  /// "1.2" or "2004"; empty for the package's own edition.
  std::string scormVersion;
  std::string item;
  PlexoAdoptRequest::Completion completion = PlexoAdoptRequest::Completion::AsReported;
  PackageTarget::Existing existing = PackageTarget::Existing::Keep;
};

/// `plexo adopt`: brings a package of any maker into the form that a course takes.
class AdoptCommand {
 public:
  AdoptCommand(AdoptOptions adoptOptions, CommandSession& commandSession, CommandOutput& commandOutput)
      : options(std::move(adoptOptions)), session(commandSession), output(commandOutput) {}

  [[nodiscard]] ExitStatus Run();

 private:
  [[nodiscard]] PlexoAdoptRequest MakeRequest() const;
  /// The path of each package, as the user would write it.
  [[nodiscard]] std::vector<std::string> MakeNames(std::size_t count) const;
  /// Where the packages go; none, with the failure told, if one can't be written there.
  [[nodiscard]] std::optional<std::vector<TzPath>> MakeTargets(const std::vector<std::string>& names,
                                                               ExitStatus& status);
  [[nodiscard]] std::optional<CommandFailure> MakeFolder() const;
  [[nodiscard]] ExitStatus FailBy(const PlexoAdoptResult& result);
  void PrintText(const PlexoAdopter& adopter, const std::vector<std::string>& names,
                 const std::vector<PlexoFinding>& findings);
  void PrintFindings(const std::vector<PlexoFinding>& findings);
  void PrintJson(const PlexoAdopter& adopter, const std::vector<std::string>& names,
                 const std::vector<PlexoFinding>& findings);

  AdoptOptions options;
  CommandSession& session;
  CommandOutput& output;
};
