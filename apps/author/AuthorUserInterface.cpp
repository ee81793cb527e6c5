// SPDX-License-Identifier: Apache-2.0
#include "apps/author/AuthorUserInterface.h"

#include <stdexcept>
#include <utility>

#include "host/sheets/TzDialog.h"

using kelpui::controls::UI_Change;
using kelpui::controls::UI_Node;
using kelpui::controls::UI_NodeKind;
using kelpui::controls::UI_NodeManager;

namespace {

constexpr int kMostTurnsToSettle = 100;
constexpr double kSecondsToSettle = 0.1;

/// A dialog that a script answers: nothing of it is drawn.
class ScriptedCanvas : public TzCanvas {
 public:
  ScriptedCanvas(TzCanvasSpec canvasSpec, AuthorUserInterface& userInterface)
      : TzCanvas(std::move(canvasSpec)), ui(&userInterface) {}

 protected:
  void Redraw(UI_Node& /*node*/, UI_Change /*change*/) override {}
  void LayOut() override {}
  void RunEventLoop() override { ui->RunScripted(*this); }

 private:
  AuthorUserInterface* ui;
};

}  // namespace

AuthorUserInterface::AuthorUserInterface(ITzUserInterface& shownInterface)
    : shown(shownInterface),
      settling(new UI_Node(UI_NodeKind::View)),
      settleTimer(UI_NodeManager::Get().GetUniqueTimerID()) {
  settling->InstallTimerNotification(this, [this](UI_Node& node, std::uint32_t timerId) {
    node.UI_RemoveTimer(timerId);
    SettleSoon();
    return true;
  });
  details.SetCourseEnded([this] { sources.Forget(); });
}

AuthorUserInterface::~AuthorUserInterface() { Forget(); }

void AuthorUserInterface::Forget() {
  settling->UI_RemoveTimer(settleTimer);
  sources.Forget();
  screen.Forget();
}

CourseDetails& AuthorUserInterface::GetDetails() {
  details.Attach();
  return details;
}

void AuthorUserInterface::SetScript(AuthorScript* script) {
  sources.Settle();
  playing = script;
}

void AuthorUserInterface::RunScriptedTimers() {
  constexpr int kMostTurns = 1000;
  for (int turn = 0; turn < kMostTurns; ++turn) {
    if (scriptedTimers.empty()) return;
    const std::set<TimerKey> due = scriptedTimers;
    for (const TimerKey key : due) UI_NodeManager::Get().FireTimer(key);
  }
  throw std::logic_error("timer: one without a delay is never removed");
}

int AuthorUserInterface::ShowMessageBox(const TzMessageBoxOptions& options, TzMessageBoxKind kind) {
  return playing != nullptr ? playing->AnswerBox(options, kind) : shown.ShowMessageBox(options, kind);
}

std::vector<TzPath> AuthorUserInterface::ChooseFiles(const TzFileChooserRequest& request) {
  details.Attach();
  sources.Settle();
  std::vector<TzPath> files =
      playing != nullptr ? playing->AnswerChooser(request) : shown.ChooseFiles(request);
  sources.NoteChosen(files);
  turnsToSettle = kMostTurnsToSettle;
  if (playing == nullptr && !files.empty()) settling->UI_InstallTimer(0.0, settleTimer);
  return files;
}

// The component adds the files when the chooser has answered, mostly before the next timer: a user interface
// that shows the progress of it may fire timers meanwhile. If all files are refused there is nothing to wait
// for.
void AuthorUserInterface::SettleSoon() {
  sources.Settle();
  if (sources.IsSettled() || --turnsToSettle <= 0) return;
  settling->UI_InstallTimer(kSecondsToSettle, settleTimer);
}

TzString AuthorUserInterface::ChooseFolder(const TzFolderChooserRequest& request) {
  return playing != nullptr ? TzString() : shown.ChooseFolder(request);
}

TzCanvasPtr AuthorUserInterface::CreateCanvas(const TzCanvasSpec& spec) {
  details.Attach();
  const bool isScripted = playing != nullptr && spec.place == TzCanvasSpec::Place::Dialog;
  TzCanvasPtr canvas = isScripted ? TzCanvasPtr(new ScriptedCanvas(spec, *this)) : shown.CreateCanvas(spec);
  screen.NoteCanvas(canvas);
  return canvas;
}

void AuthorUserInterface::RunScripted(TzCanvas& dialog) {
  if (playing != nullptr) playing->RunDialog(dialog);
  if (dialog.IsModalRunning()) PressBelow(dialog, "cancel");
  if (dialog.IsModalRunning()) dialog.EndModal(kTzDialogCancel);
}

void AuthorUserInterface::DialogClosed(TzCanvas& dialog, int result) {
  const TzDataModel* cells = dialog.GetDataModel();
  if (result == kTzDialogOk && cells != nullptr) details.NoteConfirmed(*cells);
  if (playing == nullptr) shown.DialogClosed(dialog, result);
}

void AuthorUserInterface::StartTimer(TimerKey key, double delay) {
  details.Attach();
  if (playing != nullptr && delay <= 0.0) {
    scriptedTimers.insert(key);
  } else {
    shown.StartTimer(key, delay);
  }
}

void AuthorUserInterface::StopTimer(TimerKey key) {
  if (scriptedTimers.erase(key) == 0) shown.StopTimer(key);
}
