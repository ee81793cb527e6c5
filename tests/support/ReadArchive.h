// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "host/files/TzPath.h"

/// What an independent reader makes of an archive of the disk.
class ReadArchive {
 public:
  explicit ReadArchive(const TzPath& path);
  ReadArchive(const ReadArchive&) = delete;
  ReadArchive& operator=(const ReadArchive&) = delete;
  ~ReadArchive();

  [[nodiscard]] bool IsOpen() const { return archive != nullptr; }
  /// In the archive's order; none if it isn't open.
  [[nodiscard]] std::vector<std::string> Names() const;
  [[nodiscard]] bool IsDeflated(const std::string& name) const;
  [[nodiscard]] std::uint64_t Size(const std::string& name) const;
  [[nodiscard]] std::string Content(const std::string& name) const;
  /// The entry's data as the archive holds it.
  [[nodiscard]] std::string Packed(const std::string& name) const;

 private:
  [[nodiscard]] std::string Read(const std::string& name, std::uint64_t size, unsigned flags) const;

  struct zip* archive;
};
