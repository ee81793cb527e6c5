// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "apps/cli/CommandOutput.h"
#include "apps/cli/CommandSession.h"
#include "apps/cli/PlayInput.h"
#include "apps/cli/PlayScript.h"
#include "apps/cli/PlaySession.h"
#include "check/PlexoCheckedPackage.h"

struct PlayOptions {
  std::string package;
  /// Empty or "-" for standard input.
  std::string script;
  /// Of the organization; empty for the default one.
  std::string organization;
  /// Of the selection and the order of randomized items.
  std::uint64_t seed = 0;
};

/// `plexo play`: plays a learner in a SCORM 2004 package, request by request.
class PlayCommand {
 public:
  PlayCommand(const PlayOptions& playOptions, CommandSession& commandSession, CommandOutput& commandOutput)
      : options(playOptions), session(commandSession), output(commandOutput) {}

  [[nodiscard]] ExitStatus Run();

 private:
  [[nodiscard]] std::optional<CommandFailure> ReadManifest(PlexoCheckedPackage& package);
  void PrintNotes(const PlexoSequencingReading& reading);
  [[nodiscard]] ExitStatus Play(const PlexoSequencingReading& reading);
  /// Reads all of a script before any of it is carried out.
  [[nodiscard]] std::optional<CommandFailure> ReadScript(PlayInput& input, const PlayScript& script,
                                                         std::vector<PlayLine>& lines) const;
  /// Carries out what comes from standard input, line by line.
  [[nodiscard]] ExitStatus Converse(PlayInput& input, const PlayScript& script, PlaySession& play);
  /// The status with which the script ends here; nothing if it goes on.
  [[nodiscard]] std::optional<ExitStatus> RunLine(const PlayLine& line, PlaySession& play);
  [[nodiscard]] ExitStatus Finish();
  void PrintAnswer(const PlayLine& line, const PlayAnswer& answer);
  [[nodiscard]] ExitStatus Fail(const CommandFailure& failure);
  [[nodiscard]] CommandFailure DescribeMistake(int line, const PlayMistake& mistake) const;
  [[nodiscard]] std::string GetScriptName() const;

  PlayOptions options;
  CommandSession& session;
  CommandOutput& output;
  bool isTerminal = false;
  std::size_t expectations = 0;
  std::size_t failedExpectations = 0;
};
