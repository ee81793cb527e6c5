// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <set>

#include "apps/author/AuthorScript.h"
#include "apps/author/CourseDetails.h"
#include "apps/author/CourseScreen.h"
#include "apps/author/CourseSources.h"
#include "host/session/ITzUserInterface.h"

/// The user interface of a program that knows the course in the panel: it passes everything on to another
/// one, and takes down what it sees pass. To be installed as the session's before the component starts, and
/// to be kept until that has ended.
class AuthorUserInterface : public ITzUserInterface {
 public:
  explicit AuthorUserInterface(ITzUserInterface& shownInterface);
  ~AuthorUserInterface() override;
  AuthorUserInterface(const AuthorUserInterface&) = delete;
  AuthorUserInterface& operator=(const AuthorUserInterface&) = delete;

  [[nodiscard]] const CourseScreen& GetScreen() const { return screen; }
  [[nodiscard]] CourseSources& GetSources() { return sources; }
  [[nodiscard]] CourseDetails& GetDetails();

  /// Null puts the person back.
  void SetScript(AuthorScript* script);
  /// Fires the timers without a delay that were started under a script, until none is left.
  void RunScriptedTimers();
  /// Lets go of every node of the component, before that is unloaded.
  void Forget();

  int ShowMessageBox(const TzMessageBoxOptions& options, TzMessageBoxKind kind) override;
  std::vector<TzPath> ChooseFiles(const TzFileChooserRequest& request) override;
  TzString ChooseFolder(const TzFolderChooserRequest& request) override;
  TzCanvasPtr CreateCanvas(const TzCanvasSpec& spec) override;
  void DialogClosed(TzCanvas& dialog, int result) override;
  void StartTimer(TimerKey key, double delay) override;
  void StopTimer(TimerKey key) override;

  // For canvases.
  void RunScripted(TzCanvas& dialog);

 private:
  void SettleSoon();
  /// Those whose names are free in the place that asks; the author is told of the others. The component
  /// deletes the folder of a refused file's name, even if it is another file's.
  [[nodiscard]] std::vector<TzPath> HoldBackTaken(const std::vector<TzPath>& files);
  /// The paths by which the component gets the files: their own, or of safe names.
  [[nodiscard]] std::vector<TzPath> NameSafely(const std::vector<TzPath>& files);

  ITzUserInterface& shown;
  CourseScreen screen;
  CourseSources sources{screen};
  CourseDetails details{screen};
  AuthorScript* playing = nullptr;
  std::set<TimerKey> scriptedTimers;
  /// Has the timer after which the component has done with the files that were chosen.
  kelpui::controls::UI_NodePtr settling;
  std::uint32_t settleTimer;
  int turnsToSettle = 0;
};
