// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <atomic>
#include <memory>
#include <optional>
#include <shared_mutex>
#include <string>
#include <vector>

#include "host/files/TzFileSystem.h"
#include "host/files/TzStagedTree.h"

/// A file system whose scratch folders are staged trees: a file in them is either a file of the disk or an
/// entry of an archive that is held, packed as it came. Nothing is unpacked to be listed, moved, copied, read
/// as a stream or published. Everything else is the disk's.
///
/// Guarantees: the answers are those of a `TzDiskFileSystem`, but for a file that is read-only, which even a
/// superuser can't write to. A scratch folder stands on the disk under its own path, where it holds, under
/// names that mean nothing, the copies of archives and the files that were written. Paths lead into it only
/// through the path that it was made under. When it is deleted, all of that goes, once streams that are open
/// have been closed.
class TzStagedFileSystem final : public TzFileSystem {
 public:
  /// The disk must outlive this.
  explicit TzStagedFileSystem(TzFileSystem& underlying);
  ~TzStagedFileSystem() override;

  [[nodiscard]] TzNodeKind GetKind(const TzPath& path) override;
  [[nodiscard]] TzErrorCodeEnum List(const TzPath& folder, std::vector<TzListedNode>& entries) override;
  [[nodiscard]] TzErrorCodeEnum MakeFolder(const TzPath& folder) override;
  [[nodiscard]] TzErrorCodeEnum Delete(const TzPath& path) override;
  [[nodiscard]] TzErrorCodeEnum Copy(const TzPath& source, const TzPath& target, TzCopyMode mode) override;
  /// Between a scratch folder and anything else it fails with EXDEV, as between two disks.
  [[nodiscard]] TzErrorCodeEnum Move(const TzPath& source, const TzPath& target) override;
  [[nodiscard]] std::uint64_t GetSize(const TzPath& file) override;
  [[nodiscard]] bool IsReadOnly(const TzPath& file) override;
  [[nodiscard]] TzErrorCodeEnum SetReadOnly(const TzPath& file, bool readOnly) override;
  [[nodiscard]] std::unique_ptr<TzReadStream> OpenRead(const TzPath& file) override;
  [[nodiscard]] std::unique_ptr<TzWriteStream> OpenWrite(const TzPath& file) override;

  [[nodiscard]] TzErrorCodeEnum MakeScratchFolder(const TzPath& folder) override;
  [[nodiscard]] std::shared_ptr<TzArchiveHold> MakeHold(const TzPath& folder) override;
  [[nodiscard]] TzErrorCodeEnum AddEntries(const TzPath& folder,
                                           const std::shared_ptr<const TzArchiveHold>& hold,
                                           std::span<const TzZipEntry> entries) override;
  [[nodiscard]] std::optional<TzHeldEntry> GetHeldEntry(const TzPath& file) override;
  [[nodiscard]] TzPath GetRealFile(const TzPath& file) override;

 private:
  struct Scratch;
  struct Spot;

  /// Whether the path leads into a scratch folder, be it deleted by now. Once true, it stays so.
  bool IsStaged(const TzPath& path);
  /// Of a path that does. Called, like what follows, by whoever has the lock.
  Spot FindSpot(const TzPath& path);
  TzErrorCodeEnum Clear(Scratch& scratch);
  /// Clears the scratch folders that a folder of the disk holds, which is about to be deleted. Takes the
  /// lock.
  void ClearScratchesBelow(const TzPath& folder);
  TzPath MakeStoragePath(const Scratch& scratch);
  /// A new node with the content of a file of any kind. Null on failure.
  std::unique_ptr<TzStagedNode> ShareContent(const TzPath& source, Scratch& target);
  TzPath FindRealFile(const Spot& spot);

  TzFileSystem& disk;
  std::shared_mutex mutex;
  std::vector<std::unique_ptr<Scratch>> scratches;
  std::atomic<std::uint64_t> storedCount = 0;
};
