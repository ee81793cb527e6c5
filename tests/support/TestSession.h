// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/headless/TzHeadlessUI.h"
#include "host/headless/TzHeadlessWindows.h"
#include "host/session/TzConsole.h"
#include "host/session/TzProblem.h"
#include "host/session/TzSession.h"
#include "host/text/TzStringDictionary.h"

/// A session with all its parts for the length of a test, and empty course models with it. The dictionary
/// holds no texts but those that the test enters: a key without a text reads as the key.
class TestSession : public ITzProblemSink, public ITzConsole {
 public:
  explicit TestSession(TzHeadlessUI::Script script = TzHeadlessUI::Script::Loose);
  ~TestSession() override;
  TestSession(const TestSession&) = delete;
  TestSession& operator=(const TestSession&) = delete;

  void Report(const TzProblem& problem) override { problems.push_back(problem); }
  void WriteOutput(std::string_view text) override { output += text; }
  void WriteError(std::string_view text) override { errors += text; }

  /// The texts of the boxes shown so far.
  [[nodiscard]] std::vector<std::string> BoxTexts() const;

  TzStringDictionary dictionary;
  TzHeadlessUI ui;
  TzHeadlessWindows windows;
  std::vector<TzProblem> problems;
  /// What was written to the console.
  std::string output;
  std::string errors;

 private:
  TzSession previous;
};

/// A new folder that goes with the test.
class TestFolder {
 public:
  TestFolder();
  /// In a folder other than that for temporary files.
  explicit TestFolder(const TzPath& parent);
  ~TestFolder();
  TestFolder(const TestFolder&) = delete;
  TestFolder& operator=(const TestFolder&) = delete;

  [[nodiscard]] const TzPath& Path() const { return path; }
  /// Writes a file of the disk below the folder, with its folders, and returns its path.
  TzPath Write(const std::string& name, std::string_view content) const;

 private:
  TzPath path;
};

/// What follows goes through the file system in force.

/// The whole content of a file; a test failure if it can't be read.
std::string ReadFile(const TzPath& file);
/// Writes a file, with its folders.
void WriteFile(const TzPath& file, std::string_view content);
/// Names of everything below a folder, relative to it, sorted; folders end in a slash.
std::vector<std::string> ListTree(const TzPath& folder);
