// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "apps/author/CoursePlayer.h"
#include "apps/author/CourseReader.h"
#include "shell/LoadedComponent.h"
#include "support/ScoZip.h"

namespace {

// A program with a screen has the component as a library, whose models and types are its own.
TEST(LoadedCourse, IsPlayedIntoTheLibraryAndReadOffIt) {
  TestFolder desk;
  TestSession session(TzHeadlessUI::Script::Strict);
  AuthorUserInterface author(session.ui);
  TzSession::Install({.dictionary = &session.dictionary,
                      .userInterface = &author,
                      .windows = &session.windows,
                      .problems = &session});
  LoadedComponent component;
  component->Start();
  component->RegisterStrings();

  CourseDocument course;
  course.courseTemplate = CourseTemplate::TestRollup;
  course.identifier = "Loaded";
  course.title = "Loaded";
  course.version = "2.0";
  course.duration = "00:45:30";
  course.forceSequence = true;
  course.intake = CourseIntake::AsIs;
  for (const char* name : {"a", "b", "c"}) {
    const ListedFile file{.name = name, .path = ScoZip(name).File("index.htm", name).Save(desk.Path())};
    course.modules.push_back({std::string("Module ") + name, "33", true, file, {file}, file});
  }
  EXPECT_TRUE(CoursePlayer(author).Play(course).refusals.empty());
  EXPECT_EQ(CourseReader(author).Read(), course);

  author.Forget();
  component->Stop();
  EXPECT_NO_THROW(session.ui.CheckFinished());
}

}  // namespace
