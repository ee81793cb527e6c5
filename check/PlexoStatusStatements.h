// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string_view>

/// Counts the places in a script that set a status: the status's name, a comma, and its value. A script that
/// reports completion in more places than success has one that reports completion alone. So has one that sets
/// the single status of SCORM 1.2 to anything but a result.
class PlexoStatusStatements {
 public:
  /// A word, without what is around it; and a character between words.
  void TakeWord(std::string_view word);
  void TakeOther(char character);

  [[nodiscard]] bool StatesSuccess() const { return successes > 0; }
  [[nodiscard]] bool CompletesAlone() const { return lessonCompletes || completions > successes; }

 private:
  enum class Status { None, Completion, Success, Lesson };

  void Count(std::string_view value);

  Status named = Status::None;
  bool hasComma = false;
  std::size_t completions = 0;
  std::size_t successes = 0;
  bool lessonCompletes = false;
};
