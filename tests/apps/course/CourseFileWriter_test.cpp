// SPDX-License-Identifier: Apache-2.0
#include "apps/course/CourseFileWriter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <random>

#include "apps/course/CourseFile.h"
#include "apps/course/CourseJournalFile.h"
#include "apps/course/CourseYamlText.h"
#include "panel/PlexoStrings.h"
#include "support/TestSession.h"

namespace {

using testing::IsEmpty;

class CourseFileWriterTest : public testing::Test {
 protected:
  CourseFileWriterTest() { RegisterDefaultStrings(); }

  [[nodiscard]] ListedFile Listed(const std::string& name) const {
    return {.name = name, .path = TzPath::FromNative(folder.Path().GetNative() + "/" + name)};
  }

  /// Writes the course as a file and as a journal and expects to read it from both.
  void ExpectThereAndBack(const CourseDocument& course) const {
    const std::string path = (folder.Path() / "courses/course.yaml").GetNative();
    ASSERT_FALSE(WriteCourseFile(path, course));
    const CourseFileResult read = ReadCourseDraft(path);
    ASSERT_THAT(read.errors, IsEmpty()) << read.errors[0].message << ReadFile(TzPath::FromNative(path));
    ASSERT_EQ(read.course, course) << ReadFile(TzPath::FromNative(path));

    const std::string journal = (folder.Path() / "courses/journal.yaml").GetNative();
    ASSERT_FALSE(WriteCourseJournal(journal, {course, path, 7}));
    const CourseJournalResult kept = ReadCourseJournal(journal);
    ASSERT_THAT(kept.errors, IsEmpty()) << kept.errors[0].message;
    ASSERT_EQ(kept.entry.course, course);
    ASSERT_EQ(kept.entry.courseFile, path);
  }

  TestSession session;
  TestFolder folder;
};

TEST_F(CourseFileWriterTest, APersonLikesToReadIt) {
  CourseDocument course;
  course.courseTemplate = CourseTemplate::TestRollup;
  course.identifier = "My_Course_1";
  course.title = "Fire safety";
  course.description = "What to do: when it burns\nand after";
  course.version = "1.0";
  course.duration = "01:30:00";
  course.subject = "yes";
  course.forceSequence = true;
  course.intake = CourseIntake::AsIs;
  course.modules.resize(2);
  course.modules[0] = {"Doors", "50", true, Listed("courses/pre.zip"), {}, Listed("shared/post test.zip")};
  course.modules[0].content = {Listed("courses/media/a.zip"),
                               {.name = "b", .path = TzPath(TzString("/b#1.zip")), .title = "Doors, exits"}};
  course.modules[0].postTest->title = "Test";
  const std::string path = (folder.Path() / "courses/course.yaml").GetNative();
  std::filesystem::create_directories(folder.Path().GetNative() + "/courses");
  EXPECT_EQ(FormatCourse(course, path, CoursePaths::Relative), R"(template: test-rollup
scorm: "2004"
identifier: My_Course_1
title: Fire safety
description: "What to do: when it burns\nand after"
version: "1.0"
duration: "01:30:00"
subject: "yes"
force-sequence: true
intake: as-is
modules:
  - title: Doors
    weightage: 50
    force-content-sequence: true
    pretest: pre.zip
    content:
      - media/a.zip
      - {file: "/b#1.zip", title: "Doors, exits"}
    post-test: {file: ../shared/post test.zip, title: Test}
  - content: []
)");
  ExpectThereAndBack(course);
}

TEST_F(CourseFileWriterTest, WhateverATextHoldsIsReadAgain) {
  static constexpr const char* kPieces[] = {
      "a",    "Z",    "0",       "1.5",    " ",      "  ",     "\n",     "\r\n",   "\t",
      "\"",   "'",    "\\",      ":",      ": ",     " #",     "#",      "- ",     "-",
      "?",    "!",    "&",       "*",      "|",      ">",      "%",      "@",      "`",
      "{",    "}",    "[",       "]",      ",",      "~",      "null",   "true",   "No",
      "\x01", "\x7f", "\u00e4",  "\u0085", "\u00a0", "\u2028", "\ufeff", "\ufffe", "\U0001F525",
      "---",  "...",  "\\u0041", "<<",     "=",      "0x1F"};
  std::filesystem::create_directories(folder.Path().GetNative() + "/courses");
  std::mt19937 random(20240614);
  const auto pick = [&](std::size_t count) { return static_cast<std::size_t>(random()) % count; };
  const auto text = [&] {
    std::string made;
    for (std::size_t count = pick(6); count > 0; --count) made += kPieces[pick(std::size(kPieces))];
    return made;
  };
  const auto file = [&] { return Listed((pick(2) == 0 ? "courses/x" : "x") + text() + ".zip"); };
  for (int round = 0; round < 60; ++round) {
    CourseDocument course;
    course.courseTemplate = CourseTemplate::TestRollup;
    course.identifier = "C";
    course.title = text();
    course.description = text();
    course.subject = text();
    course.version = text();
    course.intake = CourseIntake::AsIs;
    course.modules.resize(pick(3));
    for (CourseModule& module : course.modules) {
      module = {text(), std::to_string(pick(101)), pick(2) == 0, file(), {file(), file()}, std::nullopt};
    }
    ASSERT_NO_FATAL_FAILURE(ExpectThereAndBack(course)) << "round " << round;
  }
}

TEST_F(CourseFileWriterTest, AFileThatCantBeWrittenLeavesTheEarlierOne) {
  CourseDocument course;
  course.identifier = "C";
  const std::string path = folder.Write("courses/course.yaml", "earlier").GetNative();
  course.files = {Listed("caf\xe9.zip")};
  EXPECT_EQ(WriteCourseFile(path, course).value().GetText(),
            folder.Path().GetNative() +
                "/caf\ufffd.zip: its path isn't UTF-8, so that no course file can name it; rename the file");
  EXPECT_EQ(ReadFile(TzPath::FromNative(path)), "earlier");
  course.files.clear();
  EXPECT_EQ(WriteCourseFile(folder.Path().GetNative() + "/none/c.yaml", course).value().message,
            "can't write: No such file or directory");
  EXPECT_EQ(WriteCourseFile(folder.Path().GetNative(), course).value().code, kTzMachineFailure);
}

TEST_F(CourseFileWriterTest, ThroughALinkedFolderPathsThatClimbAreAbsolute) {
  namespace fs = std::filesystem;
  const fs::path root = folder.Path().GetNative();
  fs::create_directories(root / "real/deep/courses");
  fs::create_directory_symlink(root / "real/deep/courses", root / "courses");
  CourseDocument course;
  course.files = {Listed("x.zip"), Listed("courses/y.zip")};
  EXPECT_THAT(FormatCourse(course, (root / "courses/c.yaml").native(), CoursePaths::Relative),
              testing::EndsWith("files:\n  - " + WriteYamlText((root / "x.zip").native()) + "\n  - y.zip\n"));
}

TEST(CourseYamlText, StandsAsItIsOnlyWhereEveryReaderTakesItForThatText) {
  for (const char* plain : {"Fire safety", "a-b_c.zip", "../x/a (1).zip", "/home/me/a.zip"}) {
    EXPECT_EQ(WriteYamlText(plain), plain);
  }
  for (const char* quoted :
       {"", "2004", "1.2.zip", "No", "null", "a: b", "a #b", "- a", "a ", "x=1", "01:30:00"}) {
    EXPECT_EQ(WriteYamlText(quoted), "\"" + std::string(quoted) + "\"");
  }
}

}  // namespace
