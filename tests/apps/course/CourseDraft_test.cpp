// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "apps/course/CourseFile.h"
#include "panel/PlexoStrings.h"
#include "support/TestSession.h"

namespace {

using testing::IsEmpty;
using testing::SizeIs;

class CourseDraftTest : public testing::Test {
 protected:
  CourseDraftTest() {
    RegisterDefaultStrings();
    folder.Write("a.zip", "");
  }

  [[nodiscard]] std::string Write(const std::string& text) const {
    return folder.Write("course.yaml", text).GetNative();
  }

  TestSession session;
  TestFolder folder;
};

TEST_F(CourseDraftTest, WhatACourseLacksOnItsWayIsFineForEditingAlone) {
  const std::string start = "identifier: C\ntemplate: ";
  for (const std::string lines : {
           "multiple-scos",
           "multiple-scos\nfiles: []",
           "multiple-scos\nfiles: [gone.zip]",
           "multiple-scos\nfiles: [notes.txt]",
           "test-rollup",
           "test-rollup\nmodules: [{title: A}, {weightage: 0}, {weightage: 33.3}, {content: [], post-test: "
           "a.zip}]",
       }) {
    const std::string path = Write(start + lines + "\n");
    EXPECT_THAT(ReadCourseDraft(path).errors, IsEmpty()) << lines;
    EXPECT_THAT(ReadCourseFile(path).errors, testing::Not(IsEmpty())) << lines;
  }
}

TEST_F(CourseDraftTest, WhatIsNoCourseFileIsRefusedForEditingToo) {
  for (const std::string text : {
           "identifier: C\n",
           "template: multiple-scos\n",
           "template: multiple-scos\nidentifier: C\nfils: []\n",
           "template: multiple-scos\nidentifier: C\nmodules: []\n",
           "template: simple-remediation\nidentifier: C\nmodules: [{pretest: a.zip}]\n",
           "template: simple-remediation\nidentifier: C\nmodules: [{weightage: 100.1}]\n",
           "template: simple-remediation\nidentifier: C\nmodules: [{content: a.zip}]\n",
           "template: multiple-scos\nidentifier: C\nfiles: [",
       }) {
    EXPECT_THAT(ReadCourseDraft(Write(text)).errors, SizeIs(1)) << text;
  }
}

TEST_F(CourseDraftTest, AListedFileThatIsGoneIsKeptAndMarked) {
  const auto files = ReadCourseDraft(Write("template: multiple-scos\nidentifier: C\n"
                                           "files: [a.zip, {file: sub/../gone.zip, item: X}]\n"))
                         .course.files;
  ASSERT_THAT(files, SizeIs(2));
  EXPECT_FALSE(files[0].isMissing);
  EXPECT_TRUE(files[1].isMissing);
  EXPECT_EQ(files[1].path, folder.Path() / "gone.zip");
  EXPECT_EQ(files[1].item, "X");
}

TEST_F(CourseDraftTest, AReadingThatIsStoppedSaysSo) {
  const std::string path = Write("template: multiple-scos\nidentifier: C\n");
  const auto errors = ReadCourseDraft(path, [] { return true; }).errors;
  ASSERT_THAT(errors, SizeIs(1));
  EXPECT_EQ(errors[0].fault, CourseFault::Stopped);
}

}  // namespace
