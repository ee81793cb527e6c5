// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "host/files/TzPath.h"

/// The encoding that a document names in its declaration (XML 1.0, 4.3.3).
class PlexoManifestEncoding {
 public:
  /// As the document writes it; empty if it is UTF-8, or part of it, or names none.
  static std::string Find(const TzPath& document);
};
