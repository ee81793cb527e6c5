// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>

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

/// `plexo inspect`: says what the manifest reader makes of a SCO package.
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

  [[nodiscard]] ExitStatus FailWithoutFolder();
  [[nodiscard]] std::optional<CommandFailure> ExtractManifest(const TzPath& manifestFile);
  [[nodiscard]] static Reading Read(const TzPath& manifestFile, const std::string& courseVersion);
  void PrintText(const Reading& reading);
  void PrintJson(const Reading& reading);
  [[nodiscard]] ExitStatus ExplainFailure(const Reading& reading, const TzPath& manifestFile,
                                          const std::string& courseVersion);

  InspectOptions options;
  CommandSession& session;
  CommandOutput& output;
};
