// SPDX-License-Identifier: Apache-2.0
#include "apps/author/AuthorUserInterface.h"

#include <map>
#include <stdexcept>
#include <utility>

#include "apps/course/SafeFileName.h"
#include "host/files/TzFileUtil.h"
#include "host/kelpui/UI_Button.h"
#include "host/session/TzSession.h"
#include "host/sheets/TzDialog.h"
#include "host/text/ITzStringDictionary.h"

using kelpui::controls::UI_Button;
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

TzString GetWord(const char* key) {
  const ITzStringDictionary* words = GetStringDictionary();
  return words != nullptr ? words->GetString(key) : TzString(key);
}

TzString DescribeTaken(const TzPath& file, const TzPath& holder) {
  const bool isSame = file == holder;
  const TzString words = GetWord(isSame ? "kPlexoErrorSCOFolderExists" : "kDesktopNameTaken");
  return words + "\n\n" + file.GetString() + (isSame ? TzString() : "\n" + holder.GetString());
}

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
  TzFileChooserRequest asked = request;
  // The component starts where the first file was last, which may have been a stand-in.
  asked.startFolder = sources.FindOwnFolder(request.startFolder);
  std::vector<TzPath> files = NameSafely(
      HoldBackTaken(playing != nullptr ? playing->AnswerChooser(asked) : shown.ChooseFiles(asked)));
  sources.NoteChosen(files);
  turnsToSettle = kMostTurnsToSettle;
  if (playing == nullptr && !files.empty()) settling->UI_InstallTimer(0.0, settleTimer);
  return files;
}

std::vector<TzPath> AuthorUserInterface::HoldBackTaken(const std::vector<TzPath>& files) {
  std::map<TzString, TzPath> chosen;
  std::vector<TzPath> free;
  for (const TzPath& file : files) {
    const TzString name = SafeFileName::Make(TzFileUtil::GetBaseFileName(file));
    const auto [namesake, isFirst] = chosen.emplace(name, file);
    const auto holder = isFirst ? sources.FindHolder(name, UI_Button::GetPressed()) : namesake->second;
    if (!holder) {
      free.push_back(file);
    } else if (playing != nullptr) {
      playing->NoteTaken(file, *holder);
    } else {
      TzMessageBoxOptions options(GetWord("kPlexoError"), DescribeTaken(file, *holder));
      options.SetToUseDictionary(false);
      shown.ShowMessageBox(options, TzMessageBoxKind::Ok);
    }
  }
  return free;
}

std::vector<TzPath> AuthorUserInterface::NameSafely(const std::vector<TzPath>& files) {
  std::vector<TzPath> named;
  for (const TzPath& file : files) {
    const auto path = SafeFileName::Provide(file);
    if (!path) {
      // The user interface adds the reason that was reported.
      TzMessageBoxOptions options(GetWord("kPlexoError"), file.GetString());
      options.SetToUseDictionary(false);
      ShowMessageBox(options, TzMessageBoxKind::Ok);
      break;
    }
    if (*path != file) sources.NoteStandIn(*path, file);
    named.push_back(*path);
  }
  return named;
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
