// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

/// Takes the lines that a component writes for whoever watches the process. A program whose own results go to
/// standard output puts one into its session, so that they aren't spoiled.
class ITzConsole {
 public:
  virtual ~ITzConsole() = default;
  virtual void WriteOutput(std::string_view text) = 0;
  virtual void WriteError(std::string_view text) = 0;
};

/// Hand a text to the session's console; without one, to the standard output and error of the process.
void TzWriteOutput(std::string_view text);
void TzWriteError(std::string_view text);
