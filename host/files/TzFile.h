// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "host/files/TzPath.h"

/// Attributes of a file or folder.
enum class TzFileAttribute { IsFile, IsFolder, ReadOnly };

/// A file or folder by its path, whether it exists or not.
class TzFile {
 public:
  TzFile() = default;
  explicit TzFile(TzPath location) : path(std::move(location)) {}

  [[nodiscard]] const TzPath& GetPath() const { return path; }
  /// True for a file and for a folder.
  [[nodiscard]] bool Exists() const;
  /// False for everything that doesn't exist.
  [[nodiscard]] bool GetAttribute(TzFileAttribute attribute) const;
  /// Only `ReadOnly` can be set; false if that failed.
  bool SetAttribute(TzFileAttribute attribute, bool value) const;
  /// Makes a folder at the path, with its parents if `withParents`. True if the folder stands afterwards.
  [[nodiscard]] bool MakeDirectory(bool withParents) const;

 private:
  TzPath path;
};
