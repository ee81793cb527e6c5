// SPDX-License-Identifier: Apache-2.0
#include "adopt/PlexoLaunchAddress.h"

#include <gtest/gtest.h>

namespace {

TEST(PlexoLaunchAddress, TakesParametersByTheRuleOfTheContentAggregationModel) {
  const struct {
    const char* address;
    const char* parameters;
    const char* whole;
  } cases[] = {
      {"a.htm", "?x=1", "a.htm?x=1"},
      {"a.htm", "x=1", "a.htm?x=1"},
      {"a.htm", "&?&x=1", "a.htm?x=1"},
      {"a.htm?y=2", "?x=1", "a.htm?y=2&x=1"},
      {"a.htm", "#top", "a.htm#top"},
      {"a.htm?y=2", "#top", "a.htm?y=2#top"},
      {"a.htm#own", "#top", "a.htm#own"},
      {"a.htm", "?#top", "a.htm#top"},
      {"a.htm", "", "a.htm"},
      {"a.htm", "?", "a.htm"},
  };
  for (const auto& [address, parameters, whole] : cases) {
    EXPECT_EQ(PlexoLaunchAddress::AddParameters(address, parameters), whole) << address << " " << parameters;
  }
}

TEST(PlexoLaunchAddress, ProtectsWhatJoiningPathsWouldChangeAndWhatNoAddressHolds) {
  const struct {
    const char* suffix;
    const char* safe;
  } cases[] = {
      {"?a=b/c", "?a=b/c"},
      {"#/lesson/1", "#/lesson/1"},
      {"?home=http://x/y", "?home=http:%2F%2Fx%2Fy"},
      {"?path=a/", "?path=a%2F"},
      {"#/./x", "#%2F.%2Fx"},
      {"?file=c:\\x", "?file=c:%5Cx"},
      {"?a=b c", "?a=b%20c"},
      {"?a=100%&b=%2.%zz%41", "?a=100%25&b=%252.%25zz%41"},
      {"?a[]=<1>", "?a%5B%5D=%3C1%3E"},
      {"?a#b#c", "?a#b%23c"},
      {"?語=中", "?語=中"},
  };
  for (const auto& [suffix, safe] : cases) {
    EXPECT_EQ(PlexoLaunchAddress::ProtectSuffix(suffix), safe);
    EXPECT_EQ(PlexoLaunchAddress::ProtectSuffix(safe), safe) << "once is enough";
  }
}

TEST(PlexoLaunchAddress, WritesFileNamesSoThatTheyMeanTheFile) {
  EXPECT_EQ(PlexoLaunchAddress::EncodePath("a b/100%/#1?[x].htm"), "a%20b/100%25/%231%3F%5Bx%5D.htm");
  EXPECT_EQ(PlexoLaunchAddress::EncodePath("第一课/é.htm"), "第一课/é.htm");
}

}  // namespace
