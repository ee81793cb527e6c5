// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <sys/types.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "host/files/TzPath.h"

/// How a program ended and what it wrote.
struct ProgramResult {
  /// Exit status; -1 if a signal ended it.
  int status = -1;
  int signal = 0;
  std::string out;
  std::string err;
};

/// Runs a built program as a user would.
class ProgramRun {
 public:
  ProgramRun(const std::string& program, const std::vector<std::string>& programArguments);

  ProgramRun& In(const TzPath& workingFolder);
  ProgramRun& With(const std::string& variable, const std::string& value);
  /// Called in the new process before the program starts; only async-signal-safe calls.
  ProgramRun& Prepare(std::function<void()> action);

  ProgramResult Run();
  void Start();
  [[nodiscard]] bool HasEnded();
  void Signal(int signal) const;
  ProgramResult Wait();

 private:
  std::vector<std::string> arguments;
  std::string folder = ".";
  std::map<std::string, std::string> variables;
  std::function<void()> preparation;
  pid_t process = -1;
  int out = -1;
  int err = -1;
  int waitStatus = 0;
  bool hasEnded = false;
};
