// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <set>
#include <string>
#include <utility>

#include "host/files/TzFileUtil.h"
#include "host/headless/TzHeadlessDriver.h"
#include "host/pdf/TzPdfKit.h"
#include "shell/LoadedComponent.h"
#include "support/TestSession.h"

using testing::ElementsAre;

namespace {

/// Notes whether the PDF library runs when the user interface starts and ends.
class PdfWatchingWindows : public TzHeadlessWindows {
 public:
  void RegisterApplicationClass(const TzString& /*name*/, TzModuleHandle /*module*/) override {
    runs.push_back(TzPdfKit::IsStarted());
  }
  TzErrorCodeEnum EndRoost(int /*flag*/) override {
    runs.push_back(TzPdfKit::IsStarted());
    return kTzSuccess;
  }

  std::vector<bool> runs;
};

std::set<std::string> ExportedNames() {
  std::set<std::string> names;
  const std::string command = "nm -D --defined-only -C --format=posix " + LoadedComponent::GetFile();
  FILE* output = popen(command.c_str(), "r");
  std::array<char, 4096> line{};
  while (fgets(line.data(), static_cast<int>(line.size()), output) != nullptr) {
    const std::string text = line.data();
    // "name type value size"; a demangled name holds blanks of its own.
    std::size_t end = text.size();
    for (int field = 0; field < 3; ++field) end = text.rfind(' ', end - 1);
    names.insert(text.substr(0, end));
  }
  pclose(output);
  return names;
}

/// A host that leaves the bar to the component and tells, at each call of the stop, what has gone by then.
class WitnessOfStop : public TzHeadlessWindows {
 public:
  WitnessOfStop(const TzHeadlessUI& userInterface, TzPath folder)
      : ui(userInterface), temporary(std::move(folder)) {}

  TzWindowProc SetWindowProc(TzWindowHandle window, TzWindowProc procedure) override {
    Tell(procedure == nullptr ? "SetWindowProc to the earlier one" : "SetWindowProc");
    return TzHeadlessWindows::SetWindowProc(window, procedure);
  }
  void RemoveProperty(TzWindowHandle window, const TzString& name) override {
    Tell("RemoveProperty " + name.GetUTF8String());
    TzHeadlessWindows::RemoveProperty(window, name);
  }
  TzErrorCodeEnum EndRoost(int flag) override {
    Tell("EndRoost " + std::to_string(flag));
    return kTzMachineFailure;
  }
  void UnInitHerder() override { Tell("UnInitHerder"); }
  void TerminateImageUtils() override { Tell("TerminateImageUtils"); }
  void TerminateAppUI() override { Tell("TerminateAppUI"); }

  std::vector<std::string> TakeTold() {
    Look();
    return std::exchange(told, {});
  }

 private:
  void Tell(const std::string& call) {
    Look();
    told.push_back(call);
  }

  void Look() {
    if (std::exchange(hasFiles, TzFile(temporary).Exists()) && !hasFiles) told.emplace_back("files gone");
    if (std::exchange(hasBar, SeesBar()) && !hasBar) told.emplace_back("bar gone");
  }

  [[nodiscard]] bool SeesBar() const {
    return std::ranges::any_of(ui.GetFrontCanvases(), [](const TzCanvas* canvas) {
      return canvas->GetSpec().place == TzCanvasSpec::Place::AppBar;
    });
  }

  const TzHeadlessUI& ui;
  TzPath temporary;
  bool hasFiles = false;
  bool hasBar = false;
  std::vector<std::string> told;
};

}  // namespace

TEST(PlexoComponent, ThePdfLibraryRunsFromBeforeTheUserInterfaceToBeforeItsEndOnceOnly) {
  TestSession session;
  PdfWatchingWindows windows;
  TzSession watching = TzSession::Current();
  watching.windows = &windows;
  TzSession::Install(watching);
  const LoadedComponent component;
  component.Find<void()>("MyPdfKitTerm")();
  for (int round = 0; round < 2; ++round) {
    component->Start();
    component->Stop();
  }
  EXPECT_THAT(windows.runs, ElementsAre(true, false, false, false));
}

TEST(PlexoComponent, TheLibraryExportsWhatAHostCallsAndNothingElse) {
  EXPECT_THAT(ExportedNames(),
              ElementsAre("GetPlexoUIComponent", "InitializePlexoUI", "MyPdfKitTerm",
                          "PlexoUIUtils::ContinueProjectClosure()", "PlexoUIUtils::GetLangId()",
                          "PlexoUIUtils::GetPlexoUIUtils()", "PlexoUIUtils::PlexoUIUtils()",
                          "PlexoUIUtils::SetLangId(TzString const&)", "PlexoUIUtils::m_LangID",
                          "PlexoUIUtils::m_PlexoUIUtils", "PlexoUIUtils::operator=(PlexoUIUtils const&)",
                          "PlexoUIUtils::~PlexoUIUtils()", "TerminatePlexoUI"));
}

TEST(PlexoComponent, StartsTheHostsFrameworkAndThePanelInTheirOrder) {
  TestSession session;
  const LoadedComponent component;
  EXPECT_EQ(component->GetKind(), 49);
  EXPECT_EQ(component.Find<ITzComponent*()>("GetPlexoUIComponent")(), component.operator->());
  EXPECT_EQ(component->ReservedQuery1() + component->ReservedQuery2() + component->ReservedQuery3() +
                component->ReservedQuery4() + component->ReservedQuery5() + component->ReservedQuery6(),
            0);

  EXPECT_EQ(component->Start(), 0);
  EXPECT_THAT(
      session.windows.GetCalls(),
      ElementsAre("RegisterApplicationClass PLEXOUI",
                  "CreateTopLevelWindow PLEXOUI plexoUI style cf0000 at default,300 size 650x500",
                  "InitHerder 101", "InitializeImageUtils without broker",
                  "SetApplicationName Plexo Packager", "StartRoost 1", "GetContainerWindow",
                  "SetParent container", "SetWindowProc", "SetProperty tz_win_messagetarget", "ShowWindow",
                  "UpdateWindow", "GetClientRect", "GetDocumentDock", "GetClientRect dock",
                  // The panel takes the dock's size.
                  "GetClientRect dock"));
  TzHeadlessDriver ui(session.ui);
  EXPECT_TRUE(ui.Sees("New Course"));
  EXPECT_TRUE(ui.Sees("Multiple SCOs"));
  const auto canvases = session.ui.GetFrontCanvases();
  EXPECT_EQ(canvases.back()->GetWidth(), 650.0);
  EXPECT_EQ(canvases.back()->GetHeight(), 500.0);
  EXPECT_EQ(component->Stop(), 0);
}

TEST(PlexoComponent, StopsInTheOrderInWhichOneThingNeedsAnother) {
  TestSession session;
  const TzPath temporary = TzFileUtil::CreateTempDir("working");
  WitnessOfStop windows(session.ui, temporary);
  TzSession witnessed = TzSession::Current();
  witnessed.windows = &windows;
  TzSession::Install(witnessed);
  const LoadedComponent component;
  component->Start();
  EXPECT_THAT(windows.TakeTold(), ElementsAre("SetWindowProc"));
  EXPECT_EQ(component.Find<int()>("TerminatePlexoUI")(), kTzMachineFailure);
  EXPECT_THAT(
      windows.TakeTold(),
      ElementsAre("files gone", "SetWindowProc to the earlier one", "RemoveProperty tz_win_messagetarget",
                  "EndRoost 1", "UnInitHerder", "TerminateImageUtils", "TerminateAppUI", "bar gone"));
  // Without anything left to stop, the host's own steps are taken all the same.
  component->Stop();
  EXPECT_THAT(windows.TakeTold(),
              ElementsAre("EndRoost 1", "UnInitHerder", "TerminateImageUtils", "TerminateAppUI"));
}

TEST(PlexoComponent, AHostThatTakesTheBarDownItselfLeavesNothingToDo) {
  TestSession session;
  const LoadedComponent component;
  component->Start();
  session.windows.EndRoost(1);
  EXPECT_FALSE(TzHeadlessDriver(session.ui).Sees("New Course"));
  EXPECT_EQ(component->Stop(), 0);
}

TEST(PlexoComponent, TheDocumentCloseMessageIsRegisteredOnceAtTheFirstMessage) {
  TestSession session;
  const LoadedComponent component;
  component->Start();
  const std::size_t started = session.windows.GetCalls().size();
  TzWindowTable& windows = session.windows.GetWindows();
  for (int count = 0; count < 2; ++count) {
    windows.SendMessage(session.windows.GetMainWindow(), kTzMessageSetCursor, 0, 0);
  }
  EXPECT_EQ(session.windows.GetCalls().size(), started + 1);
  EXPECT_EQ(session.windows.GetCalls().back(), "RegisterWindowMessage com.ostrand.roost.document.close");
  component->Stop();
}

TEST(PlexoComponent, TheResultOfTheFrameworkIsThatOfTheFunctionsAndNotOfTheComponent) {
  TestSession session;
  const LoadedComponent component;
  session.windows.SetRoostResult(kTzMachineFailure);
  EXPECT_EQ(component.Find<int()>("InitializePlexoUI")(), kTzMachineFailure);
  EXPECT_EQ(component.Find<int()>("TerminatePlexoUI")(), kTzMachineFailure);
  EXPECT_EQ(component->Start(), 0);
  EXPECT_EQ(component->Stop(), 0);
}

TEST(PlexoComponent, RegistersItsStringsInTheHostsDictionary) {
  TestSession session;
  const LoadedComponent component;
  EXPECT_EQ(component->RegisterStrings(), 0);
  EXPECT_EQ(session.dictionary.GetDefaultCount(), 181U);
  TzSession withoutDictionary = TzSession::Current();
  withoutDictionary.dictionary = nullptr;
  TzSession::Install(withoutDictionary);
  EXPECT_EQ(component->RegisterStrings(), 1);
}

TEST(PlexoComponent, TheHostsBrokerReachesTheImageHelpers) {
  TestSession session;
  static int broker = 0;
  TzSession withBroker = TzSession::Current();
  withBroker.brokerAddressProc = []() -> void* { return &broker; };
  TzSession::Install(withBroker);
  const LoadedComponent component;
  EXPECT_EQ(component->Start(), 0);
  EXPECT_THAT(session.windows.GetCalls(), testing::Contains("InitializeImageUtils with broker"));
  EXPECT_EQ(component->Stop(), 0);
}

TEST(PlexoComponent, StartsWithAHostThatOffersNothing) {
  TestSession session;
  TzSession::Install({});
  const LoadedComponent component;
  EXPECT_EQ(component->Start(), 0);
  EXPECT_EQ(component->Stop(), 0);
}
