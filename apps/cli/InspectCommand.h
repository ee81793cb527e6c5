// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>

#include "adopt/PlexoAdopter.h"
#include "apps/cli/CommandOutput.h"
#include "apps/cli/CommandSession.h"
#include "core/PlexoSCOManifest.h"
#include "host/files/TzPath.h"
#include "intake/PlexoXMLParser.h"

struct InspectOptions {
  std::string package;
  /// "1.2" or "2004": read as a course of this version does; empty for the version that the manifest names.
  std::string scormVersion;
};

/// `plexo inspect`: says what a course takes from a SCO package: what the manifest reader makes of it, or
/// what adoption gives where a course adopts it first.
class InspectCommand {
 public:
  InspectCommand(const InspectOptions& inspectOptions, CommandSession& commandSession,
                 CommandOutput& commandOutput)
      : options(inspectOptions), session(commandSession), output(commandOutput) {}

  [[nodiscard]] ExitStatus Run();

 private:
  struct Reading {
    /// Every text that the manifest lacks is empty.
    PlexoSCOManifest manifest;
    PlexoParseFailure failure = PlexoParseFailure::NONE;
    bool hasFailed = false;
  };

  /// What the manifest reader makes of the package; of one that a course adopts first, beside the adoption.
  [[nodiscard]] ExitStatus TellReading(const PlexoAdopter& adopter, const PlexoAdoptResult& adoption);
  [[nodiscard]] ExitStatus FailWithoutFolder();
  [[nodiscard]] std::optional<CommandFailure> ExtractManifest(const TzPath& manifestFile);
  [[nodiscard]] static Reading Read(const TzPath& manifestFile, const std::string& courseVersion);
  void PrintText(const Reading& reading);
  void PrintAdoption(const PlexoAdopter& adopter, const PlexoAdoptResult& adoption);
  void PrintJson(const Reading& reading, const PlexoAdopter& adopter, const PlexoAdoptResult& adoption);
  [[nodiscard]] ExitStatus ExplainFailure(const Reading& reading, const TzPath& manifestFile,
                                          const std::string& courseVersion);
  [[nodiscard]] CommandFailure DescribeRefusal(const PlexoAdoptResult& adoption);

  InspectOptions options;
  CommandSession& session;
  CommandOutput& output;
};
