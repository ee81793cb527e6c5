// SPDX-License-Identifier: Apache-2.0
#include "apps/cli/WorkingFolder.h"

#include <filesystem>

#include "CliTest.h"

namespace {

class WorkingFolderTest : public CliTest {
 protected:
  WorkingFolderTest() {
    ScoZip("intro").Item("Intro", "index.htm").File("index.htm", "").Save(Work());
    WriteCourse("intro.zip");
  }

  ProgramResult BuildIn(const std::string& given) const {
    return Plexo({"build", "course.yaml", "-o", "out.zip", "--force", "--working-folder", given});
  }
};

TEST_F(WorkingFolderTest, PutsTheCourseTogetherInAGivenFolder) {
  EXPECT_EQ(BuildIn("kept/here").status, 0);
  EXPECT_TRUE(Exists("kept/here/Linear/intro/index.htm"));
  EXPECT_TRUE(Exists("kept/here/imsmanifest.xml"));

  const ProgramResult again = BuildIn("kept");
  EXPECT_EQ(again.status, 2);
  EXPECT_EQ(again.err, "kept: isn't empty; the working folder must be new or empty\n");
}

TEST_F(WorkingFolderTest, LeavesNothingInTheGivenFolderOfACourseThatIsRefused) {
  WriteCourse("intro.zip, intro.zip");
  std::filesystem::create_directory((Work() / "empty").GetNative());
  std::filesystem::create_symlink("empty", (Work() / "link").GetNative());
  for (const char* given : {"new", "empty", "empty/deep/er/", "link"}) {
    EXPECT_EQ(BuildIn(given).status, 1) << given;
    EXPECT_FALSE(Exists("new"));
    EXPECT_TRUE(Exists("empty"));
    EXPECT_TRUE(ListTree(Work() / "empty").empty()) << given;
  }
  WriteCourse("intro.zip");
  EXPECT_EQ(BuildIn("link").status, 0);
  EXPECT_TRUE(Exists("empty/imsmanifest.xml"));
}

}  // namespace
