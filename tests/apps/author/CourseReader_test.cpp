// SPDX-License-Identifier: Apache-2.0
#include "apps/author/CourseReader.h"

#include <gtest/gtest.h>

#include "AuthorTest.h"

namespace {

TEST_F(AuthorTest, ThereIsNoCourseOnTheTemplateChoice) {
  EXPECT_FALSE(CourseReader(author).Read().has_value());
  ui.OnNextDialog([](TzHeadlessDriver& dialog) { dialog.Press("Cancel"); });
  ui.Press("Multiple SCOs");
  EXPECT_FALSE(CourseReader(author).Read().has_value());
}

TEST_F(AuthorTest, TheTitleIsWhatWasSetLast) {
  Choose("Multiple SCOs");
  EXPECT_EQ(Read().title, "Fire & <safety>");
  ui.Type("", "Typed");
  EXPECT_EQ(Read().title, "Typed");
  ui.Type("", "");
  EXPECT_EQ(Read().title, "");
}

TEST_F(AuthorTest, ModulesThatNobodyHasSeenAreReadWithoutAnythingMoving) {
  Choose("Simple Remediation");
  for (int more = 0; more < 40; ++more) ui.Press("+ Module");
  const std::string seen = ui.See();
  const CourseDocument course = Read();
  ASSERT_EQ(course.modules.size(), 41U);
  EXPECT_TRUE(course.modules[40].title->starts_with("Module_"));
  EXPECT_EQ(course.modules[40].weightage, "100");
  EXPECT_EQ(ui.See(), seen);
}

// The panel keeps one flag for both kinds of modules, and a check box for each.
TEST_F(AuthorTest, TheForcedSequenceIsTheOneThatIsPublished) {
  Choose("Simple Remediation");
  ui.Check("Force Module Sequence");
  ui.Press("New Course");
  Choose("Pre-test or Post-test rollup");
  EXPECT_EQ(ui.Read("Force Module Sequence"), "off");
  EXPECT_TRUE(Read().forceSequence);
  ui.Check("Force Module Sequence");
  ui.Uncheck("Force Module Sequence");
  EXPECT_FALSE(Read().forceSequence);
  ui.Press("New Course");
  Choose("Simple Remediation");
  ui.Uncheck("Force Module Sequence");
}

}  // namespace
