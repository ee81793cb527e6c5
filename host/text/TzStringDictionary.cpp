// SPDX-License-Identifier: Apache-2.0
#include "host/text/TzStringDictionary.h"

#include "host/text/TzTranslationFile.h"

void TzStringDictionary::RegisterDefault(const char* key, const char* text) {
  const auto [entry, isNew] = defaults.try_emplace(key);
  if (!isNew) keysByText.erase({entry->second, entry->first});
  entry->second = text;
  keysByText.emplace(entry->second, entry->first);
}

void TzStringDictionary::RegisterTranslation(const TzString& key, const TzString& text) {
  translations[key] = text;
}

void TzStringDictionary::SetTranslation(const TzTranslation& translation) {
  translations.clear();
  textTranslations.clear();
  for (const auto& [key, word] : translation.words) translations[key] = word.text;
  for (const auto& [text, word] : translation.texts) textTranslations[text] = word.text;
}

bool TzStringDictionary::LoadTranslations(const TzPath& file) {
  const auto translation = TzTranslationFile::Read(file);
  if (translation) SetTranslation(*translation);
  return translation.has_value();
}

TzString TzStringDictionary::GetString(const TzString& key) const {
  if (const auto translated = translations.find(key); translated != translations.end()) {
    return translated->second;
  }
  const auto entered = defaults.find(key);
  return entered != defaults.end() ? entered->second : key;
}

bool TzStringDictionary::HasString(const TzString& key) const {
  return translations.contains(key) || defaults.contains(key);
}

TzString TzStringDictionary::TranslateText(const TzString& text) const {
  if (const auto own = textTranslations.find(text); own != textTranslations.end()) return own->second;
  for (auto each = keysByText.lower_bound({text, {}}); each != keysByText.end() && each->first == text;
       ++each) {
    if (const auto found = translations.find(each->second); found != translations.end()) return found->second;
  }
  return text;
}
