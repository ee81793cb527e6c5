// SPDX-License-Identifier: Apache-2.0
#include "check/PlexoHref.h"

#include <gtest/gtest.h>

namespace {

TEST(PlexoHref, NamesTheEntryThatItRefersTo) {
  const struct {
    const char* base;
    const char* href;
    const char* path;
  } cases[] = {
      {"", "a/b.htm", "a/b.htm"},           {"", "./a//b/../c.htm", "a/c.htm"},
      {"", "a%20b.htm?x=1#top", "a b.htm"}, {"", "caf%C3%A9.htm", "caf\u00E9.htm"},
      {"", "100%.htm", "100%.htm"},         {"", "a\\b.htm", "a/b.htm"},
      {"lesson/", "b.htm", "lesson/b.htm"}, {"lesson/index.htm", "b.htm", "lesson/b.htm"},
      {"a/b/", "../c.htm", "a/c.htm"},      {"", "", ""},
  };
  for (const auto& [base, href, path] : cases) {
    const PlexoHref read = PlexoHref::Read(base, href);
    EXPECT_EQ(read.path, path) << base << " " << href;
    EXPECT_FALSE(read.isExternal || read.leavesPackage) << href;
  }
}

TEST(PlexoHref, KnowsWhatIsNotInThePackage) {
  for (const char* href : {"http://x/a", "HTTPS://x/a", "//x/a", "data:text/html,x", "file:///a"}) {
    EXPECT_TRUE(PlexoHref::Read("", href).isExternal) << href;
  }
  EXPECT_TRUE(PlexoHref::Read("http://x/", "a.htm").isExternal);
  for (const char* href : {"/a", "../a", "a/../../b", "C:/a", "\\a", "%2e%2e/a"}) {
    EXPECT_TRUE(PlexoHref::Read("", href).leavesPackage) << href;
    EXPECT_EQ(PlexoHref::Read("", href).path, "") << href;
  }
}

}  // namespace
