// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>

#include "host/files/TzPath.h"

/// A folder for the files of a fuzz target, kept in memory where the machine can. One a process; it goes with
/// it.
class FuzzFolder {
 public:
  /// Writes an input as a file of this name, in the place of the one before, and returns its path.
  static TzPath Write(const char* name, const std::uint8_t* data, std::size_t size);
};

/// Ends the process, as a finding, unless the condition holds.
void FuzzRequire(bool holds, const char* invariant);
