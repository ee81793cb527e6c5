// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "host/text/TzString.h"

/// The host's dictionary of words: a component enters its default texts under keys, the host may hold
/// translations of them.
class ITzStringDictionary {
 public:
  virtual ~ITzStringDictionary() = default;

  /// Enters the default text of a key, both UTF-8. A key entered again takes the newer text.
  virtual void RegisterDefault(const char* key, const char* text) = 0;

  /// The host's translation of the key, else its default, else the key itself: a missing word then shows in
  /// the place where it is missing.
  [[nodiscard]] virtual TzString GetString(const TzString& key) const = 0;

  /// Whether the key has a text of its own.
  [[nodiscard]] virtual bool HasString(const TzString& key) const { return GetString(key) != key; }

  /// The translation of a text that a component fixes letter by letter: that of the text itself, else that of
  /// the first key whose default it is, else the text. For user interfaces, which show it so; a component
  /// never sees it.
  [[nodiscard]] virtual TzString TranslateText(const TzString& text) const { return text; }
};
