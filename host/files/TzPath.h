// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <compare>
#include <iosfwd>
#include <string>
#include <vector>

#include "host/text/TzString.h"

/// Where a file or folder is. Holds the bytes that the system knows the path by, so that a name which isn't
/// UTF-8 still reaches its file.
///
/// Guarantees: a path is kept as it was given, but without a slash at its end; nothing is resolved against
/// the disk.
class TzPath {
 public:
  TzPath() = default;
  /// A path written as text.
  explicit TzPath(const TzString& path);
  /// A path in the system's own bytes.
  static TzPath FromNative(std::string native);

  [[nodiscard]] bool IsEmpty() const { return native.empty(); }
  [[nodiscard]] const std::string& GetNative() const { return native; }
  /// As text; bytes that aren't UTF-8 become U+FFFD.
  [[nodiscard]] TzString GetString() const;

  /// Appends components, separated by slashes or back-slashes, and returns this path. Empty components and
  /// "." add nothing; ".." is appended as it stands.
  TzPath& Append(const TzString& components);

  /// The path without its last component, empty for a bare name. `levels` counts components from the end,
  /// negative: -1 is the parent, -2 the parent's parent.
  [[nodiscard]] TzPath GetParentTzPath(int levels = -1) const;
  /// The last component.
  [[nodiscard]] TzString GetFileName() const;
  /// The components in order; an absolute path has none for its root.
  [[nodiscard]] std::vector<TzString> GetComponents() const;

  // clang-tidy 14 takes the 0 in what this generates for a null pointer.
  // NOLINTNEXTLINE(modernize-use-nullptr)
  auto operator<=>(const TzPath& other) const = default;

 private:
  std::string native;
};

/// A copy of the path with components appended.
TzPath operator/(TzPath folder, const TzString& components);
std::ostream& operator<<(std::ostream& stream, const TzPath& path);
