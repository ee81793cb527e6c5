// SPDX-License-Identifier: Apache-2.0
#include "check/PlexoStatusStatements.h"

void PlexoStatusStatements::TakeWord(std::string_view word) {
  if (named != Status::None && hasComma) Count(word);
  hasComma = false;
  named = Status::None;
  if (word == "cmi.completion_status") named = Status::Completion;
  if (word == "cmi.success_status") named = Status::Success;
  if (word == "cmi.core.lesson_status") named = Status::Lesson;
}

void PlexoStatusStatements::TakeOther(char character) {
  if (named == Status::None) return;
  const bool isBetween = character == '"' || character == '\'' || character == ' ' || character == '\t' ||
                         character == '\r' || character == '\n' || character == '\\';
  if (isBetween) return;
  if (character == ',' && !hasComma) {
    hasComma = true;
    return;
  }
  // An expression that starts with no word.
  if (hasComma) Count({});
  named = Status::None;
  hasComma = false;
}

void PlexoStatusStatements::Count(std::string_view value) {
  // Failing balances nothing: a place that fails may be the other branch of one that passes.
  if (value == "incomplete" || value == "not" || value == "unknown" || value == "browsed" ||
      value == "failed") {
    return;
  }
  if (named == Status::Success || (named == Status::Lesson && value == "passed")) {
    ++successes;
  } else if (named == Status::Completion) {
    ++completions;
  } else {
    lessonCompletes = true;
  }
}
