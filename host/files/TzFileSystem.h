// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "host/files/TzPath.h"
#include "host/session/TzErrorCode.h"

class TzArchiveHold;
struct TzHeldEntry;
struct TzZipEntry;

/// What stands at a path.
enum class TzNodeKind { Absent, File, Folder, Other };

/// One entry of a folder, as a full path.
struct TzListedNode {
  TzPath path;
  TzNodeKind kind = TzNodeKind::Absent;
};

enum class TzCopyMode { FailIfExists, Replace };

/// Reads a file from its start to its end.
class TzReadStream {
 public:
  virtual ~TzReadStream() = default;
  /// Fills the buffer as far as the file reaches and returns the number of bytes; 0 at the end, -1 on
  /// failure.
  [[nodiscard]] virtual std::ptrdiff_t Read(std::span<std::byte> buffer) = 0;
};

/// Writes a file from its start. A stream that is dropped without `Close` leaves a file of unknown content.
class TzWriteStream {
 public:
  virtual ~TzWriteStream() = default;
  [[nodiscard]] virtual TzErrorCodeEnum Write(std::span<const std::byte> bytes) = 0;
  /// Hands everything written to the system.
  [[nodiscard]] virtual TzErrorCodeEnum Flush() = 0;
  /// Flushes and closes; reports what went wrong on the way.
  [[nodiscard]] virtual TzErrorCodeEnum Close() = 0;
};

/// The files that the component works on. Everything that `TzFile`, `TzFileUtil`, `TzStreamUtil` and
/// `TzZipUtils` do goes through the one that is installed, so that the working folder can be kept in another
/// way than file by file on the disk, and tests can let any operation fail. Archives that the author chooses
/// or publishes are always files of the disk: they are read from any place in them, and replaced in one step.
///
/// Operations may be called from several threads at once, on different paths. One that fails leaves `errno`
/// telling why, and is `kTzFailure` if what it needs is merely absent, present or of another kind, else
/// `kTzMachineFailure`. A failure of the machine is reported to the session's problem sink by whoever called,
/// not here.
class TzFileSystem {
 public:
  virtual ~TzFileSystem() = default;

  /// The one in force: the disk with staged scratch folders (`TzStagedFileSystem`), unless another was
  /// installed.
  static TzFileSystem& Current();
  /// Puts another in force (null: the first) and returns the one that was. Called while no operation runs.
  static TzFileSystem* Install(TzFileSystem* fileSystem);

  /// What stands at the path itself: a link is `Other`, wherever it points.
  [[nodiscard]] virtual TzNodeKind GetKind(const TzPath& path) = 0;
  /// The entries of one folder, ordered by the bytes of their names; without "." and "..".
  [[nodiscard]] virtual TzErrorCodeEnum List(const TzPath& folder, std::vector<TzListedNode>& entries) = 0;
  /// Makes a folder. One that stands already is fine.
  [[nodiscard]] virtual TzErrorCodeEnum MakeFolder(const TzPath& folder) = 0;
  /// Deletes a file, a link or a folder with everything in it. What is absent is fine. Never follows links.
  [[nodiscard]] virtual TzErrorCodeEnum Delete(const TzPath& path) = 0;
  /// Copies the content of a file; the copy is writable. The target's folder must exist.
  [[nodiscard]] virtual TzErrorCodeEnum Copy(const TzPath& source, const TzPath& target, TzCopyMode mode) = 0;
  /// Moves a file or folder to a place on the same file system, replacing a file there.
  [[nodiscard]] virtual TzErrorCodeEnum Move(const TzPath& source, const TzPath& target) = 0;
  /// Size of a file in bytes, 0 if there is none.
  [[nodiscard]] virtual std::uint64_t GetSize(const TzPath& file) = 0;
  [[nodiscard]] virtual bool IsReadOnly(const TzPath& file) = 0;
  [[nodiscard]] virtual TzErrorCodeEnum SetReadOnly(const TzPath& file, bool readOnly) = 0;

  /// Null if the file can't be opened.
  [[nodiscard]] virtual std::unique_ptr<TzReadStream> OpenRead(const TzPath& file) = 0;
  /// Makes the file or empties it. Null if that can't be done.
  [[nodiscard]] virtual std::unique_ptr<TzWriteStream> OpenWrite(const TzPath& file) = 0;

  /// Makes a folder with the parents that it lacks.
  [[nodiscard]] TzErrorCodeEnum MakeFolders(const TzPath& folder);

  // What follows is for folders whose content is kept in another way than file by file. As it stands here it
  // is right for a disk.

  /// Makes a folder that no other program looks into, so that its content may be kept in any way until it is
  /// deleted.
  [[nodiscard]] virtual TzErrorCodeEnum MakeScratchFolder(const TzPath& folder);
  /// Room for an archive whose entries are to stand below the folder without being unpacked. Null where they
  /// have to be unpacked.
  [[nodiscard]] virtual std::shared_ptr<TzArchiveHold> MakeHold(const TzPath& folder);
  /// Lets the entries of a held archive stand below the folder, which is empty. The folder must be one for
  /// which `MakeHold` gave the hold, and the entries those of a `TzZipDirectory` that checked the hold.
  [[nodiscard]] virtual TzErrorCodeEnum AddEntries(const TzPath& folder,
                                                   const std::shared_ptr<const TzArchiveHold>& hold,
                                                   std::span<const TzZipEntry> entries);
  /// Where the packed bytes of a file lie, if it is an entry of a held archive as it was added.
  [[nodiscard]] virtual std::optional<TzHeldEntry> GetHeldEntry(const TzPath& file);
  /// A file of the disk with the content of this one, for a library that reads files by their path. It is
  /// only read, by that path and not through this boundary, and lasts until the file is written to or
  /// deleted. Empty path if there is no such file, or it can't be made.
  [[nodiscard]] virtual TzPath GetRealFile(const TzPath& file);

  /// The result of an operation that failed with the present `errno`.
  [[nodiscard]] static TzErrorCodeEnum Failed();
};
