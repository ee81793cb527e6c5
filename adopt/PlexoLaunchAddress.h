// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

/// The address of a page, as a manifest or a script holds it (RFC 3986): a path, then what the page is given.
class PlexoLaunchAddress {
 public:
  /// The address with an item's launch parameters (SCORM 2004 Content Aggregation Model, item: the rule for
  /// `parameters`; SCORM 1.2 says the same in fewer words).
  static std::string AddParameters(std::string address, std::string_view parameters);

  /// The query and the fragment, from their "?" or "#" on; empty without.
  static std::string_view GetSuffix(std::string_view address);
  /// True if the suffix stays as it is when it is joined as the components of a path.
  static bool IsJoinable(std::string_view suffix);
  /// The suffix with escapes for what an address can't hold; for its slashes too, where joining would lose
  /// some of them.
  static std::string ProtectSuffix(std::string_view suffix);
  /// The name of a file as the path of an address: escapes for what an address can't hold. Characters beyond
  /// ASCII stay (RFC 3987).
  static std::string EncodePath(std::string_view path);
};
