// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <mutex>

#include "host/files/TzArchiveHold.h"
#include "host/files/TzFileSystem.h"

/// The files in force, but one kind of operation fails from its n-th call on. In force itself for its
/// lifetime.
class FaultyFileSystem : public TzFileSystem {
 public:
  enum class Operation {
    List,
    MakeFolder,
    Delete,
    Copy,
    Move,
    OpenRead,
    Read,
    OpenWrite,
    Write,
    Close,
    AddEntries
  };

  /// Calls are counted from 1, over all files and threads.
  FaultyFileSystem(Operation operation, int firstFailure, int errorNumber);
  ~FaultyFileSystem() override;
  FaultyFileSystem(const FaultyFileSystem&) = delete;
  FaultyFileSystem& operator=(const FaultyFileSystem&) = delete;

  TzNodeKind GetKind(const TzPath& path) override { return files.GetKind(path); }
  TzErrorCodeEnum List(const TzPath& folder, std::vector<TzListedNode>& entries) override;
  TzErrorCodeEnum MakeFolder(const TzPath& folder) override;
  TzErrorCodeEnum Delete(const TzPath& path) override;
  TzErrorCodeEnum Copy(const TzPath& source, const TzPath& target, TzCopyMode mode) override;
  TzErrorCodeEnum Move(const TzPath& source, const TzPath& target) override;
  std::uint64_t GetSize(const TzPath& file) override { return files.GetSize(file); }
  bool IsReadOnly(const TzPath& file) override { return files.IsReadOnly(file); }
  TzErrorCodeEnum SetReadOnly(const TzPath& file, bool readOnly) override {
    return files.SetReadOnly(file, readOnly);
  }
  std::unique_ptr<TzReadStream> OpenRead(const TzPath& file) override;
  std::unique_ptr<TzWriteStream> OpenWrite(const TzPath& file) override;
  TzErrorCodeEnum MakeScratchFolder(const TzPath& folder) override;
  std::shared_ptr<TzArchiveHold> MakeHold(const TzPath& folder) override { return files.MakeHold(folder); }
  TzErrorCodeEnum AddEntries(const TzPath& folder, const std::shared_ptr<const TzArchiveHold>& hold,
                             std::span<const TzZipEntry> entries) override;
  std::optional<TzHeldEntry> GetHeldEntry(const TzPath& file) override { return files.GetHeldEntry(file); }
  TzPath GetRealFile(const TzPath& file) override { return files.GetRealFile(file); }

  /// Counts a call; true, with `errno` set, if it is to fail.
  bool Fails(Operation called);

 private:
  TzFileSystem& files;
  TzFileSystem* previous;
  Operation failing;
  int callsBefore;
  int error;
  std::mutex mutex;
};
