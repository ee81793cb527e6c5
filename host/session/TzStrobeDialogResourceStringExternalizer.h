// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

#include "host/text/TzString.h"

/// Hands the dictionary's words to a player, which can't look them up itself.
class TzStrobeDialogResourceStringExternalizer {
 public:
  /// A document with the keys and their texts in the order given:
  /// `<strings><string key="kPlexoError">Plexo Error</string></strings>`. Without a dictionary a text is its
  /// key, as for a key that the dictionary lacks.
  [[nodiscard]] TzString GetXMLForResourceStrings(const std::vector<TzString>& keys) const;
};
