// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/files/TzZipUtils.h"
#include "support/FileSystemUnderTest.h"
#include "support/RawZip.h"
#include "support/RecordedProblems.h"

/// Unpacking into a folder of either file system.
class ExtractTest : public testing::TestWithParam<FileSystemKind> {
 protected:
  TzErrorCodeEnum Extract(const std::string& bytes) {
    const TzPath archive = folder.Write("in.zip", bytes);
    recorded.problems.clear();
    recorded.steps.clear();
    return TzZipUtils::ExtractFiles(archive, Out());
  }
  TzErrorCodeEnum Extract(const RawZip& zip) { return Extract(zip.Build()); }

  /// The archive fails with this one problem, and nothing of it stays.
  void ExpectFailure(const std::string& bytes, TzErrorCodeEnum code, const std::string& text) {
    EXPECT_EQ(Extract(bytes), code);
    EXPECT_THAT(recorded.Texts(), testing::ElementsAre(text));
    ExpectNothing();
  }
  void ExpectRefused(const RawZip& zip, const std::string& text) {
    ExpectFailure(zip.Build(), kTzBadContent, text);
  }

  /// The archive unpacks to exactly these files and folders.
  void ExpectTree(const RawZip& zip, const std::vector<std::string>& tree) {
    EXPECT_EQ(Extract(zip), kTzSuccess);
    EXPECT_THAT(recorded.Texts(), testing::IsEmpty());
    EXPECT_THAT(ListTree(Out()), testing::ElementsAreArray(tree));
    DeleteOut();
  }

  /// Neither in the folder, nor on the disk in whatever form, nor beside the archive.
  void ExpectNothing() const {
    EXPECT_THAT(ListTree(tested.Folder()), testing::IsEmpty());
    EXPECT_THAT(ListDisk(tested.Folder()), testing::IsEmpty());
    EXPECT_THAT(ListDisk(folder.Path()), testing::ElementsAre("in.zip"));
  }
  void DeleteOut() { EXPECT_EQ(tested.Files().Delete(Out()), kTzSuccess); }

  [[nodiscard]] TzPath Out() const { return tested.Folder() / "out"; }

  FileSystemUnderTest tested{GetParam()};
  TestFolder folder;
  RecordedProblems recorded;
};
