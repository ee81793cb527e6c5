// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstring>

#include "support/FileSystemUnderTest.h"

/// What every implementation of the boundary promises.
class FileSystemTest : public testing::TestWithParam<FileSystemKind> {
 protected:
  /// A folder, an empty one, a file in each and one that is read-only.
  void MakeTree() {
    WriteFile(At("folder/inner"), "inner");
    WriteFile(At("file"), "file");
    WriteFile(At("locked"), "locked");
    EXPECT_EQ(files.MakeFolder(At("empty")), kTzSuccess);
    EXPECT_EQ(files.SetReadOnly(At("locked"), true), kTzSuccess);
  }

  /// The path in the system's own bytes, and so with every slash and point in it.
  [[nodiscard]] TzPath At(const std::string& path) const {
    return TzPath::FromNative(tested.Folder().GetNative() + "/" + path);
  }

  /// The operation fails with this `errno`; 0 if it is to succeed.
  static void ExpectError(TzErrorCodeEnum result, int error) {
    const int told = errno;
    EXPECT_EQ(result, error == 0 ? kTzSuccess : kTzFailure);
    if (error != 0) {
      EXPECT_EQ(told, error) << strerrorname_np(told);
    }
  }

  static std::string ReadSome(TzReadStream& stream, std::size_t size) {
    std::string text(size, '\0');
    const std::ptrdiff_t count = stream.Read(std::as_writable_bytes(std::span(text)));
    EXPECT_GE(count, 0);
    text.resize(static_cast<std::size_t>(std::max<std::ptrdiff_t>(count, 0)));
    return text;
  }

  FileSystemUnderTest tested{GetParam()};
  TzFileSystem& files = tested.Files();
  const std::string longest = std::string(NAME_MAX, 'n');
  const std::string tooLong = std::string(NAME_MAX + 1, 'n');
  const std::vector<std::string> wholeTree = {"empty/", "file", "folder/", "folder/inner", "locked"};
};
