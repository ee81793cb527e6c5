// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

/// What the program's exit status says. `Interrupted` is no status: the program then ends by the signal that
/// interrupted it.
enum class ExitStatus : int {
  Done = 0,
  /// The course or an input file was refused.
  Refused = 1,
  /// The command line or the course file is wrong.
  Usage = 2,
  /// The machine failed: no space, no permission.
  Machine = 3,
  /// A package that was checked has faults.
  Findings = 3,
  Interrupted = 130,
};

/// Why a command couldn't go on.
struct CommandFailure {
  ExitStatus status = ExitStatus::Refused;
  /// What it is about, in the user's own words: a file, a place in a file, an option.
  std::string subject;
  std::string message;
  /// What can be seen of the cause, one thing each.
  std::vector<std::string> reasons;
};
