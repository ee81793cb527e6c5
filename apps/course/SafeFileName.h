// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>

#include "host/files/TzPath.h"
#include "host/text/TzString.h"

/// Names of files that a package can carry. A file's base name becomes a folder of the package, and the
/// manifest refers to that folder by the same letters, without escapes: '#' and '?' would end such a
/// reference, '%' starts an escape, brackets and braces are invalid there, and some systems can't hold the
/// folder.
class SafeFileName {
 public:
  /// The characters of the base name that a package can't carry, each once and in quotes; empty if there are
  /// none.
  static std::string DescribeUnsafe(const TzString& baseName);
  /// The base name with '_' for each such character.
  static TzString Make(const TzString& baseName);

  /// A way to the file that has a safe name: its own path, or that of a link in a temporary folder. None,
  /// with a problem reported, if the link can't be made.
  static std::optional<TzPath> Provide(const TzPath& file);
};
