// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

#include "host/files/TzByteBuffer.h"
#include "host/files/TzFileDescriptor.h"
#include "host/files/TzPath.h"
#include "host/files/TzWriteBehind.h"

/// A file under construction that takes the place of another in one step.
///
/// Guarantees: until `Commit` the target stays as it was; a file that is dropped before leaves nothing
/// behind. It has no name until then, so that even a killed process leaves nothing, where the file system can
/// keep such files. Elsewhere, and for the instant in which an existing target is replaced, it is a hidden
/// file ".NAME.plexo-XXXXXX" in the target's folder. False from an operation leaves `errno` telling why.
class TzReplacementFile {
 public:
  explicit TzReplacementFile(TzPath replaced) : target(std::move(replaced)) {}
  TzReplacementFile(const TzReplacementFile&) = delete;
  TzReplacementFile& operator=(const TzReplacementFile&) = delete;
  ~TzReplacementFile();

  /// Makes the file. False too if the target is a folder.
  [[nodiscard]] bool Create();
  [[nodiscard]] bool Append(std::span<const std::byte> bytes);
  /// Appends a part of another file, inside the system where that can be. False, without an `errno`, if that
  /// file is shorter.
  [[nodiscard]] bool AppendFrom(const TzFileDescriptor& source, std::uint64_t offset, std::uint64_t bytes);
  /// Overwrites bytes that were appended before.
  [[nodiscard]] bool Overwrite(std::uint64_t offset, std::span<const std::byte> bytes);
  /// Forgets everything from this offset on.
  [[nodiscard]] bool Truncate(std::uint64_t newSize);
  [[nodiscard]] std::uint64_t GetSize() const { return size; }
  /// Brings the content to the disk and gives it the target's name. A target that is replaced passes its
  /// permissions on.
  [[nodiscard]] bool Commit();

  /// The folder in which the file is made.
  [[nodiscard]] const std::string& GetFolder() const { return folder; }

 private:
  /// Room for so many bytes more, behind what was gathered; there must be as much.
  std::span<std::byte> Gather(std::size_t bytes);
  /// Sends on its way what was gathered.
  [[nodiscard]] bool Send();
  /// Likewise, and waits until all of it has been written.
  [[nodiscard]] bool Flush();
  /// Lets the disk begin with what was handed to the system, so that the end needn't wait for all of it.
  void StartWriting();
  [[nodiscard]] bool CreateNamed();
  [[nodiscard]] bool TakeName();
  [[nodiscard]] bool SyncFolder() const;
  [[nodiscard]] std::string MakeHiddenPath() const;

  TzPath target;
  std::string folder;
  /// Empty while the file has no name.
  std::string hiddenPath;
  TzFileDescriptor file;
  TzWriteBehind writer{file};
  /// The end of the file, which isn't on its way yet.
  TzByteBuffer gathered;
  std::size_t gatheredCount = 0;
  std::uint64_t size = 0;
  /// Up to where the disk has begun.
  std::uint64_t begunSize = 0;
};
