// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <map>

#include "host/text/TzString.h"

/// The words of one language, as a translator wrote them.
struct TzTranslation {
  struct Word {
    TzString text;
    /// Where it stands in its file, from 1.
    int line = 0;
  };

  /// The language's name in the language itself ("Deutsch").
  TzString name;
  /// By key.
  std::map<TzString, Word> words;
  /// Of fixed texts, which have no key, by their English.
  std::map<TzString, Word> texts;

  /// Whether the key is that of a word. Components also enter identifiers and folder names, which must be the
  /// same in every language.
  [[nodiscard]] static bool IsWord(const TzString& key);
};
