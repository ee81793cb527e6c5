// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "host/files/TzFileSystem.h"

/// The files of the machine itself.
class TzDiskFileSystem final : public TzFileSystem {
 public:
  [[nodiscard]] TzNodeKind GetKind(const TzPath& path) override;
  [[nodiscard]] TzErrorCodeEnum List(const TzPath& folder, std::vector<TzListedNode>& entries) override;
  [[nodiscard]] TzErrorCodeEnum MakeFolder(const TzPath& folder) override;
  [[nodiscard]] TzErrorCodeEnum Delete(const TzPath& path) override;
  [[nodiscard]] TzErrorCodeEnum Copy(const TzPath& source, const TzPath& target, TzCopyMode mode) override;
  [[nodiscard]] TzErrorCodeEnum Move(const TzPath& source, const TzPath& target) override;
  [[nodiscard]] std::uint64_t GetSize(const TzPath& file) override;
  [[nodiscard]] bool IsReadOnly(const TzPath& file) override;
  [[nodiscard]] TzErrorCodeEnum SetReadOnly(const TzPath& file, bool readOnly) override;
  [[nodiscard]] std::unique_ptr<TzReadStream> OpenRead(const TzPath& file) override;
  [[nodiscard]] std::unique_ptr<TzWriteStream> OpenWrite(const TzPath& file) override;
};
