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

TEST(PlexoSequencer, TracesTheProcessesThatARequestPassesAndWhatCameOfThem) {
  const PlexoSequencer sequencer(
      CourseText::Parse({"root flow", "  a", "    | skip if always", "  b", "    | retry if always", "  c",
                         "    | disabled if always"}));
  PlexoSequencingState state = sequencer.NewState();
  const PlexoSequencer* asked = &sequencer;
  const auto ask = [&](const PlexoNavigationRequest& request) {
    PlexoSequencingTrace trace;
    asked->Request(state, request, &trace);
    std::string text;
    for (const PlexoTraceStep& step : trace.GetSteps()) {
      text += PlexoSequencingTrace::GetNumber(step.process);
      if (step.activity != kPlexoNone)
        text += "/" + asked->GetDefinition().GetRules(step.activity).identifier;
      if (step.rule != kPlexoNone) text += "#" + std::to_string(step.rule);
      if (step.exception != PlexoSequencingException::None)
        text += "!" + std::string(PlexoExceptionText::GetCode(step.exception));
      text += " ";
    }
    return text;
  };
  EXPECT_EQ(ask({PlexoNavigation::Choice, 3}),
            "OP.1 NB.2.1 SB.2.12 SB.2.9/c SB.2.4/root DB.1.1/c!DB.1.1-3 UP.5/root UP.5/c UP.2/c#0 ");
  EXPECT_EQ(
      ask({PlexoNavigation::Start}),
      "OP.1 NB.2.1 SB.2.5 SB.2.3/root SB.2.1/root SB.2.2/a#0 UP.2/a#0 SB.2.1/a SB.2.2/b UP.5/b DB.1.1/b "
      "UP.5/root UP.5/b DB.2/b ");
  EXPECT_EQ(ask({PlexoNavigation::Start}), "OP.1 NB.2.1/b!NB.2.1-1 ");
  EXPECT_EQ(
      ask({PlexoNavigation::Exit}),
      "OP.1 NB.2.1/b TB.2.3/b UP.4/b RB.1.5/b RB.1.5/root RB.1.1/root RB.1.2.b/root RB.1.4/root RB.1.4/root "
      "RB.1.3.b/root RB.1.4/root RB.1.4/root TB.2.1/b TB.2.2/b#0 UP.2/b#0 SB.2.10/b DB.1.1/b UP.5/root "
      "UP.5/b DB.2/b UP.3/b ");

  const PlexoSequencer closed(CourseText::Parse(
      {"root flow", "  a", "    | disabled if always", "    | hiddenFromChoice if always"}));
  asked = &closed;
  state = closed.NewState();
  EXPECT_EQ(ask({PlexoNavigation::Start}),
            "OP.1 NB.2.1 SB.2.5!SB.2.2-2 SB.2.3/root SB.2.1/root SB.2.2/a#0!SB.2.2-2 UP.5/a UP.2/a#0 ");
  EXPECT_EQ(ask({PlexoNavigation::Choice, 1}), "OP.1 NB.2.1 SB.2.12!SB.2.9-3 SB.2.9/a!SB.2.9-3 UP.2/a#1 ");
  EXPECT_EQ(PlexoSequencingTrace::GetName(PlexoProcess::CheckActivity), "Check Activity Process");
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

TEST(PlexoSequencer, SaysWhoseRuleTookThePlaceOfARequest) {
  const PlexoSequencer sequencer(CourseText::Parse(
      {"root flow", "  m flow", "    | retry if always", "    a", "      | exitParent if always", "  b"}));
  PlexoSequencingState state = sequencer.NewState();
  EXPECT_EQ(sequencer.Request(state, {PlexoNavigation::Start}).redirectedBy, kPlexoNone);
  const PlexoNavigationOutcome outcome = sequencer.Request(state, {PlexoNavigation::Continue});
  EXPECT_EQ(outcome.sequencing, PlexoSequencingRequest::Retry);
  EXPECT_EQ(outcome.redirectedBy, 2U);
  EXPECT_EQ(outcome.delivered, 2U);

  const PlexoSequencer climbing(
      CourseText::Parse({"root flow", "  m flow", "    a", "      | exitParent if always", "  b"}));
  state = climbing.NewState();
  climbing.Request(state, {PlexoNavigation::Start});
  EXPECT_EQ(climbing.Request(state, {PlexoNavigation::Continue}).redirectedBy, kPlexoNone)
      << "it still continues";
}

TEST(PlexoSequencer, RefusesTargetsBeyondTheTree) {
  const PlexoSequencer sequencer(CourseText::Parse({"edition 4", "root flow", "  a"}));
  PlexoSequencingState state = sequencer.NewState();
  sequencer.Request(state, {PlexoNavigation::Start});
  for (const PlexoNavigation kind : {PlexoNavigation::Choice, PlexoNavigation::Jump}) {
    for (const PlexoIndex target : {2U, 3U, kPlexoNone})
      EXPECT_EQ(sequencer.Request(state, {kind, target}).exception, PlexoSequencingException::NB_2_1_11);
  }
}
