// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include "AuthorTest.h"
#include "apps/author/CourseReader.h"
#include "apps/author/PlacedFiles.h"
#include "core/PlexoLinearCourseModel.h"
#include "core/PlexoModuleCourseModel.h"

namespace {

using testing::ElementsAre;

constexpr const char* kRepeated = "This file has already been added. Rename the file and retry adding.";

/// The files of the component's own course, which a saved one has to name.
std::vector<std::string> PathsOf(const std::vector<PlexoSCOModel>& scos) {
  std::vector<std::string> paths;
  for (const PlexoSCOModel& sco : scos) {
    if (!sco.IsEmpty()) paths.push_back(sco.sourcePath.GetUTF8String());
  }
  return paths;
}

std::vector<std::string> PathsOf(const std::vector<ListedFile>& files) {
  std::vector<std::string> paths;
  for (const ListedFile& file : files) paths.push_back(file.path.GetNative());
  return paths;
}

class CourseSourcesTest : public AuthorTest {
 protected:
  void ExpectListAsInTheModel() const {
    EXPECT_EQ(PathsOf(Read().files), PathsOf(GetLinearCourseModel()->GetSCOs()));
  }
};

TEST_F(CourseSourcesTest, AFlatCourseNamesTheFilesOfTheModel) {
  desk.Write("broken.zip", "no archive");
  desk.Write("with, comma.zip", ReadFile(File("h")));
  Choose("Multiple SCOs");
  AddFiles({"a", "with, comma"});
  // Alone it becomes a row without a file, behind another one that row's file once more.
  ui.AnswerNextBox(kRepeated, kTzButtonOk);
  AddFiles({"other/a"});
  ui.AnswerNextBox(kRepeated, kTzButtonOk);
  AddFiles({"c", "other/a", "d"});
  // What follows a refused file isn't tried.
  ui.AnswerNextBox("Error extracting the ZIP contents!", kTzButtonOk);
  AddFiles({"e", "broken", "f"});
  ExpectListAsInTheModel();
  EXPECT_EQ(PathsOf(Read().files).size(), 6U);

  ui.SelectRows({0});
  ui.Press("movedown.png");
  ui.SelectRows({2, 4});
  ui.Press("deleteswf.png");
  ui.AnswerNextChooser({});
  ui.Press("+ File");
  ExpectListAsInTheModel();
  LeaveCourse();
  Choose("Multiple SCOs");
  AddFiles({"g"});
  ExpectListAsInTheModel();
  session.problems.clear();
}

TEST_F(CourseSourcesTest, AModuleNamesTheFilesOfTheModel) {
  Choose("Pre-test or Post-test rollup");
  ui.Press("+ Module");
  AddTo(0, kPreTestButton, {"a"});
  AddTo(1, kPreTestButton, {"a"});
  // A repeated test takes the slot's file out.
  ui.AnswerNextBox(kRepeated, kTzButtonOk);
  AddTo(0, kPreTestButton, {"other/a"});
  AddTo(0, kPostTestButton, {"b"});
  AddTo(0, kPostTestButton, {"c"});
  AddTo(0, kContentButton, {"d", "e"});
  ui.AnswerNextBox(kRepeated, kTzButtonOk);
  AddTo(0, kContentButton, {"other/d"});
  ui.AnswerNextBox(kRepeated, kTzButtonOk);
  AddTo(0, kContentButton, {"f", "other/e", "g"});

  const CourseModule module = Read().modules.at(0);
  EXPECT_FALSE(module.preTest.has_value());
  EXPECT_EQ(module.postTest, Listed("c"));
  PlexoModuleCourseModel& course = *GetModuleCourseModel();
  EXPECT_EQ(PathsOf(module.content), PathsOf(course.GetModule(course.GetModuleOrder().at(0)).contents));
  EXPECT_EQ(Read().modules.at(1).preTest, Listed("a"));

  ui.SelectRows({0});
  ui.Press("deleteswf.png");
  EXPECT_EQ(Read().modules.at(0).preTest, Listed("a"));
}

TEST(PlacedFiles, AreFoundByTheNamesThatAreShown) {
  const struct {
    std::vector<const char*> chosen;
    const char* shown;
    std::vector<const char*> placed;
  } cases[] = {
      {{"/x/a.zip", "/x/b.zip"}, "a,b", {"/x/a.zip", "/x/b.zip"}},
      {{"/x/a.zip", "/x/b.zip"}, "a", {"/x/a.zip"}},
      {{"/x/a,b.zip", "/x/c.zip"}, "a,b,c", {"/x/a,b.zip", "/x/c.zip"}},
      {{"/x/a.zip", "/y/a.zip", "/x/b.zip"}, "a,a,b", {"/x/a.zip", "/x/a.zip", "/x/b.zip"}},
      {{"/x/a.zip", "/x/b.zip"}, ",b", {"", "/x/b.zip"}},
      {{"/x/a.zip"}, "", {""}},
      {{"/x/a.zip"}, "z", {}},
  };
  for (const auto& [chosen, shown, placed] : cases) {
    std::vector<TzPath> files;
    for (const char* path : chosen) files.push_back(TzPath::FromNative(path));
    std::vector<std::string> found;
    for (const auto& file : FindPlacedFiles(files, TzString(shown))) {
      found.push_back(file ? file->GetNative() : "");
    }
    EXPECT_THAT(found, testing::ElementsAreArray(placed)) << shown;
  }
}

}  // namespace
