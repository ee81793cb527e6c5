// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <iosfwd>
#include <memory>

#include "host/files/TzDiskFileSystem.h"
#include "host/files/TzStagedFileSystem.h"
#include "support/TestSession.h"

/// The implementations of the boundary to files.
enum class FileSystemKind { Disk, Staged };

std::ostream& operator<<(std::ostream& stream, FileSystemKind kind);

/// One of the implementations, with an empty folder whose content it keeps in its own way. In force for its
/// lifetime; of several, the last.
class FileSystemUnderTest {
 public:
  explicit FileSystemUnderTest(FileSystemKind fileSystemKind);
  ~FileSystemUnderTest();
  FileSystemUnderTest(const FileSystemUnderTest&) = delete;
  FileSystemUnderTest& operator=(const FileSystemUnderTest&) = delete;

  [[nodiscard]] TzFileSystem& Files() { return *files; }
  [[nodiscard]] bool IsStaged() const { return kind == FileSystemKind::Staged; }
  /// The folder; in a staged file system a scratch folder.
  [[nodiscard]] const TzPath& Folder() const { return folder; }
  /// A folder of the disk beside it.
  [[nodiscard]] TzPath Outside() const { return place.Path() / "outside"; }

 private:
  FileSystemKind kind;
  TestFolder place;
  TzPath folder = place.Path() / "folder";
  TzDiskFileSystem disk;
  std::unique_ptr<TzFileSystem> files;
  TzFileSystem* previous;
};

/// What stands below a folder of the disk, in whatever way it is kept: names relative to it, sorted.
std::vector<std::string> ListDisk(const TzPath& folder);
/// The content of a file of the disk; a test failure if there is none.
std::string ReadFromDisk(const TzPath& file);
bool StandsOnDisk(const TzPath& path);
