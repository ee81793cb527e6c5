// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "apps/cli/CommandOutput.h"
#include "apps/cli/CommandSession.h"
#include "check/PlexoPackageChecker.h"

struct CheckOptions {
  /// `List` prints the findings that there are, and looks at no package.
  enum class Task { Check, List } task = Task::Check;
  std::string package;
  /// The id of a finding whose script is printed instead of the findings; empty for none.
  std::string witness;
  /// The least severity that fails a package.
  enum class Failing { Errors, Warnings } failing = Failing::Errors;
  /// `Short` shows some findings of each kind.
  enum class Extent { Short, Everything } extent = Extent::Short;
};

/// `plexo check`: says whether a SCORM package will work.
class CheckCommand {
 public:
  CheckCommand(const CheckOptions& checkOptions, CommandSession& commandSession, CommandOutput& commandOutput)
      : options(checkOptions), session(commandSession), output(commandOutput) {}

  [[nodiscard]] ExitStatus Run();

 private:
  [[nodiscard]] ExitStatus PrintWitness(const std::vector<PlexoFinding>& findings);
  void PrintText(const PlexoCheckResult& result);
  void PrintKind(const std::vector<const PlexoFinding*>& findings);
  void PrintBriefly(const std::vector<const PlexoFinding*>& findings);
  void PrintJson(const PlexoCheckResult& result);

  CheckOptions options;
  CommandSession& session;
  CommandOutput& output;
};
