// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

#include "host/files/TzZipDeflater.h"

/// Packs sources in parallel and writes them in their order, whatever order they are ready in.
///
/// Guarantees: what is read or packed but not yet written stays below a fixed number of bytes.
class TzZipPacker {
 public:
  /// The sources must outlive this.
  TzZipPacker(const std::vector<TzZipSource>& arranged, TzZipProgress& counter)
      : sources(arranged), progress(counter) {}

  /// Writes all entries. Stops at the first, in order, that fails.
  TzZipFailure Pack(TzZipWriter& writer);

 private:
  class Window;

  void Work(Window& window) const;
  TzZipFailure Write(Window& window, TzZipWriter& writer);
  [[nodiscard]] TzZipFailure ConfirmHolds() const;
  TzZipFailure WriteHeld(const TzZipSource& source, TzZipWriter& writer);
  TzZipFailure WriteOne(std::size_t index, Window& window, TzZipDeflater& deflater, TzZipWriter& writer);

  const std::vector<TzZipSource>& sources;
  TzZipProgress& progress;
  /// The hold from which data was copied last, and its file: what lies in one folder often comes from one
  /// hold.
  std::shared_ptr<const TzArchiveHold> hold;
  TzFileDescriptor heldFile;
};
