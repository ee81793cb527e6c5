// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <map>
#include <set>
#include <utility>

#include "host/files/TzPath.h"
#include "host/text/ITzStringDictionary.h"

struct TzTranslation;

/// The dictionary in memory. A translation wins over the default of its key, in whatever order they come.
class TzStringDictionary : public ITzStringDictionary {
 public:
  void RegisterDefault(const char* key, const char* text) override;
  [[nodiscard]] TzString GetString(const TzString& key) const override;
  [[nodiscard]] bool HasString(const TzString& key) const override;
  [[nodiscard]] TzString TranslateText(const TzString& text) const override;

  void RegisterTranslation(const TzString& key, const TzString& text);
  /// Speaks this language from the next look-up on: all earlier translations go.
  void SetTranslation(const TzTranslation& translation);
  /// The same with the language of a file (`TzTranslationFile`). False, with a problem reported and all words
  /// as they were, if the file can't be taken.
  [[nodiscard]] bool LoadTranslations(const TzPath& file);

  /// The default texts by key.
  [[nodiscard]] const std::map<TzString, TzString>& GetDefaults() const { return defaults; }
  /// Number of keys that have a default.
  [[nodiscard]] std::size_t GetDefaultCount() const { return defaults.size(); }

 private:
  std::map<TzString, TzString> defaults;
  /// The defaults the other way round: text, key.
  std::set<std::pair<TzString, TzString>> keysByText;
  std::map<TzString, TzString> translations;
  std::map<TzString, TzString> textTranslations;
};
