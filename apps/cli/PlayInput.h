// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <optional>
#include <string>

/// The lines of a script, read as they come: from a file, or from a person or program at standard input.
class PlayInput {
 public:
  /// Longer than any line that means something.
  static constexpr std::size_t kMaxLineBytes = 200'000;

  /// Opens the file; standard input for an empty name or "-".
  explicit PlayInput(const std::string& file);
  ~PlayInput();
  PlayInput(const PlayInput&) = delete;
  PlayInput& operator=(const PlayInput&) = delete;

  /// Without its end; nothing at the end of the input, after an interruption and after a failure.
  [[nodiscard]] std::optional<std::string> ReadLine();
  /// Why the input can't be read; empty if it can.
  [[nodiscard]] const std::string& GetFailure() const { return failure; }
  [[nodiscard]] bool IsStandardInput() const { return isStandardInput; }
  /// A person is asked.
  [[nodiscard]] bool IsTerminal() const;

 private:
  /// False at the end of the input.
  bool Fill();

  bool isStandardInput;
  int descriptor = -1;
  std::string buffer;
  std::size_t position = 0;
  bool isAtEnd = false;
  std::string failure;
};
