// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "apps/cli/ProgressBar.h"
#include "host/headless/TzHeadlessUI.h"
#include "host/session/TzConsole.h"
#include "host/session/TzProblem.h"
#include "host/session/TzSession.h"
#include "host/text/TzStringDictionary.h"

/// Keeps the problems that host operations report.
class ProblemList : public ITzProblemSink {
 public:
  void Report(const TzProblem& problem) override { problems.push_back(problem); }
  /// Those since the last call.
  [[nodiscard]] std::vector<TzProblem> Take() { return std::exchange(problems, {}); }

 private:
  std::vector<TzProblem> problems;
};

/// Drops the component's lines: standard output holds a command's results and nothing else, and why a file
/// can't be opened is told with the file's name.
class SilentConsole : public ITzConsole {
 public:
  void WriteOutput(std::string_view /*text*/) override {}
  void WriteError(std::string_view /*text*/) override {}
};

/// The session of one command: in force from its making to its end, which also deletes all temporary files.
/// The PDF library runs as long.
class CommandSession {
 public:
  explicit CommandSession(ProgressBar::Display display);
  ~CommandSession();
  CommandSession(const CommandSession&) = delete;
  CommandSession& operator=(const CommandSession&) = delete;

  [[nodiscard]] TzHeadlessUI& GetUI() { return userInterface; }
  [[nodiscard]] ProgressBar& GetProgressBar() { return progressBar; }
  [[nodiscard]] std::vector<TzProblem> TakeProblems() { return problems.Take(); }
  /// The texts of the boxes that were shown since the last call.
  [[nodiscard]] std::vector<std::string> TakeBoxTexts();
  [[nodiscard]] std::string GetWords(const char* key) const;

 private:
  TzStringDictionary dictionary;
  TzHeadlessUI userInterface;
  ProblemList problems;
  SilentConsole console;
  ProgressBar progressBar;
  TzSession previous;
  std::size_t boxesTaken = 0;
};

/// True if the machine is to blame for one of them.
bool HasMachineFailure(const std::vector<TzProblem>& problems);
