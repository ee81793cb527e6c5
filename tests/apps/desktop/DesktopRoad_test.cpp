// SPDX-License-Identifier: Apache-2.0
// The whole road of a course, by mouse and keyboard, from the template choice to the package.
#include "DesktopTest.h"
#include "support/ProgramRun.h"
#include "support/ReadArchive.h"

namespace {

constexpr const char* kManifest = "imsmanifest.xml";

class DesktopRoadTest : public DesktopTest {
 protected:
  /// Saves the course, publishes it, and builds the saved course file on the command line.
  void ExpectPackageOfSavedCourse(DesktopDriver& driver) {
    const TzPath courseFile = home.Path() / "course.plexo.yaml";
    driver.ChooseInNextWindow({courseFile});
    driver.Key(Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(driver.Window().windowTitle(), "course.plexo.yaml[*]");
    EXPECT_FALSE(driver.Window().isWindowModified());
    const TzPath published = driver.Publish(home.Path(), "published");
    EXPECT_EQ(driver.Boxes(), std::vector<std::string>{"SCORM package created!"});

    const TzPath built = home.Path() / "built.zip";
    const ProgramResult result =
        ProgramRun(PLEXO_BIN "/plexo", {"build", courseFile.GetNative(), "-o", built.GetNative()}).Run();
    ASSERT_EQ(result.status, 0) << result.err << ReadFile(courseFile);
    EXPECT_EQ(ReadArchive(published).Content(kManifest), ReadArchive(built).Content(kManifest));
  }
};

}  // namespace

TEST_F(DesktopRoadTest, AFlatCourseIsAddedToSortedAndPublished) {
  DesktopDriver driver(home);
  driver.OnNextWindow([](QWidget& dialog) {
    DesktopDriver::Type(dialog, "Identifier:", "My Course 1");
    DesktopDriver::Type(dialog, "Title:", "Fire & <safety>");
    DesktopDriver::Type(dialog, "Version:", "1.0");
    DesktopDriver::Press(dialog, "OK");
  });
  driver.Press("Multiple SCOs");
  driver.ChooseInNextWindow({File("a"), File("b"), File("c")});
  driver.Press("+ File");
  driver.Select(2);
  driver.Key(Qt::Key_Up, Qt::AltModifier);
  EXPECT_EQ(driver.Rows(), (QStringList{"a", "c", "b"}));
  driver.Select(0);
  driver.Key(Qt::Key_Delete);
  EXPECT_EQ(driver.Rows(), (QStringList{"c", "b"}));
  ExpectPackageOfSavedCourse(driver);
}

class DesktopModulesTest : public DesktopRoadTest, public testing::WithParamInterface<const char*> {};

TEST_P(DesktopModulesTest, AreFilledWeightedAndPublished) {
  DesktopDriver driver(home);
  driver.Begin(GetParam());
  driver.Press("+ Module");
  driver.Press("Force Module Sequence");
  const bool hasPreTest = GetParam() != std::string("Simple Remediation");
  for (const std::size_t module : {0U, 1U}) {
    if (hasPreTest) Add(driver, kAddPreTest, module, {File("a")});
    Add(driver, kAddContent, module, {File("b"), File("c")});
    Add(driver, kAddPostTest, module, {File("d")});
  }
  driver.TypeNumber("30", 0);
  driver.TypeNumber("70", 1);
  driver.Press("Force Content Sequence", 1);
  ExpectPackageOfSavedCourse(driver);
}

INSTANTIATE_TEST_SUITE_P(Templates, DesktopModulesTest,
                         testing::Values("Simple Remediation", "Pre-test or Post-test rollup"));
