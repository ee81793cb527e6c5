// SPDX-License-Identifier: Apache-2.0
// The measured halves of `bench/run`, each in a process of its own so that its peak memory is its own:
//   plexo-bench course PACKAGE.zip FILE...       adds the files, packages or documents, and publishes
//   plexo-bench generator COUNT                  writes the manifest of COUNT one-page SCOs, without their
//   files
//   plexo-bench check PACKAGE.zip                looks for what keeps the package from working
//   plexo-bench movie MOVIE.swf                  asks a movie whether it is a Learning Interaction
//   plexo-bench panel-scos COUNT PACKAGE.zip     works on a flat course of so many copies of the package
//   plexo-bench panel-modules COUNT PACKAGE.zip  works on a course of so many modules with copies of it
// Each prints one line of JSON: seconds, and bytes of memory.
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

#include "bench/PanelBench.h"
#include "bench/SequencerBench.h"
#include "check/PlexoPackageChecker.h"
#include "core/PlexoCourseModel.h"
#include "core/PlexoInstallFolder.h"
#include "core/PlexoLinearCourseModel.h"
#include "host/files/TzFileUtil.h"
#include "host/headless/TzHeadlessUI.h"
#include "host/headless/TzHeadlessWindows.h"
#include "host/pdf/TzPdfKit.h"
#include "host/session/TzConsole.h"
#include "host/session/TzSession.h"
#include "host/text/TzStringDictionary.h"
#include "intake/PlexoAddFileDriver.h"
#include "intake/PlexoSWFWrapping.h"
#include "panel/PlexoStrings.h"
#include "publish/PlexoPublisher.h"

namespace {

/// Standard output is for the figures.
class NoConsole : public ITzConsole {
 public:
  void WriteOutput(std::string_view /*text*/) override {}
  void WriteError(std::string_view /*text*/) override {}
};

double SecondsOf(const std::chrono::steady_clock::time_point start) {
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// The peak of this program alone: what `getrusage` tells counts the program that started it too.
std::uint64_t PeakBytes() {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);) {
    if (line.starts_with("VmHWM:")) return std::strtoull(line.c_str() + 6, nullptr, 10) * 1024;
  }
  return 0;
}

int MeasureCourse(TzHeadlessUI& ui, const TzPath& package, const std::vector<std::string>& files) {
  const auto start = std::chrono::steady_clock::now();
  for (const std::string& file : files) {
    ui.AnswerNextChooser({TzPath::FromNative(file)});
    if (PlexoAddFileDriver::AddFilesToLinearCourse(GetLinearCourseModel()).size() != 1) return 1;
  }
  const double adding = SecondsOf(start);
  GetCourseModel()->SetPublishFolder(package.GetParentTzPath());
  GetCourseModel()->SetPackageName(package.GetFileName());
  const auto packing = std::chrono::steady_clock::now();
  const int result = PlexoPublisher::GetPublisher()->PublishPackage();
  std::printf("{\"adding\": %.4f, \"publishing\": %.4f, \"peak\": %llu}\n", adding, SecondsOf(packing),
              static_cast<unsigned long long>(PeakBytes()));
  return result;
}

int MeasureGenerator(std::uint32_t count) {
  for (std::uint32_t number = 1; number <= count; ++number) {
    PlexoSCOModel sco;
    sco.scoName = sco.manifest.scoName = "sco" + std::to_string(number);
    sco.sourcePath = "/chosen/sco.zip";
    sco.manifest.title = "Lesson " + std::to_string(number);
    sco.manifest.href = "index.htm";
    sco.manifest.files = {"index.htm"};
    GetLinearCourseModel()->AddSCO(sco);
  }
  GetLinearCourseModel()->SetForcedSequence(true);
  const std::uint64_t records = PeakBytes();
  const auto start = std::chrono::steady_clock::now();
  const int result = PlexoPublisher::GetPublisher()->WriteManifest();
  std::printf("{\"generating\": %.4f, \"records\": %llu, \"peak\": %llu}\n", SecondsOf(start),
              static_cast<unsigned long long>(records), static_cast<unsigned long long>(PeakBytes()));
  return result;
}

int MeasureCheck(const TzPath& package) {
  const auto start = std::chrono::steady_clock::now();
  const PlexoCheckResult result = PlexoPackageChecker(GetSchemaInstallFolder()).Check(package);
  std::printf("{\"checking\": %.4f, \"findings\": %zu, \"peak\": %llu}\n", SecondsOf(start),
              result.findings.size(), static_cast<unsigned long long>(PeakBytes()));
  return result.code;
}

int MeasureMovie(const std::string& movie) {
  std::int32_t width = 0;
  std::int32_t height = 0;
  const auto start = std::chrono::steady_clock::now();
  const std::int32_t result = PlexoSWFWrapping::ProbeLearningInteraction(movie, width, height);
  std::printf("{\"asking\": %.4f, \"peak\": %llu}\n", SecondsOf(start),
              static_cast<unsigned long long>(PeakBytes()));
  return result;
}

}  // namespace

int main(int argc, char** argv) {
  const std::vector<std::string> arguments(argv + 1, argv + argc);
  if (arguments.size() < 2) return 2;
  TzStringDictionary dictionary;
  TzHeadlessUI ui;
  TzHeadlessWindows windows;
  NoConsole console;
  TzSession::Install(
      {.dictionary = &dictionary, .userInterface = &ui, .windows = &windows, .console = &console});
  TzPdfKit::Start();
  RegisterDefaultStrings();
  GetCourseModel()->SetCourseIdentifier("Bench");
  int result = 2;
  if (arguments[0] == "course") {
    result = MeasureCourse(ui, TzPath::FromNative(arguments[1]), {arguments.begin() + 2, arguments.end()});
  } else if (arguments[0] == "generator") {
    result = MeasureGenerator(static_cast<std::uint32_t>(std::strtoul(arguments[1].c_str(), nullptr, 10)));
  }
  if (arguments[0] == "movie") result = MeasureMovie(arguments[1]);
  if (arguments[0].starts_with("panel-") && arguments.size() == 3) {
    const std::size_t count = std::strtoul(arguments[1].c_str(), nullptr, 10);
    const TzPath package = TzPath::FromNative(arguments[2]);
    result = arguments[0] == "panel-scos" ? PanelBench::MeasureFlatCourse(ui, package, count)
                                          : PanelBench::MeasureModules(ui, package, count);
  }
  if (arguments[0] == "sequencer" && arguments.size() == 3) {
    const std::size_t count = std::strtoul(arguments[2].c_str(), nullptr, 10);
    std::puts(SequencerBench::Measure(arguments[1], count).c_str());
    result = 0;
  }
  if (arguments[0] == "check") result = MeasureCheck(TzPath::FromNative(arguments[1]));
  TzFileUtil::DeleteAllTempFilesCreated();
  return result;
}
