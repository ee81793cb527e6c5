// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

#include "host/files/TzPath.h"

/// The folder of the languages that a program speaks beside English: a translation each, named after the
/// language and, where it matters, the country ("de.yaml", "pt_BR.yaml").
class TzTranslationFolder {
 public:
  struct Language {
    /// The file's name without extension: "de".
    TzString identifier;
    /// In the language itself: "Deutsch".
    TzString name;
  };

  explicit TzTranslationFolder(TzPath location) : folder(std::move(location)) {}
  /// The folder "translations" beside the running program.
  static TzTranslationFolder Installed();

  /// In the order of their identifiers. Translations that can't be read are left out, with a problem
  /// reported.
  [[nodiscard]] std::vector<Language> List() const;

  /// The translation for a language or locale ("de", "de-AT", "de_DE.UTF-8@euro"): that of the country, else
  /// of the language. Empty if there is none, as for English, "C" and what names no language.
  [[nodiscard]] TzPath Find(const TzString& locale) const;

  /// The locale of messages that the system sets for this process; empty if it sets none.
  [[nodiscard]] static TzString GetSystemLocale();

 private:
  TzPath folder;
};
