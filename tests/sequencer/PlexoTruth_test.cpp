// SPDX-License-Identifier: Apache-2.0
#include "sequencer/PlexoTruth.h"

#include <gtest/gtest.h>

#include "sequencer/PlexoMeasure.h"

TEST(PlexoTruth, FollowsThreeValuedLogic) {
  const PlexoTruth t = PlexoTruth::True();
  const PlexoTruth f = PlexoTruth::False();
  const PlexoTruth u = PlexoTruth::Unknown();
  const struct {
    PlexoTruth left, right, both, either;
  } cases[] = {{t, t, t, t}, {t, f, f, t}, {t, u, u, t}, {f, f, f, f}, {f, u, f, u}, {u, u, u, u}};
  for (const auto& [left, right, both, either] : cases) {
    EXPECT_EQ(left & right, both);
    EXPECT_EQ(right & left, both);
    EXPECT_EQ(left | right, either);
    EXPECT_EQ(right | left, either);
  }
  EXPECT_EQ(!t, f);
  EXPECT_EQ(!f, t);
  EXPECT_EQ(!u, u);
}

TEST(PlexoMeasure, ComparesExactlyAndKnowsWhenItCannot) {
  EXPECT_EQ(PlexoMeasure(0.5).IsAtLeast(0.5), PlexoTruth::True());
  EXPECT_EQ(PlexoMeasure(0.5).IsAbove(0.5), PlexoTruth::False());
  EXPECT_EQ(PlexoMeasure(0.5).IsBelow(0.5), PlexoTruth::False());
  for (const PlexoMeasure unknown : {PlexoMeasure(), PlexoMeasure(1 / PlexoMeasure(0).GetValue())}) {
    EXPECT_FALSE(unknown.IsKnown());
    EXPECT_EQ(unknown, PlexoMeasure());
    EXPECT_EQ(unknown.IsAtLeast(-1), PlexoTruth::Unknown());
    EXPECT_EQ(unknown.IsAbove(-1), PlexoTruth::Unknown());
    EXPECT_EQ(unknown.IsBelow(1), PlexoTruth::Unknown());
  }
}
