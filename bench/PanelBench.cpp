// SPDX-License-Identifier: Apache-2.0
#include "bench/PanelBench.h"

#include <cstdio>
#include <ctime>
#include <filesystem>
#include <functional>
#include <numeric>
#include <string>
#include <vector>

#include "core/PlexoCourseModel.h"
#include "host/files/TzFileUtil.h"
#include "host/headless/TzHeadlessDriver.h"
#include "host/session/ITzWindowSystem.h"
#include "host/session/TzSession.h"
#include "panel/PlexoView.h"

namespace {

constexpr std::size_t kContentsOfModule = 5;

/// The author, with any number of packages on the desk.
class Author {
 public:
  Author(TzHeadlessUI& userInterface, const TzPath& package)
      : ui(userInterface), desk(TzFileUtil::CreateTempDiskDir("desk")), tiny(package) {
    TzWindowSpec window;
    window.width = 1000;
    window.height = 700;
    GetPlexoView(GetWindowSystem()->CreateTopLevelWindow(window))->SetModuleCourse(GetModuleCourseModel());
  }

  /// Seconds of processor time that the act takes.
  void Measure(const char* act, const std::function<void()>& run) {
    const std::clock_t start = std::clock();
    run();
    const double seconds = static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
    std::printf("%s\"%s\": %.6f", isFirst ? "{" : ", ", act, seconds);
    isFirst = false;
  }

  void Choose(const char* templateName) {
    ui.OnNextDialog([](TzHeadlessDriver& dialog) {
      dialog.Type("Identifier", "Bench");
      dialog.Press("OK");
    });
    ui.Press(templateName);
  }

  /// So many further packages, each of another name.
  void AnswerNextChooser(std::size_t count) {
    std::vector<TzPath> files;
    for (std::size_t number = 0; number < count; ++number) {
      files.push_back(desk / ("package" + std::to_string(++packages) + ".zip"));
      std::filesystem::copy_file(tiny.GetNative(), files.back().GetNative());
    }
    ui.AnswerNextChooser(std::move(files));
  }

  void SelectAll(std::size_t rows) {
    std::vector<std::size_t> all(rows);
    std::iota(all.begin(), all.end(), std::size_t{0});
    ui.SelectRows(all);
  }

  /// What is the same for both kinds of course, with this many rows.
  void MeasureRows(std::size_t rows) {
    Measure("selecting", [&] { ui.SelectRows({rows / 2}); });
    Measure("moving", [&] { ui.Press("moveup.png"); });
    ui.SelectRows({rows / 3});
    Measure("removing", [&] { ui.Press("deleteswf.png"); });
    Measure("selecting all", [&] { SelectAll(rows - 1); });
    Measure("removing all", [&] { ui.Press("deleteswf.png"); });
    std::printf("}\n");
  }

  TzHeadlessDriver ui;

 private:
  TzPath desk;
  TzPath tiny;
  std::size_t packages = 0;
  bool isFirst = true;
};

}  // namespace

int PanelBench::MeasureFlatCourse(TzHeadlessUI& userInterface, const TzPath& package, std::size_t scos) {
  Author author(userInterface, package);
  author.Choose("Multiple SCOs");
  author.AnswerNextChooser(scos);
  author.Measure("making", [&] { author.ui.Press("+ File"); });
  author.AnswerNextChooser(1);
  author.Measure("adding", [&] { author.ui.Press("+ File"); });
  const std::size_t made = GetLinearCourseModel()->CountSCOs();
  author.MeasureRows(made);
  const bool isEmpty =
      GetLinearCourseModel()->CountSCOs() == 0 && GetCourseModel()->GetSCOManifestCount() == 0;
  return made == scos + 1 && isEmpty ? 0 : 1;
}

int PanelBench::MeasureModules(TzHeadlessUI& userInterface, const TzPath& package, std::size_t modules) {
  Author author(userInterface, package);
  author.Choose("Simple Remediation");
  for (std::size_t module = 0; module < modules; ++module) author.AnswerNextChooser(kContentsOfModule);
  author.Measure("making", [&] {
    for (std::size_t module = 0; module < modules; ++module) {
      if (module > 0) author.ui.Press("+ Module");
      author.ui.InRow(module).Press("Add a content SCO to this course.");
    }
  });
  author.Measure("adding", [&] { author.ui.Press("+ Module"); });
  author.AnswerNextChooser(1);
  author.Measure("adding a content",
                 [&] { author.ui.InRow(modules).Press("Add a content SCO to this course."); });
  const bool isMade = GetModuleCourseModel()->CountModules() == modules + 1 &&
                      GetCourseModel()->GetSCOManifestCount() == kContentsOfModule * modules + 1;
  author.MeasureRows(modules + 1);
  const bool isEmpty =
      GetModuleCourseModel()->CountModules() == 0 && GetCourseModel()->GetSCOManifestCount() == 0;
  return isMade && isEmpty ? 0 : 1;
}
