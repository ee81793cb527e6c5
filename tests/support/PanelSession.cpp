// SPDX-License-Identifier: Apache-2.0
#include "support/PanelSession.h"

#include "core/PlexoCourseModel.h"
#include "panel/PlexoAppBar.h"
#include "panel/PlexoStrings.h"

namespace {

constexpr int kWidth = 800;
constexpr int kHeight = 600;

/// What lives as long as the process.
struct Host {
  Host() : session(TzHeadlessUI::Script::Strict), window(session.windows.CreateTopLevelWindow({})) {
    RegisterDefaultStrings();
    session.windows.GetWindows().Resize(window, kWidth, kHeight);
    CreateAppBar();
    GetPlexoView(window)->SetModuleCourse(GetModuleCourseModel());
  }

  TestSession session;
  TzWindowHandle window;
};

Host& GetHost() {
  static auto* const host = new Host;
  return *host;
}

void EmptyCourse() {
  PlexoCourseModel& course = *GetCourseModel();
  GetLinearCourseModel()->Clear();
  GetModuleCourseModel()->Clear();
  GetModuleCourseModel()->SetModuleForcedSequence(false);
  course.ResetManifestDetails();
  course.SetCourseType(PlexoCourseType::LINEAR);
  course.SetCourseIdentifier({});
  course.SetCourseTitle({});
  course.SetCourseDescription({});
  course.SetCourseDuration({});
  course.SetCourseSubject({});
  course.SetPackageName({});
}

}  // namespace

PanelSession::PanelSession()
    : session(GetHost().session),
      window(GetHost().window),
      view(*GetPlexoView(nullptr)),
      ui(session.ui),
      previous(TzSession::Install({.dictionary = &session.dictionary,
                                   .userInterface = &session.ui,
                                   .windows = &session.windows,
                                   .problems = &session})) {
  session.ui.StartOver();
  session.problems.clear();
  session.windows.GetWindows().Resize(window, kWidth, kHeight);
  view.ReturnToTemplateChoice();
  EmptyCourse();
}

PanelSession::~PanelSession() { TzSession::Install(previous); }

void PanelSession::Choose(const std::string& templateName) {
  ui.OnNextDialog([](TzHeadlessDriver& dialog) {
    dialog.Type("Identifier", "Course_1");
    dialog.Press("OK");
  });
  ui.Press(templateName);
}

void PanelSession::AddFiles(std::vector<TzPath> files) {
  ui.AnswerNextChooser(std::move(files));
  ui.Press("+ File");
}
