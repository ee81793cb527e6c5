// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

/// A reference to a file, as a manifest writes it (RFC 3986).
struct PlexoHref {
  /// The entry that it refers to: bases put in front, escapes decoded, "." and ".." resolved, without query
  /// and fragment. Empty for a reference that leads out of the package.
  std::string path;
  /// The same with escapes left as they are, for manifests that write names unescaped.
  std::string rawPath;
  /// On another server.
  bool isExternal = false;
  /// Absolute, or above the package's top.
  bool leavesPackage = false;
  bool hasBackslash = false;
  /// A percent sign that starts no escape, or a bracket.
  bool hasRawCharacters = false;

  /// The text starts with an escape: "%41".
  static bool StartsEscape(std::string_view text);

  /// `base` is what the xml:base attributes around it add up to; it may be empty.
  static PlexoHref Read(std::string_view base, std::string_view href);
};
