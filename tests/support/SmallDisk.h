// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>

#include "support/TestSession.h"

/// A file system of its own with room for this many bytes, seen by this process and those that it starts, for
/// the length of a test.
class SmallDisk {
 public:
  explicit SmallDisk(std::size_t bytes);
  ~SmallDisk();
  SmallDisk(const SmallDisk&) = delete;
  SmallDisk& operator=(const SmallDisk&) = delete;

  /// False where mounting isn't permitted; such a test is skipped.
  [[nodiscard]] bool IsMounted() const { return isMounted; }
  [[nodiscard]] const TzPath& Path() const { return folder.Path(); }

 private:
  TestFolder folder;
  bool isMounted;
};
