// SPDX-License-Identifier: Apache-2.0
#include "sequencer/PlexoSequencer.h"

#include <gtest/gtest.h>

#include "sequencer/CourseText.h"
#include "sequencer/RandomCourse.h"
#include "sequencer/SessionCases.h"
#include "sequencer/SessionScript.h"

TEST(PlexoSequencer, PlaysTheCasesAsTheBookSays) {
  const auto cases = SessionCase::ReadAll();
  ASSERT_GT(cases.size(), 50U);
  for (const SessionCase& one : cases) {
    SCOPED_TRACE(one.name);
    const auto course = CourseText::Parse(one.course);
    if (course == nullptr) continue;
    SessionScript(course).Run(one.session);
  }
}

TEST(PlexoSequencer, SaysBeforehandWhatARequestWillDoInRandomCourses) {
  for (std::uint32_t seed = 0; seed < 250 && !HasFailure(); ++seed) {
    SCOPED_TRACE(seed);
    RandomCourse random(seed);
    const auto definition = random.MakeDefinition();
    const PlexoSequencer sequencer(definition);
    PlexoSequencingState state = sequencer.NewState(seed);
    for (int step = 0; step < 30; ++step) {
      if (random.OneIn(3))
        sequencer.Record(state, random.MakeData());
      else
        sequencer.Request(state, random.MakeRequest(*definition, state));
      SessionScript::CheckOutlook(sequencer, state);
    }
  }
}

TEST(PlexoSequencer, TracesTheProcessesThatARequestPasses) {
  const PlexoSequencer sequencer(CourseText::Parse({"root flow", "  a", "    | skip if always", "  b"}));
  PlexoSequencingState state = sequencer.NewState();
  PlexoSequencingTrace trace;
  sequencer.Request(state, {PlexoNavigation::Start}, &trace);
  std::string numbers;
  for (const PlexoTraceStep& step : trace.GetSteps())
    numbers += std::string(PlexoSequencingTrace::GetNumber(step.process)) + " ";
  EXPECT_EQ(numbers,
            "OP.1 NB.2.1 SB.2.5 SB.2.3 SB.2.1 SB.2.2 UP.2 SB.2.1 SB.2.2 UP.5 DB.1.1 UP.5 UP.5 DB.2 ");
  EXPECT_EQ(trace.GetSteps()[5].activity, 1U);
  EXPECT_EQ(trace.GetSteps()[5].rule, 0U);
  EXPECT_EQ(PlexoSequencingTrace::GetName(PlexoProcess::CheckActivity), "Check Activity Process");
  trace.Clear();
  sequencer.Request(state, {PlexoNavigation::Start}, &trace);
  ASSERT_EQ(trace.GetSteps().size(), 2U);
  EXPECT_EQ(trace.GetSteps()[1].exception, PlexoSequencingException::NB_2_1_1);
}

TEST(PlexoSequencer, RecordsNothingWithoutActiveContent) {
  const PlexoSequencer sequencer(CourseText::Parse({"root flow", "  a", "  b untracked"}));
  PlexoSequencingState state = sequencer.NewState();
  PlexoRunTimeData data;
  data.whole.satisfied = PlexoTruth::True();
  EXPECT_FALSE(sequencer.Record(state, data));
  sequencer.Request(state, {PlexoNavigation::Start});
  EXPECT_TRUE(sequencer.Record(state, data));
  sequencer.Request(state, {PlexoNavigation::Exit});
  const PlexoSequencingState ended = state;
  EXPECT_FALSE(sequencer.Record(state, data));
  EXPECT_EQ(state, ended);
  sequencer.Request(state, {PlexoNavigation::Continue});
  EXPECT_FALSE(sequencer.Record(state, data));
}
