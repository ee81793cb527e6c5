// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <map>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "host/files/TzArchiveHold.h"
#include "host/files/TzPath.h"
#include "host/files/TzZipDirectory.h"

/// A file of the disk that is content of a staged tree, under a name that means nothing. It goes with its
/// last owner.
class TzStoredFile {
 public:
  explicit TzStoredFile(TzPath place) : path(std::move(place)) {}
  TzStoredFile(const TzStoredFile&) = delete;
  TzStoredFile& operator=(const TzStoredFile&) = delete;
  ~TzStoredFile();

  [[nodiscard]] const TzPath& GetPath() const { return path; }

 private:
  TzPath path;
};

/// A folder or file of a staged tree. Content is shared by copies and never changed: a file that is written
/// gets new content.
struct TzStagedNode {
  using Folder = std::map<std::string, std::unique_ptr<TzStagedNode>, std::less<>>;
  using Stored = std::shared_ptr<const TzStoredFile>;

  std::variant<Folder, Stored, TzHeldEntry> content;
  /// A held entry that was unpacked because a library wanted a path.
  Stored unpacked = nullptr;
  bool isReadOnly = false;

  [[nodiscard]] Folder* AsFolder() { return std::get_if<Folder>(&content); }
  [[nodiscard]] bool IsFolder() const { return std::holds_alternative<Folder>(content); }
};

/// Folders and files by their names, as a file system of Unix holds them, but in memory.
///
/// Guarantees: an operation that fails changes nothing and leaves `errno` telling why, with the value that
/// the disk would give. Paths are relative to the tree; "." and ".." count as they do on a disk, but ".."
/// never leads above the top.
class TzStagedTree {
 public:
  /// Null if there is none.
  TzStagedNode* Find(std::string_view path);
  /// A new node of this name, in place of a file that stands there. Null if a folder does, or if there is no
  /// folder to make it in.
  TzStagedNode* Put(std::string_view path, std::unique_ptr<TzStagedNode> node);
  /// Takes out a node with everything below it. Null if there is none, with ENOENT, or if it is a folder that
  /// the path leads back to.
  std::unique_ptr<TzStagedNode> Take(std::string_view path);
  void Clear() { top = {}; }
  /// As `rename` does.
  bool Move(std::string_view source, std::string_view target);
  /// Puts the entries, with the folders that they lie in, into this folder of the tree. Their names are those
  /// of a checked archive, which agree with each other and with an empty folder.
  static void Fill(TzStagedNode::Folder& folder, const std::shared_ptr<const TzArchiveHold>& hold,
                   std::span<const TzZipEntry> entries);

 private:
  struct Place;

  /// The folder that a path's last name stands in; `errno` if there is none.
  bool Locate(std::string_view path, Place& place);

  TzStagedNode top;
};
