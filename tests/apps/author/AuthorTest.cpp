// SPDX-License-Identifier: Apache-2.0
#include "AuthorTest.h"

#include "apps/author/CourseReader.h"
#include "apps/desktop/DesktopWords.h"
#include "core/PlexoCourseModel.h"
#include "core/PlexoModuleCourseModel.h"
#include "host/files/TzFile.h"
#include "panel/PlexoAppBar.h"
#include "panel/PlexoStrings.h"
#include "panel/PlexoView.h"
#include "support/ReadArchive.h"
#include "support/ScoZip.h"

namespace {

/// There is one panel of the process.
struct Host {
  Host() {
    RegisterDefaultStrings();
    RegisterDesktopWords(session.dictionary);
    installed = {.dictionary = &session.dictionary,
                 .userInterface = &author,
                 .windows = &session.windows,
                 .problems = &session};
    TzSession::Install(installed);
    TzWindowHandle window = session.windows.CreateTopLevelWindow({});
    session.windows.GetWindows().Resize(window, 800, 600);
    CreateAppBar();
    GetPlexoView(window)->SetModuleCourse(GetModuleCourseModel());
  }

  TestSession session{TzHeadlessUI::Script::Strict};
  AuthorUserInterface author{session.ui};
  TzSession installed;
};

Host& GetHost() {
  static auto* const host = new Host;
  return *host;
}

}  // namespace

AuthorTest::AuthorTest()
    : session(GetHost().session),
      author(GetHost().author),
      ui(session.ui),
      previous(TzSession::Install(GetHost().installed)) {
  session.ui.StartOver();
  session.problems.clear();
  GetPlexoView(nullptr)->ReturnToTemplateChoice();
  GetModuleCourseModel()->SetModuleForcedSequence(false);
  PlexoCourseModel& course = *GetCourseModel();
  course.ResetManifestDetails();
  course.SetCourseDescription({});
  course.SetCourseDuration({});
  course.SetCourseSubject({});
  course.SetPublishFolder(desk.Path());
  for (const char* name : {"a", "b", "c", "d", "e", "f", "g", "h"}) {
    ScoZip(name).Item(name, "index.htm").File("index.htm", name).Save(desk.Path());
    desk.Write("other/x", "");
    ScoZip(name).Item(name, "index.htm").File("index.htm", name).Save(desk.Path() / "other");
  }
}

AuthorTest::~AuthorTest() {
  EXPECT_NO_THROW(session.ui.CheckFinished());
  TzSession::Install(previous);
}

void AuthorTest::Choose(const std::string& templateName, const TzHeadlessDriver::DialogScript& more) {
  ui.OnNextDialog([&](TzHeadlessDriver& dialog) {
    dialog.Type("Identifier", "My Course 1");
    dialog.Type("Title", "Fire & <safety>");
    more(dialog);
    dialog.Press("OK");
  });
  ui.Press(templateName);
}

std::vector<TzPath> AuthorTest::Files(const std::vector<std::string>& names) const {
  std::vector<TzPath> files;
  for (const std::string& name : names) files.push_back(File(name));
  return files;
}

void AuthorTest::AddPaths(const std::vector<TzPath>& files) {
  ui.AnswerNextChooser(files);
  ui.Press("+ File");
}

void AuthorTest::AddPathsTo(std::size_t module, const char* button, const std::vector<TzPath>& files) {
  ui.AnswerNextChooser(files);
  ui.InRow(module).Press(button);
}

void AuthorTest::MakeModules(const std::string& templateName) {
  const bool hasPreTest = templateName != "Simple Remediation";
  Choose(templateName);
  ui.Press("+ Module");
  for (const std::size_t module : {0U, 1U}) {
    if (hasPreTest) AddTo(module, kPreTestButton, {"a"});
    AddTo(module, kContentButton, {"b", "c"});
    AddTo(module, kContentButton, {"d"});
    AddTo(module, kPostTestButton, {"e"});
    ui.InRow(module).Type("Weightage", "50");
  }
}

std::string AuthorTest::Publish() {
  const TzPath package = desk.Path() / "published.zip";
  ui.OnNextDialog([](TzHeadlessDriver& dialog) {
    dialog.Type("Project Title", "published");
    dialog.Press("Publish");
  });
  if (TzFile(package).Exists()) ui.AnswerNextBox(kTzButtonYes);
  ui.AnswerNextBox("SCORM package created!", kTzButtonOk);
  ui.Press("Publish Course");
  return ReadArchive(package).Content("imsmanifest.xml");
}

void AuthorTest::LeaveCourse() {
  ui.AnswerNextBox(kTzButtonNo);
  ui.Press("New Course");
}

CourseDocument AuthorTest::Read() const {
  const auto course = CourseReader(author).Read();
  EXPECT_TRUE(course.has_value());
  return course.value_or(CourseDocument());
}
