// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "host/files/TzPath.h"
#include "host/text/TzString.h"

/// What a PDF document is called.
class PlexoPdfTitle {
 public:
  /// The title in the document's information, on one line; the file's base name where it has none that a menu
  /// can show. Never empty for a file with a name.
  [[nodiscard]] static TzString Find(const TzPath& document);
};
