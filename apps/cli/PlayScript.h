// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "apps/cli/PlayLine.h"
#include "sequencer/PlexoSequencingDefinition.h"

/// Why a line of a script isn't understood.
struct PlayMistake {
  /// In characters, from 1 on.
  int column = 1;
  std::string message;
};

/// The language of the scripts for `plexo play`: words between blanks, or in double quotes to hold blanks;
/// behind a word that begins with '#' stands a comment. Names are looked up in the course.
class PlayScript {
 public:
  explicit PlayScript(const PlexoSequencingDefinition& course) : definition(course) {}

  /// The line, or nothing and the mistake.
  [[nodiscard]] std::optional<PlayLine> Parse(std::string_view text, int number, PlayMistake& mistake) const;
  /// The words that a line may begin with, and what follows them; a line each.
  [[nodiscard]] static std::vector<std::string> GetHelp();

 private:
  const PlexoSequencingDefinition& definition;
};
