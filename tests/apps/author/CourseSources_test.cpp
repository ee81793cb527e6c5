// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include "AuthorTest.h"
#include "apps/author/CourseReader.h"
#include "apps/author/PlacedFiles.h"
#include "core/PlexoLinearCourseModel.h"
#include "core/PlexoModuleCourseModel.h"

namespace {

using testing::ElementsAre;

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
  /// The next file that is chosen is held back, for another one has its name.
  void ExpectTaken(const std::string& file, const std::string& holder) {
    const std::string words = session.dictionary.GetString("kDesktopNameTaken").GetUTF8String();
    ui.AnswerNextBox(words + "\n\n" + File(file).GetNative() + "\n" + File(holder).GetNative(), kTzButtonOk);
  }

  void ExpectListAsInTheModel() const {
    EXPECT_EQ(PathsOf(Read().files), PathsOf(GetLinearCourseModel()->GetSCOs()));
  }
};

TEST_F(CourseSourcesTest, AFlatCourseNamesTheFilesOfTheModel) {
  desk.Write("broken.zip", "no archive");
  desk.Write("with, comma.zip", ReadFile(File("h")));
  Choose("Multiple SCOs");
  AddFiles({"a", "with, comma"});
  ExpectTaken("other/a", "a");
  AddFiles({"c", "other/a", "d"});
  // What follows a refused file isn't tried.
  ui.AnswerNextBox("Error extracting the ZIP contents!", kTzButtonOk);
  AddFiles({"e", "broken", "f"});
  ExpectListAsInTheModel();
  EXPECT_EQ(PathsOf(Read().files).size(), 5U);

  ui.SelectRows({0});
  ui.Press("movedown.png");
  ui.SelectRows({2, 3});
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
  AddTo(0, kPostTestButton, {"b"});
  AddTo(0, kPostTestButton, {"c"});
  AddTo(0, kContentButton, {"a", "d", "e"});
  ExpectTaken("other/e", "e");
  AddTo(0, kContentButton, {"f", "other/e", "g"});

  const CourseModule module = Read().modules.at(0);
  EXPECT_EQ(module.preTest, Listed("a"));
  EXPECT_EQ(module.postTest, Listed("c"));
  PlexoModuleCourseModel& course = *GetModuleCourseModel();
  EXPECT_EQ(PathsOf(module.content), PathsOf(course.GetModule(course.GetModuleOrder().at(0)).contents));
  EXPECT_EQ(Read().modules.at(1).preTest, Listed("a"));

  ui.SelectRows({0});
  ui.Press("deleteswf.png");
  EXPECT_EQ(Read().modules.at(0).preTest, Listed("a"));
}

// The component deletes the folder of a refused file's name, whoever made it.
TEST_F(CourseSourcesTest, AFileWhoseNameIsTakenInItsPlaceNeverReachesTheComponent) {
  Choose("Pre-test or Post-test rollup");
  desk.Write("broken/a.pdf", "no document");
  const TzPath broken = desk.Path() / "broken/a.pdf";
  const struct {
    const char* button;
    std::vector<std::string> names;
  } places[] = {{kPreTestButton, {"a"}}, {kContentButton, {"b", "a"}}, {kPostTestButton, {"a"}}};
  const std::string words = session.dictionary.GetString("kDesktopNameTaken").GetUTF8String();
  const std::string again = session.dictionary.GetString("kPlexoErrorSCOFolderExists").GetUTF8String();
  for (const auto& [button, names] : places) {
    AddTo(0, button, names);
    ui.AnswerNextBox(words + "\n\n" + broken.GetNative() + "\n" + File("a").GetNative(), kTzButtonOk);
    AddPathsTo(0, button, {broken});
    ui.AnswerNextBox(again + "\n\n" + File("a").GetNative(), kTzButtonOk);
    AddTo(0, button, {"a"});
  }
  // A test that gave its slot away still has its folder.
  AddTo(0, kPreTestButton, {"c"});
  ExpectTaken("other/a", "a");
  AddTo(0, kPreTestButton, {"other/a"});

  PlexoModuleCourseModel& course = *GetModuleCourseModel();
  const PlexoModuleModel module = course.GetModule(course.GetModuleOrder().at(0));
  EXPECT_EQ(module.preTest.sourcePath, File("c").GetString());
  EXPECT_EQ(module.contents.size(), 2U);
  for (const TzString& folder : {module.contents[1].folderPath, module.postTest.folderPath}) {
    EXPECT_TRUE(TzFile(TzPath(folder)).Exists()) << folder;
  }
}

TEST_F(CourseSourcesTest, AFileWithAnUnsafeNameIsAddedUnderASafeOneAndSavedUnderItsOwn) {
  const TzPath odd = desk.Write("Doors #2?.zip", ReadFile(File("h")));
  Choose("Multiple SCOs");
  AddPaths({odd, File("a")});
  EXPECT_EQ(GetLinearCourseModel()->GetSCO(0).scoName, "Doors _2_");
  EXPECT_EQ(PathsOf(Read().files), (std::vector{odd.GetNative(), File("a").GetNative()}));
  ui.AnswerNextChooser({});
  ui.Press("+ File");
  EXPECT_EQ(session.ui.GetChooserRequests().back().startFolder, desk.Path());
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
