// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include <map>
#include <regex>

#include "AuthorTest.h"
#include "apps/author/CoursePlayer.h"
#include "apps/author/CourseReader.h"
#include "apps/course/CourseFile.h"
#include "apps/course/CourseFileWriter.h"
#include "support/ProgramRun.h"
#include "support/ReadArchive.h"
#include "support/ScoZip.h"

namespace {

using testing::IsEmpty;

/// Modules' folders are named by numbers of the process: here by their order.
std::string NumberModules(const std::string& manifest) {
  static const std::regex kFolder("\"(\\d+)(/(?:Pre_Test|Content|Post_Test)/)");
  std::map<std::string, std::size_t> numbers;
  std::string text;
  auto rest = manifest.begin();
  for (std::sregex_iterator each(manifest.begin(), manifest.end(), kFolder), end; each != end; ++each) {
    const std::size_t number = numbers.try_emplace(each->str(1), numbers.size() + 1).first->second;
    text.append(rest, (*each)[1].first).append(std::to_string(number));
    rest = (*each)[1].second;
  }
  return text.append(rest, manifest.end());
}

class CourseRoundTrip : public AuthorTest {
 protected:
  /// Saves what is on the screen, opens it in a new course, and builds it with the program: the course is
  /// always the one that the person made.
  void CheckThereAndBack() {
    const CourseDocument made = Read();
    const std::string manifest = Publish();
    const std::string path = (desk.Path() / "saved.yaml").GetNative();
    ASSERT_FALSE(WriteCourseFile(path, made));

    const CourseFileResult draft = ReadCourseDraft(path);
    ASSERT_THAT(draft.errors, IsEmpty());
    EXPECT_EQ(draft.course, made);

    const CoursePlayResult played = CoursePlayer(author).Play(draft.course);
    EXPECT_EQ(played.outcome, CoursePlayResult::Outcome::Opened);
    EXPECT_TRUE(played.refusals.empty()) << played.refusals.front().message;
    EXPECT_EQ(Read(), made);

    ProgramRun build(PLEXO_BIN "/plexo", {"build", path, "-o", "built.zip", "--force"});
    const ProgramResult built = build.In(desk.Path()).Run();
    ASSERT_EQ(built.status, 0) << built.err;
    const std::string builtManifest = ReadArchive(desk.Path() / "built.zip").Content("imsmanifest.xml");
    EXPECT_EQ(NumberModules(builtManifest), NumberModules(manifest));
  }
};

TEST_F(CourseRoundTrip, OfAFlatCourseWithMovedAndRemovedFiles) {
  Choose("Multiple SCOs", [](TzHeadlessDriver& dialog) {
    dialog.Type("Version", "1.0");
    dialog.Type("Description", "Line 1\nLine 2: \"x\" # y");
    dialog.Check("Duration");
    dialog.Type("Duration", "1");
    dialog.Type("minutes", "30");
    dialog.Check("Subject");
    dialog.Type("Subject", "2004");
  });
  AddFiles({"a", "b", "c"});
  AddFiles({"d"});
  ui.SelectRows({3});
  ui.Press("moveup.png");
  ui.SelectRows({0});
  ui.Press("deleteswf.png");
  const CourseDocument made = Read();
  EXPECT_THAT(made.files, testing::ElementsAre(Listed("b"), Listed("d"), Listed("c")));
  EXPECT_EQ(made.duration, "01:30:00");
  EXPECT_EQ(made.identifier, "My_Course_1");
  // The panel's field counts from when it is typed into.
  ui.Type("", "Title of the panel");
  CheckThereAndBack();
}

TEST_F(CourseRoundTrip, OfAFlatCourseInTheOtherEdition) {
  for (const char* name : {"a", "b"}) {
    desk.Write("old/x", "");
    ScoZip(name).Scorm12().Item(name, "index.htm").File("index.htm", name).Save(desk.Path() / "old");
  }
  Choose("Multiple SCOs", [](TzHeadlessDriver& dialog) {
    dialog.Choose("Version", "1.2");
    dialog.Uncheck("Version");
  });
  AddFiles({"old/a", "old/b"});
  CheckThereAndBack();
}

TEST_F(CourseRoundTrip, OfTitlesThatFilesWereGiven) {
  const auto titled = [&](const std::string& name, const std::string& title) {
    ListedFile file = Listed(name);
    file.title = title;
    return file;
  };
  CourseDocument flat;
  flat.identifier = "C";
  flat.files = {titled("a", "Doors & exits"), Listed("b")};
  CourseDocument modules;
  modules.courseTemplate = CourseTemplate::TestRollup;
  modules.identifier = "C";
  modules.modules.resize(1);
  modules.modules[0].preTest = titled("a", "What do you know?");
  modules.modules[0].content = {titled("a", "Doors & exits"), Listed("b")};
  modules.modules[0].postTest = titled("c", "What did you learn?");
  // The same files under other titles.
  modules.modules.push_back(modules.modules[0]);
  modules.modules[1].preTest = Listed("a");
  modules.modules[1].content = {titled("a", "Ways out"), Listed("b")};
  for (const CourseDocument& course : {flat, modules}) {
    const CoursePlayResult played = CoursePlayer(author).Play(course);
    EXPECT_TRUE(played.refusals.empty()) << played.refusals.front().message;
    const std::string manifest = Publish();
    EXPECT_THAT(manifest, testing::HasSubstr("<title>Doors &amp; exits</title>"));
    EXPECT_THAT(manifest, testing::HasSubstr("<title>b</title>")) << "one without a title keeps its own";
    if (!course.modules.empty()) {
      EXPECT_THAT(manifest, testing::HasSubstr("<title>What do you know?</title>"));
      EXPECT_THAT(manifest, testing::HasSubstr("<title>What did you learn?</title>"));
      EXPECT_THAT(manifest, testing::HasSubstr("<title>Module_2_PreTest</title>"));
      EXPECT_THAT(manifest, testing::HasSubstr("<title>Ways out</title>"));
    }
    CheckThereAndBack();
    LeaveCourse();
  }
}

TEST_F(CourseRoundTrip, OfBothKindsOfModules) {
  for (const char* name : {"Simple Remediation", "Pre-test or Post-test rollup"}) {
    SCOPED_TRACE(name);
    MakeModules(name);
    ui.InRow(1).Type("Edit Module Name", "Doors: \"x\" # y");
    ui.InRow(1).Check("Force Content Sequence");
    ui.Check("Force Module Sequence");
    ui.SelectRows({1});
    ui.Press("moveup.png");
    const CourseDocument made = Read();
    EXPECT_TRUE(made.forceSequence);
    EXPECT_EQ(made.modules.at(0).title, "Doors: \"x\" # y");
    EXPECT_TRUE(made.modules.at(0).forceContentSequence);
    EXPECT_THAT(made.modules.at(0).content, testing::ElementsAre(Listed("b"), Listed("c"), Listed("d")));
    EXPECT_EQ(made.modules.at(0).preTest.has_value(), made.courseTemplate == CourseTemplate::TestRollup);
    CheckThereAndBack();
    ui.Uncheck("Force Module Sequence");
    LeaveCourse();
  }
}

}  // namespace
