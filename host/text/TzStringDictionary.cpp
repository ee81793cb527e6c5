// SPDX-License-Identifier: Apache-2.0
#include "host/text/TzStringDictionary.h"

void TzStringDictionary::RegisterDefault(const char* key, const char* text) { defaults[key] = text; }

void TzStringDictionary::RegisterTranslation(const TzString& key, const TzString& text) {
  translations[key] = text;
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
