// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <memory>

#include "host/files/TzFile.h"
#include "host/files/TzFileSystem.h"

/// Opens files as streams.
class TzStreamUtil {
 public:
  /// Null if the file can't be opened.
  static std::unique_ptr<TzReadStream> CreateFileStreamRead(const TzFile& file);
  /// Makes the file or empties it; null, with a problem reported, if that can't be done. `mode`, `creator`
  /// and `type` matter on systems whose files carry them; the disk ignores them.
  static std::unique_ptr<TzWriteStream> CreateFileStreamWrite(const TzFile& file, int mode,
                                                              std::uint32_t creator, std::uint32_t type);
};
