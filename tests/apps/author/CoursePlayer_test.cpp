// SPDX-License-Identifier: Apache-2.0
#include "apps/author/CoursePlayer.h"

#include <gmock/gmock.h>

#include "AuthorTest.h"
#include "apps/author/CourseReader.h"
#include "core/PlexoLinearCourseModel.h"
#include "core/PlexoModuleCourseModel.h"

namespace {

using testing::ElementsAre;
using Outcome = CoursePlayResult::Outcome;

class CoursePlayerTest : public AuthorTest {
 protected:
  [[nodiscard]] CourseDocument Flat(const std::vector<std::string>& names) const {
    CourseDocument course;
    course.identifier = "Flat";
    course.title = "Flat";
    course.intake = CourseIntake::AsIs;
    for (const std::string& name : names) course.files.push_back(Listed(name));
    return course;
  }

  CoursePlayResult Play(const CourseDocument& course) { return CoursePlayer(author).Play(course); }

  /// Each refusal as "name: message".
  std::vector<std::string> RefusalsOf(const CourseDocument& course) {
    std::vector<std::string> lines;
    for (const CoursePlayRefusal& each : Play(course).refusals) {
      lines.push_back(each.subject.substr(each.subject.rfind('/') + 1) + ": " + each.message);
    }
    return lines;
  }
};

TEST_F(CoursePlayerTest, TellsOfEachFileThatThePanelRefusedAndGoesOn) {
  desk.Write("broken.zip", "no archive");
  desk.Write("notes.txt.zip/x", "");
  CourseDocument course = Flat({"gone", "a", "broken", "b", "other/b", "c"});
  course.files[1].item = "LESSON-1";
  course.files.push_back({.name = "n", .path = desk.Write("notes.txt", "")});
  EXPECT_THAT(RefusalsOf(course),
              ElementsAre("gone.zip: doesn't exist",
                          "a.zip: its options ('item', 'completion-passes') are for packages that are "
                          "adopted; the panel takes it as it is",
                          "broken.zip: Error extracting the ZIP contents!",
                          "b.zip: its name is taken by " + File("b").GetNative() + "; rename the file",
                          "notes.txt: the panel doesn't take files of this kind"));
  EXPECT_THAT(Read().files, ElementsAre(Listed("a"), Listed("b"), Listed("c")));
  session.problems.clear();
}

TEST_F(CoursePlayerTest, ModulesAreFilledAsFarAsTheyGo) {
  CourseDocument course;
  course.courseTemplate = CourseTemplate::SimpleRemediation;
  course.identifier = "Draft";
  course.modules.resize(30);
  course.modules[1].weightage = "33.3333";
  course.modules[2].weightage = "0";
  course.modules[2].content = {Listed("a"), Listed("gone"), Listed("b")};
  EXPECT_THAT(
      RefusalsOf(course),
      ElementsAre("module 2: its weightage of 33.3333% became 33%, since the panel takes whole percents",
                  "gone.zip: doesn't exist"));
  const CourseDocument read = Read();
  ASSERT_EQ(read.modules.size(), 30U);
  EXPECT_EQ(read.title, session.dictionary.GetString("kDefaultCourseTitle").GetUTF8String());
  EXPECT_EQ(read.modules[29].title, "Module_30");
  EXPECT_EQ(read.modules[2].weightage, "0");
  EXPECT_THAT(read.modules[2].content, ElementsAre(Listed("a"), Listed("b")));
}

TEST_F(CoursePlayerTest, AModuleCourseSharedEvenlyIsReadyToPublish) {
  CourseDocument course;
  course.courseTemplate = CourseTemplate::SimpleRemediation;
  course.identifier = "Shared";
  course.modules.resize(3);
  EXPECT_TRUE(Play(course).refusals.empty());
  EXPECT_TRUE(GetModuleCourseModel()->HasValidTotalWeightage());
}

TEST_F(CoursePlayerTest, ACourseThatCantBeginLeavesTheTemplateChoice) {
  CourseDocument course = Flat({"a"});
  course.identifier = "no-hyphens";
  const CoursePlayResult result = Play(course);
  EXPECT_EQ(result.outcome, Outcome::Refused);
  ASSERT_EQ(result.refusals.size(), 1U);
  EXPECT_EQ(result.refusals[0].subject, "no-hyphens");
  EXPECT_TRUE(ui.Sees("Multiple SCOs"));
}

TEST_F(CoursePlayerTest, TheCourseThatIsThereGoesWithoutAQuestion) {
  Choose("Multiple SCOs");
  AddFiles({"a"});
  EXPECT_EQ(Play(Flat({"b"})).outcome, Outcome::Opened);
  EXPECT_EQ(Read(), Flat({"b"}));
}

TEST_F(CoursePlayerTest, AStoppedPlayGoesBackToTheTemplateChoice) {
  std::vector<std::string> activities;
  CoursePlayer player(author, [&](const std::string& activity, std::size_t done, std::size_t total) {
    EXPECT_LT(done, total);
    activities.push_back(activity);
    return activities.size() < 3;
  });
  EXPECT_EQ(player.Play(Flat({"a", "b", "c"})).outcome, Outcome::Cancelled);
  EXPECT_THAT(activities, ElementsAre("Flat", "a.zip", "b.zip"));
  EXPECT_TRUE(ui.Sees("Multiple SCOs"));
  EXPECT_FALSE(CourseReader(author).Read().has_value());
}

// The panel has no check box for it, and lends that of another template.
TEST_F(CoursePlayerTest, TheSequenceOfAFlatCourseIsForcedWithoutATrace) {
  CourseDocument forced = Flat({"a"});
  for (const bool wanted : {true, true, false, true}) {
    forced.forceSequence = wanted;
    Play(forced);
    EXPECT_EQ(GetLinearCourseModel()->GetForcedSequence(), wanted);
    EXPECT_EQ(Read().forceSequence, wanted);
    LeaveCourse();
  }
  Choose("Simple Remediation");
  EXPECT_EQ(ui.Read("Force Module Sequence"), "off");
  EXPECT_FALSE(Read().forceSequence);
}

}  // namespace
