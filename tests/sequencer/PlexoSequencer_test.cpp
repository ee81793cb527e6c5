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
  for (std::uint32_t seed = 0; seed < 400 && !HasFailure(); ++seed) {
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
