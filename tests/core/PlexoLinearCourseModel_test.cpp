// SPDX-License-Identifier: Apache-2.0
#include "core/PlexoLinearCourseModel.h"

#include <gtest/gtest.h>

#include "support/StagedCourse.h"

TEST(PlexoLinearCourseModel, RemovesByTheIndicesFromBeforeTheRemoval) {
  const struct {
    std::vector<int> indices;
    std::vector<std::string> left;
  } cases[] = {
      {{}, {"0", "1", "2", "3", "4"}},
      {{1, 3}, {"0", "2", "4"}},
      {{0, 1, 2, 3, 4}, {}},
      {{-1, 9}, {"0", "1", "2", "3", "4"}},
      {{0, 3, 9}, {"1", "2", "4"}},
      // Of a list that doesn't ascend each step takes what stands at its index less its number.
      {{3, 3}, {"0", "1", "4"}},
      {{3, 0}, {"0", "1", "2", "4"}},
      // What is out of range is skipped and still shifts what follows.
      {{-1, 1}, {"1", "2", "3", "4"}},
  };
  for (const auto& [indices, left] : cases) {
    PlexoLinearCourseModel course;
    for (const char* name : {"0", "1", "2", "3", "4"}) course.AddSCO(MakeSCO(name));
    course.RemoveSCOs(indices);
    EXPECT_EQ(NamesOf(course.GetSCOs()), left);
  }
}

TEST(PlexoLinearCourseModel, SwapsWithinRangeAndAnswersAnEmptyRecordOutsideIt) {
  PlexoLinearCourseModel course;
  course.AddSCO(MakeSCO("a"));
  course.AddSCO(MakeSCO("b"));
  course.SwapSCOs(0, 1);
  course.SwapSCOs(0, 2);
  course.SwapSCOs(-1, 0);
  EXPECT_EQ(NamesOf(course.GetSCOs()), (std::vector<std::string>{"b", "a"}));
  EXPECT_TRUE(course.GetSCO(2).IsEmpty());
  EXPECT_TRUE(course.GetSCO(-1).IsEmpty());
  course.SetForcedSequence(true);
  course.Clear();
  EXPECT_FALSE(course.GetForcedSequence());
}
