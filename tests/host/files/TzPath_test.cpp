// SPDX-License-Identifier: Apache-2.0
#include "host/files/TzPath.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

TEST(PathTest, AppendsComponentsSeparatedEitherWay) {
  const struct {
    const char* path;
    const char* components;
    const char* joined;
  } rows[] = {
      {"/home", "a/b", "/home/a/b"}, {"/home/", "a\\b.htm", "/home/a/b.htm"}, {"/", "a", "/a"},
      {"", "a//./b/", "a/b"},        {"/home", "../x", "/home/../x"},         {"/home", "", "/home"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ((TzPath(row.path) / row.components).GetNative(), row.joined)
        << row.path << " / " << row.components;
  }
}

TEST(PathTest, KnowsItsParents) {
  EXPECT_EQ(TzPath("/home/a/b").GetParentTzPath(), TzPath("/home/a"));
  EXPECT_EQ(TzPath("/home/a/b").GetParentTzPath(-2), TzPath("/home"));
  EXPECT_EQ(TzPath("/home").GetParentTzPath(), TzPath("/"));
  EXPECT_TRUE(TzPath("bare").GetParentTzPath().IsEmpty());
  EXPECT_EQ(TzPath("/home/a.zip").GetFileName(), "a.zip");
  EXPECT_THAT(TzPath("/home//a").GetComponents(), testing::ElementsAre("home", "a"));
}

TEST(PathTest, KeepsBytesThatAreNoText) {
  const TzPath path = TzPath::FromNative("/a\xFF");
  EXPECT_EQ(path.GetNative(), "/a\xFF");
  EXPECT_EQ(path.GetString(), "/a\uFFFD");
}

}  // namespace
