// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "host/files/TzArchiveHold.h"
#include "host/files/TzFileSystem.h"
#include "host/files/TzZipFailure.h"

/// A file or folder that becomes an entry.
struct TzZipSource {
  /// As the archive holds it; a folder's ends with a slash.
  std::string name;
  TzPath path;
  bool isFolder = false;
  std::uint64_t size = 0;
  /// Set if the data is packed already.
  std::optional<TzHeldEntry> held = std::nullopt;

  /// The bytes that have to be read to pack it.
  [[nodiscard]] std::uint64_t GetWork() const { return held.has_value() ? held->packedSize : size; }
};

/// What goes into an archive: gathered from the disk, named, and put in order.
///
/// Guarantees: an archive of these sources is one that `TzZipUtils::ExtractFiles` takes.
class TzZipSources {
 public:
  /// Takes a file, or a folder with everything below it, under the name relative to the base path.
  TzZipFailure Add(const TzPath& path, const TzPath& basePath);
  /// Takes a file under its bare name.
  TzZipFailure AddAtTop(const TzPath& path);
  /// Puts "imsmanifest.xml" first and the rest in the order of their bytes, and drops what was added twice.
  TzZipFailure Arrange();
  /// Takes empty folders too. Called before the first `Add`.
  void KeepEmptyFolders() { keepsEmptyFolders = true; }

  [[nodiscard]] const std::vector<TzZipSource>& GetSources() const { return sources; }
  [[nodiscard]] std::uint64_t GetTotalWork() const;

 private:
  TzZipFailure AddNode(const TzPath& path, TzNodeKind kind, const std::string& name);
  TzZipFailure AddFile(const TzPath& path, const std::string& name);
  TzZipFailure AddFolder(const TzPath& path, const std::string& name);

  bool keepsEmptyFolders = false;
  std::vector<TzZipSource> sources;
};
