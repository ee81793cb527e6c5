// SPDX-License-Identifier: Apache-2.0
#include "apps/author/CourseJournal.h"

#include <gmock/gmock.h>
#include <sys/wait.h>
#include <unistd.h>

#include "support/TestSession.h"

namespace {

class CourseJournalTest : public testing::Test {
 protected:
  static CourseDocument Course(const std::string& title) {
    CourseDocument course;
    course.identifier = "C";
    course.title = title;
    course.intake = CourseIntake::AsIs;
    course.files = {{.name = "a", .path = TzPath::FromNative("/somewhere/else/a.zip")}};
    return course;
  }

  /// A run of the program that dies with this on its screen.
  void Crash(const std::string& title) const {
    const pid_t child = fork();
    if (child == 0) {
      CourseJournal journal(folder.Path());
      const bool isKept = !journal.NoteChange(Course(title), "/courses/fire.yaml").has_value();
      _exit(isKept ? 0 : 1);
    }
    int status = -1;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
  }

  TestSession session;
  TestFolder folder;
};

TEST_F(CourseJournalTest, WhatACrashLeftIsFoundUntilItIsCleared) {
  Crash("Fire: \"doors\"\nand stairs");
  {
    CourseJournal journal(folder.Path());
    const auto found = journal.Find();
    ASSERT_TRUE(found.has_value());
    EXPECT_EQ(found->course, Course("Fire: \"doors\"\nand stairs"));
    EXPECT_EQ(found->courseFile, "/courses/fire.yaml");
    EXPECT_GT(found->time, 1'600'000'000);
  }
  CourseJournal next(folder.Path());
  ASSERT_TRUE(next.Find().has_value());
  next.Clear();
  EXPECT_FALSE(CourseJournal(folder.Path()).Find().has_value());
}

TEST_F(CourseJournalTest, WorkThatIsntTheLatestIsKeptForAnotherTime) {
  // Of a program that happened to have the number that this one has.
  const TzPath file = folder.Path() / (std::to_string(getpid()) + ".journal.yaml");
  ASSERT_FALSE(WriteCourseJournal(file.GetNative(), {Course("earlier"), std::nullopt, 1}));
  Crash("later");
  for (const char* title : {"later", "earlier"}) {
    CourseJournal journal(folder.Path());
    const auto found = journal.Find();
    ASSERT_TRUE(found.has_value()) << title;
    EXPECT_EQ(found->course.title, title);
    journal.Clear();
  }
}

TEST_F(CourseJournalTest, AProgramThatIsRunningKeepsItsWork) {
  CourseJournal running(folder.Path());
  EXPECT_FALSE(running.NoteChange(Course("running"), std::nullopt));
  EXPECT_FALSE(CourseJournal(folder.Path()).Find().has_value());
  Crash("crashed");
  CourseJournal starting(folder.Path());
  EXPECT_EQ(starting.Find().value().course.title, "crashed");
}

TEST_F(CourseJournalTest, ADamagedJournalIsPassedOver) {
  folder.Write("1.journal.yaml", "time: soon\ncourse: [");
  folder.Write("2.journal.yaml", "course: {template: multiple-scos, identifier: C}\n");
  Crash("whole");
  CourseJournal journal(folder.Path());
  EXPECT_EQ(journal.Find().value().course.title, "whole");
}

TEST_F(CourseJournalTest, WithoutAFolderThereIsNoJournal) {
  const TzPath file = folder.Write("file", "");
  CourseJournal journal(file / "journal");
  EXPECT_TRUE(journal.GetProblem().has_value());
  EXPECT_TRUE(journal.NoteChange(Course("lost"), std::nullopt).has_value());
  EXPECT_FALSE(journal.Find().has_value());
  journal.Clear();
}

}  // namespace
