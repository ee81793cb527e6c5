// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <map>

#include "host/text/ITzStringDictionary.h"

/// The dictionary in memory. A translation wins over the default of its key, in whatever order they come.
class TzStringDictionary : public ITzStringDictionary {
 public:
  void RegisterDefault(const char* key, const char* text) override;
  [[nodiscard]] TzString GetString(const TzString& key) const override;
  [[nodiscard]] bool HasString(const TzString& key) const override;

  void RegisterTranslation(const TzString& key, const TzString& text);
  /// Number of keys that have a default.
  [[nodiscard]] std::size_t GetDefaultCount() const { return defaults.size(); }

 private:
  std::map<TzString, TzString> defaults;
  std::map<TzString, TzString> translations;
};
