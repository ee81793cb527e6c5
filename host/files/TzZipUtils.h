// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "host/files/TzPath.h"
#include "host/session/TzErrorCode.h"

/// Reads and writes ZIP archives (PKWARE APPNOTE 6.3, with ZIP64).
///
/// Calls block, may use all cores, and report their progress to the session. Why one failed goes to the
/// session's problem sink, as one problem whose subject is the archive or the archive and its entry.
class TzZipUtils {
 public:
  /// Lets the folder, which is made with its parents and must not exist before, hold everything in the
  /// archive. Below a scratch folder nothing is unpacked: a private copy of the archive is kept there, from
  /// which the files are read, so that it doesn't matter what becomes of the archive.
  ///
  /// Names are UTF-8 where the archive says so, or was written on Unix or macOS and they are well-formed,
  /// else CP437; a back-slash separates as a slash does; empty components and "." are dropped. The archive is
  /// refused as a whole (`kTzBadContent`), before anything is written, if
  /// - an entry's name is absolute, holds "..", a drive letter, a control character or a device name (CON,
  ///   NUL, COM1 ..., whatever follows the point), or is longer than 4000 bytes, 255 a component, or deeper
  ///   than 256 levels, or its attributes say that it is a link or a device;
  /// - two entries have one name, or one is a file where another needs a folder;
  /// - entries overlap, lie outside the archive, or a local header disagrees with the directory;
  /// - an entry is encrypted, or packed in a way other than stored or deflated;
  /// - it holds more than `kMaximumEntries` entries, or unpacks to more than `kMaximumRatio` times its size
  ///   while that is more than `kRatioFloor` bytes;
  /// - it is truncated or no ZIP at all.
  /// What is written, unpacked or as it is, must fit into the free space of the disk, else it is
  /// `kTzMachineFailure`, likewise before anything is written. All entries are checked in parallel against
  /// their length and CRC-32. If one fails, or the progress sink stops the call, nothing stays.
  [[nodiscard]] static TzErrorCodeEnum ExtractFiles(const TzPath& archive, const TzPath& folder);

  /// Likewise, but where nothing is unpacked, the files are read from the archive itself, without a copy, and
  /// checked while the caller goes on: for a tool that packs them at once. `ZipFiles` waits for the check
  /// before it replaces its target. It fails, and names this archive, if an entry isn't what it should be, or
  /// if the archive was written to meanwhile.
  [[nodiscard]] static TzErrorCodeEnum BorrowFiles(const TzPath& archive, const TzPath& folder);

  /// Unpacks the one entry of this name (as written by `ExtractFiles`: slashes, no "./") into the file, which
  /// is replaced. The same rules hold for the whole archive. `kTzFailure` if there is no such entry.
  [[nodiscard]] static TzErrorCodeEnum ExtractFile(const TzPath& archive, const TzString& entryName,
                                                   const TzPath& file);

  /// Writes an archive of these files and folders (a folder with everything under it), under their names
  /// relative to the base path. `flag` 1 stores folders that are empty; 0 drops them. `extra` are further
  /// files, stored at the top under their bare names.
  ///
  /// A link or a device among them, two files for one name, and a name that `ExtractFiles` wouldn't take are
  /// `kTzBadContent`.
  ///
  /// The archive is reproducible: "imsmanifest.xml" first, then by the bytes of the names; the time of every
  /// entry is SOURCE_DATE_EPOCH, or the first that the format knows (1980-01-01); names are UTF-8 with
  /// slashes; the same files give the same bytes whatever the number of cores. What doesn't shrink is stored.
  /// An entry of a held archive that wasn't written to goes in as it is packed there.
  ///
  /// The target is replaced in one step when the new archive is complete and on the disk. Until then it stays
  /// as it was, and a failed, stopped or killed call leaves nothing beside it, where the file system can keep
  /// an unnamed file; elsewhere a killed call leaves a hidden file with a name of its own.
  [[nodiscard]] static TzErrorCodeEnum ZipFiles(const std::vector<TzPath>& files, const TzPath& target,
                                                const TzPath& basePath, int flag,
                                                const std::vector<TzPath>& extra);

  static constexpr std::size_t kMaximumEntries = 1'000'000;
  static constexpr std::uint64_t kMaximumRatio = 200;
  static constexpr std::uint64_t kRatioFloor = 256ULL << 20U;
};
