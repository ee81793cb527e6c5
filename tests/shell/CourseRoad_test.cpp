// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>

#include "host/files/TzFile.h"
#include "host/headless/TzHeadlessDriver.h"
#include "shell/LoadedComponent.h"
#include "support/Golden.h"
#include "support/ProgramRun.h"
#include "support/ReadArchive.h"
#include "support/ScoZip.h"
#include "support/TestSession.h"

using testing::HasSubstr;
using testing::IsSupersetOf;

namespace {

constexpr const char* kCreated = "SCORM package created!";
constexpr const char* kUnpublished = "There are unpublished changes. Do you wish to publish the Plexo file?";
constexpr const char* kAddPreTest = "Add a pretest SCO to this course.";
constexpr const char* kAddContent = "Add a content SCO to this course.";
constexpr const char* kAddPostTest = "Add a post-test SCO to this course.";

/// An author at a program that has just started, with SCO packages on the desk, and the whole way of a
/// course: every step is something that a person does or sees.
class CourseRoad : public testing::Test {
 protected:
  CourseRoad() {
    setenv("HOME", desk.Path().GetNative().c_str(), 1);
    setenv("SOURCE_DATE_EPOCH", "1700000000", 1);
    unsetenv("XDG_CONFIG_HOME");
    for (const char* name : {"intro", "doors", "stairs", "pre1", "pre2", "test1", "test2"}) {
      ScoZip(name).Item("About " + std::string(name), "index.htm").File("index.htm", name).Save(desk.Path());
    }
    component->Start();
    component->RegisterStrings();
  }

  ~CourseRoad() override {
    component->Stop();
    EXPECT_NO_THROW(session.ui.CheckFinished());
    EXPECT_TRUE(session.problems.empty());
  }

  [[nodiscard]] TzPath File(const std::string& name) const { return desk.Path() / name; }

  /// Presses the template's button and fills the dialog that opens.
  void Choose(
      const std::string& templateName,
      const TzHeadlessDriver::DialogScript& more = [](TzHeadlessDriver& /*dialog*/) {}) {
    ui.OnNextDialog([&](TzHeadlessDriver& dialog) {
      dialog.Type("Identifier", "My Course 1");
      dialog.Type("Title", "Fire safety");
      dialog.Type("Description", "What to do when it burns");
      dialog.Type("Version", "1.0");
      dialog.Check("Duration");
      dialog.Type("Duration", "1");
      dialog.Type("minutes", "30");
      dialog.Check("Subject");
      dialog.Type("Subject", "Safety");
      more(dialog);
      dialog.Press("OK");
    });
    ui.Press(templateName);
  }

  void AnswerChooser(const std::vector<std::string>& names) {
    std::vector<TzPath> files;
    for (const std::string& name : names) files.push_back(File(name + ".zip"));
    ui.AnswerNextChooser(files);
  }

  void AddFiles(const std::vector<std::string>& names) {
    AnswerChooser(names);
    ui.Press("+ File");
  }

  /// Presses the button of this tooltip in the module.
  void AddTo(std::size_t module, const char* tooltip, const std::vector<std::string>& names) {
    AnswerChooser(names);
    ui.InRow(module).Press(tooltip);
  }

  /// Two modules that make up the course by halves, without their pretests.
  void MakeModules() {
    ui.Check("Force Module Sequence");
    ui.InRow(0).Type("Edit Module Name", "Doors");
    ui.InRow(0).Type("Weightage", "50");
    AddTo(0, kAddContent, {"intro", "doors"});
    AddTo(0, kAddPostTest, {"test1"});
    ui.Press("+ Module");
    ui.InRow(1).Type("Weightage", "50");
    ui.InRow(1).Check("Force Content Sequence");
    AddTo(1, kAddContent, {"stairs"});
    AddTo(1, kAddPostTest, {"test2"});
  }

  /// The publish dialog will open, and the author takes the folder that it offers at first, which doesn't
  /// exist yet.
  void ExpectPublishing() {
    ui.OnNextDialog([](TzHeadlessDriver& dialog) {
      dialog.AnswerNextBox("The publish folder entered doesn't exist! Create?", kTzButtonYes);
      dialog.AnswerNextBox(kCreated, kTzButtonOk);
      dialog.Press("Publish");
    });
  }

  void Publish() {
    ExpectPublishing();
    ui.Press("Publish");
  }

  [[nodiscard]] TzPath Package() const {
    return File("Documents") / "My Ostrand Vantrel Projects" / "My_Course_1.zip";
  }

  /// The program makes the same package, byte by byte, of the same course written as a file. The manifest is
  /// compared first, for a difference in it can be read.
  void ExpectSameAsBuilt(const std::string& course) const {
    WriteFile(File("course.yaml"),
              "identifier: My Course 1\ntitle: Fire safety\n"
              "description: What to do when it burns\nversion: \"1.0\"\n"
              "duration: \"01:30:00\"\nsubject: Safety\n" +
                  course);
    const ProgramResult result =
        ProgramRun(PLEXO_BIN "/plexo", {"build", "course.yaml", "-o", "built.zip"}).In(desk.Path()).Run();
    ASSERT_EQ(result.status, 0) << result.err;
    const ReadArchive published(Package());
    const ReadArchive built(File("built.zip"));
    EXPECT_EQ(published.Content("imsmanifest.xml"), built.Content("imsmanifest.xml"));
    EXPECT_EQ(published.Names(), built.Names());
    EXPECT_EQ(ReadFile(Package()), ReadFile(File("built.zip")));
  }

  void ExpectTranscript(const std::string& name) const {
    TzString text(ui.GetTranscript());
    text.ReplaceAll(desk.Path().GetString(), "HOME");
    ExpectGolden(PLEXO_SOURCE "/tests/shell/golden", name, text.GetUTF8String());
  }

  TestFolder desk;
  TestSession session{TzHeadlessUI::Script::Strict};
  LoadedComponent component;
  TzHeadlessDriver ui{session.ui};
};

/// The ways whose transcripts are golden files.
class CourseRoadGolden : public CourseRoad {};

}  // namespace

TEST_F(CourseRoadGolden, AFlatCourseGoesFromTheTemplateToThePackage) {
  Choose("Multiple SCOs");
  AddFiles({"intro", "doors"});
  Publish();
  ExpectTranscript("multiple-scos.txt");
  EXPECT_THAT(ReadArchive(Package()).Names(),
              IsSupersetOf({"imsmanifest.xml", "Linear/intro/index.htm", "Linear/doors/index.htm",
                            "imsss_v1p0.xsd", "common/anyElement.xsd"}));
  EXPECT_EQ(ReadArchive(Package()).Content("Linear/doors/index.htm"), "doors");
  ExpectSameAsBuilt("template: multiple-scos\nfiles: [intro.zip, doors.zip]\n");
}

TEST_F(CourseRoad, AFlatCourseOf12GoesTheSameWay) {
  for (const char* name : {"intro", "doors"}) {
    ScoZip(name).Scorm12().Item(name, "index.htm").File("index.htm", name).Save(desk.Path());
  }
  Choose("Multiple SCOs", [](TzHeadlessDriver& dialog) { dialog.Choose("Version", "1.2"); });
  AddFiles({"intro"});
  AddFiles({"doors"});
  ui.SelectRows({1});
  ui.Press("moveup.png");
  Publish();
  ExpectSameAsBuilt("template: multiple-scos\nscorm: \"1.2\"\nfiles: [doors.zip, intro.zip]\n");
}

TEST_F(CourseRoadGolden, ModulesOfContentAndPostTestGoFromTheTemplateToThePackage) {
  Choose("Simple Remediation");
  MakeModules();
  Publish();
  ExpectTranscript("simple-remediation.txt");
  EXPECT_THAT(ReadArchive(Package()).Names(),
              IsSupersetOf({"1/Content/intro/index.htm", "1/Post_Test/test1/index.htm",
                            "2/Content/stairs/index.htm", "2/Post_Test/test2/index.htm"}));
  ExpectSameAsBuilt(R"(template: simple-remediation
force-sequence: true
modules:
  - {title: Doors, weightage: 50, content: [intro.zip, doors.zip], post-test: test1.zip}
  - {weightage: 50, force-content-sequence: true, content: [stairs.zip], post-test: test2.zip}
)");
}

TEST_F(CourseRoadGolden, ModulesWithPretestsGoFromTheTemplateToThePackage) {
  Choose("Pre-test or Post-test rollup");
  MakeModules();
  AddTo(0, kAddPreTest, {"pre1"});
  AddTo(1, kAddPreTest, {"pre2"});
  Publish();
  ExpectTranscript("test-rollup.txt");
  EXPECT_THAT(ReadArchive(Package()).Names(),
              IsSupersetOf({"1/Pre_Test/pre1/index.htm", "2/Pre_Test/pre2/index.htm"}));
  ExpectSameAsBuilt(R"(template: test-rollup
force-sequence: true
modules:
  - {title: Doors, weightage: 50, pretest: pre1.zip, content: [intro.zip, doors.zip], post-test: test1.zip}
  - {weightage: 50, force-content-sequence: true, pretest: pre2.zip, content: [stairs.zip], post-test: test2.zip}
)");
}

TEST_F(CourseRoad, AFileTwiceAndEveryCancelLeaveTheCourseAsItWas) {
  // Thrown away before it began, and begun again.
  ui.OnNextDialog([](TzHeadlessDriver& dialog) { dialog.Press("Cancel"); });
  ui.Press("Multiple SCOs");
  EXPECT_FALSE(ui.IsEnabled("Publish"));
  Choose("Multiple SCOs");
  AddFiles({"intro"});
  ui.AnswerNextChooser({});
  ui.Press("+ File");
  ui.OnNextDialog([](TzHeadlessDriver& dialog) { dialog.Press("Close"); });
  ui.Press("Publish");
  EXPECT_FALSE(TzFile(Package()).Exists());
  ui.AnswerNextBox(kUnpublished, kTzButtonCancel);
  ui.Press("New");
  ui.AnswerNextBox("There are unsaved changes. Do you want to publish them before exiting?", kTzButtonNo);
  EXPECT_FALSE(session.windows.GetWindows().Close(session.windows.GetMainWindow()));
  // The same file again gets a row without a name, which the author takes out.
  ui.AnswerNextBox("This file has already been added. Rename the file and retry adding.", kTzButtonOk);
  AddFiles({"intro"});
  EXPECT_THAT(ui.See(), HasSubstr("tree of 2 rows\n  row 0 \"intro\"\n  row 1\n"));
  ui.SelectRows({1});
  ui.Press("deleteswf.png");
  ui.AnswerNextBox(kUnpublished, kTzButtonYes);
  ExpectPublishing();
  ui.Press("New");
  EXPECT_TRUE(ui.Sees("Simple Remediation"));
  ExpectSameAsBuilt("template: multiple-scos\nfiles: [intro.zip]\n");
  EXPECT_TRUE(session.windows.GetWindows().Close(session.windows.GetMainWindow()));
}
