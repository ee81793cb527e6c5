// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "host/files/TzPath.h"
#include "host/text/TzTranslation.h"

/// Reads the words of a language: a YAML text of a name and sections.
///
///     name: Deutsch
///     words:                  # by key
///       kPlexoError: "Plexo-Fehler"
///     desktop:                # those of the desktop program, likewise
///       kDesktopQuit: "Beenden"
///     texts:                  # fixed texts, by their English
///       "+ File": "+ Datei"
///
/// A file that breaks this form is refused whole, with a problem whose subject is file and line
/// ("de.yaml:12"). A section may be left out, and an empty text counts as left out. Keys that nobody has a
/// default for are kept: a file may serve programs that differ.
class TzTranslationFile {
 public:
  static std::optional<TzTranslation> Read(const TzPath& file);
  /// The file's name is for problems.
  static std::optional<TzTranslation> ReadText(const std::string& fileName, std::string_view text);
};
