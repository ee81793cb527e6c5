// SPDX-License-Identifier: Apache-2.0
#include "sequencer/PlexoStateFormat.h"

#include <gtest/gtest.h>

#include <cmath>

#include "sequencer/CourseText.h"
#include "sequencer/PlexoSequencer.h"

namespace {

std::shared_ptr<const PlexoSequencingDefinition> MakeCourse(std::size_t scos) {
  std::vector<std::string> lines{"root flow"};
  for (std::size_t number = 0; number < scos; ++number) lines.push_back("  sco" + std::to_string(number));
  return CourseText::Parse(lines);
}

}  // namespace

TEST(PlexoStateFormat, TakesNineBytesAtMostForAScoWithAScore) {
  const PlexoSequencer sequencer(MakeCourse(200));
  PlexoSequencingState state = sequencer.NewState();
  const auto& course = sequencer.GetDefinition();
  EXPECT_LT(PlexoStateFormat::Write(course, state).size(), 20U);
  sequencer.Request(state, {PlexoNavigation::Start});
  EXPECT_LT(PlexoStateFormat::Write(course, state).size(), 30U);
  for (int number = 0; number < 199; ++number) {
    PlexoRunTimeData data;
    data.whole.measure = PlexoMeasure(number / 200.0);
    sequencer.Record(state, data);
    sequencer.Request(state, {PlexoNavigation::Continue});
  }
  EXPECT_LT(PlexoStateFormat::Write(course, state).size(), 200U * 9);
}

TEST(PlexoStateFormat, RefusesDamageAndOtherCourses) {
  const PlexoSequencer sequencer(
      CourseText::Parse({"root flow shuffle=once select=2 selectTiming=once", "  a", "  b", "  c"}));
  PlexoSequencingState state = sequencer.NewState(7);
  sequencer.Request(state, {PlexoNavigation::Start});
  const auto& course = sequencer.GetDefinition();
  const auto bytes = PlexoStateFormat::Write(course, state);
  ASSERT_EQ(PlexoStateFormat::Read(course, bytes), state);
  for (std::size_t length = 0; length < bytes.size(); ++length)
    EXPECT_FALSE(PlexoStateFormat::Read(course, std::span(bytes).first(length)).has_value()) << length;
  auto doubled = bytes;
  doubled[doubled.size() - 2] = doubled[doubled.size() - 3];
  EXPECT_FALSE(PlexoStateFormat::Read(course, doubled).has_value()) << "one child twice";
  const auto other = CourseText::Parse({"root", "  a", "  b", "  d"});
  EXPECT_FALSE(PlexoStateFormat::Read(*other, bytes).has_value());
}

TEST(PlexoMeasure, SurvivesBeingStoredInEveryBit) {
  const PlexoSequencer sequencer(MakeCourse(1));
  for (const double number :
       {0.0, -0.0, 1.0, -1.0, 0.1, 1 / 3.0, 0.12345, -0.9999, 1e300, 5e-324, 123456789.25}) {
    PlexoSequencingState state = sequencer.NewState();
    state.objectives[1].rawScore = PlexoMeasure(number);
    const auto read = PlexoStateFormat::Read(sequencer.GetDefinition(),
                                             PlexoStateFormat::Write(sequencer.GetDefinition(), state));
    ASSERT_TRUE(read.has_value()) << number;
    EXPECT_EQ(std::signbit(read->objectives[1].rawScore.GetValue()), std::signbit(number)) << number;
    EXPECT_EQ(read->objectives[1].rawScore.GetValue(), number);
  }
}
