// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

/// The cases of tests/sequencer/cases: each a name behind "==", a course, "--" and a session.
struct SessionCase {
  std::string name;
  std::vector<std::string> course;
  std::vector<std::string> session;

  /// In the order of the files' names.
  static std::vector<SessionCase> ReadAll();
};
