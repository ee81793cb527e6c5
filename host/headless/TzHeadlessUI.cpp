// SPDX-License-Identifier: Apache-2.0
#include "host/headless/TzHeadlessUI.h"

#include <algorithm>
#include <utility>

#include "host/headless/TzHeadlessCanvas.h"
#include "host/headless/TzHeadlessFailure.h"
#include "host/headless/TzHeadlessScreen.h"
#include "host/sheets/TzDialog.h"

using kelpui::controls::UI_NodeManager;

namespace {

struct AnswerWords {
  TzMessageBoxButton button;
  const char* words;
};

constexpr AnswerWords kAnswers[] = {
    {kTzButtonOk, "OK"}, {kTzButtonYes, "Yes"}, {kTzButtonNo, "No"}, {kTzButtonCancel, "Cancel"}};

const char* GetWords(int answer) {
  const auto* found = std::ranges::find(kAnswers, answer, &AnswerWords::button);
  return found != std::end(kAnswers) ? found->words : "?";
}

int AnswerThatChangesNothing(TzMessageBoxKind kind) {
  switch (kind) {
    case TzMessageBoxKind::YesNo:
      return kTzButtonNo;
    case TzMessageBoxKind::YesNoCancel:
      return kTzButtonCancel;
    case TzMessageBoxKind::Ok:
      break;
  }
  return kTzButtonOk;
}

bool IsOffered(TzMessageBoxKind kind, TzMessageBoxButton button) {
  switch (kind) {
    case TzMessageBoxKind::Ok:
      return button == kTzButtonOk;
    case TzMessageBoxKind::YesNo:
      return button == kTzButtonYes || button == kTzButtonNo;
    case TzMessageBoxKind::YesNoCancel:
      break;
  }
  return button != kTzButtonOk;
}

std::string Quote(const TzString& text) { return "\"" + text.GetUTF8String() + "\""; }

std::string Describe(const TzShownBox& box) { return "box " + Quote(box.title) + ": " + Quote(box.text); }

template <typename Pointer>
void RemoveFrom(std::vector<Pointer>& list, Pointer item) {
  list.erase(std::remove(list.begin(), list.end(), item), list.end());
}

}  // namespace

TzHeadlessUI::~TzHeadlessUI() {
  for (TzHeadlessCanvas* canvas : canvases) canvas->Forget();
}

void TzHeadlessUI::Fail(const std::string& what) {
  if (!failure) failure = what;
  throw TzHeadlessFailure(what);
}

void TzHeadlessUI::Unexpected(const std::string& what) {
  if (script == Script::Strict) Fail(what);
}

void TzHeadlessUI::CheckFinished() const {
  if (failure) throw TzHeadlessFailure(*failure);
  const struct {
    const char* name;
    std::size_t count;
  } unused[] = {{"answers to boxes", boxAnswers.size()},
                {"answers to file choosers", chooserAnswers.size()},
                {"answers to folder choosers", folderAnswers.size()},
                {"dialogs", dialogScripts.size()}};
  for (const auto& [name, count] : unused) {
    if (count != 0)
      throw TzHeadlessFailure("script: " + std::to_string(count) + " " + name + " weren't used");
  }
}

void TzHeadlessUI::StartOver() {
  boxAnswers.clear();
  chooserAnswers.clear();
  folderAnswers.clear();
  dialogScripts.clear();
  shownBoxes.clear();
  requests.clear();
  folderRequests.clear();
  transcript = {};
  notedScreen.clear();
  failure.reset();
}

int TzHeadlessUI::ShowMessageBox(const TzMessageBoxOptions& options, TzMessageBoxKind kind) {
  const TzShownBox box{options.GetTitle(), options.GetText(), kind};
  shownBoxes.push_back(box);
  const int answer = TakeBoxAnswer(box);
  transcript.Add(Describe(box) + " -> " + GetWords(answer));
  return answer;
}

int TzHeadlessUI::TakeBoxAnswer(const TzShownBox& box) {
  if (boxAnswers.empty()) {
    Unexpected(Describe(box) + " isn't expected");
    return AnswerThatChangesNothing(box.kind);
  }
  const BoxAnswer next = boxAnswers.front();
  boxAnswers.pop_front();
  if (next.text && *next.text != box.text) {
    Unexpected(Describe(box) + " isn't the one expected: " + Quote(*next.text));
  }
  if (!IsOffered(box.kind, next.answer)) {
    Unexpected(Describe(box) + " doesn't offer " + GetWords(next.answer));
  }
  return next.answer;
}

std::vector<TzPath> TzHeadlessUI::ChooseFiles(const TzFileChooserRequest& request) {
  requests.push_back(request);
  const std::string what = "file chooser " + Quote(request.title);
  if (chooserAnswers.empty()) {
    Unexpected(what + " isn't expected");
    transcript.Add(what + " -> cancelled");
    return {};
  }
  std::vector<TzPath> files = std::move(chooserAnswers.front());
  chooserAnswers.pop_front();
  transcript.Add(what + " -> " + (files.empty() ? "cancelled" : std::to_string(files.size()) + " files"));
  return files;
}

TzString TzHeadlessUI::GetGivenTitle(const TzPath& file) const {
  const auto found = givenTitles.find(file);
  return found != givenTitles.end() ? found->second : TzString();
}

TzString TzHeadlessUI::ChooseFolder(const TzFolderChooserRequest& request) {
  folderRequests.push_back(request);
  const std::string what = "folder chooser " + Quote(request.title);
  if (folderAnswers.empty()) {
    Unexpected(what + " isn't expected");
    transcript.Add(what + " -> cancelled");
    return {};
  }
  TzString folder = std::move(folderAnswers.front());
  folderAnswers.pop_front();
  transcript.Add(what + " -> " + (folder.IsEmpty() ? "cancelled" : Quote(folder)));
  return folder;
}

TzCanvasPtr TzHeadlessUI::CreateCanvas(const TzCanvasSpec& spec) {
  auto* canvas = new TzHeadlessCanvas(spec, *this);
  canvases.push_back(canvas);
  return canvas;
}

void TzHeadlessUI::CanvasGone(TzHeadlessCanvas& canvas) {
  RemoveFrom(canvases, &canvas);
  RemoveFrom(dialogs, &canvas);
}

std::vector<TzCanvas*> TzHeadlessUI::GetFrontCanvases() const {
  if (!dialogs.empty()) {
    return dialogs.back()->IsModalRunning() ? std::vector<TzCanvas*>{dialogs.back()}
                                            : std::vector<TzCanvas*>();
  }
  std::vector<TzCanvas*> front;
  for (TzHeadlessCanvas* canvas : canvases) {
    if (canvas->GetSpec().place != TzCanvasSpec::Place::Dialog) front.push_back(canvas);
  }
  return front;
}

void TzHeadlessUI::NoteScreen() {
  const std::vector<TzCanvas*> front = GetFrontCanvases();
  std::vector<std::string> lines =
      TzHeadlessScreen(std::vector<TzHeadlessScreen::Node*>(front.begin(), front.end())).GetLines();
  transcript.AddDifference(notedScreen, lines);
  notedScreen = std::move(lines);
}

void TzHeadlessUI::RunDialog(TzHeadlessCanvas& dialog) {
  const std::string name = "dialog " + Quote(dialog.GetSpec().title);
  if (dialogScripts.empty()) {
    Unexpected(name + " isn't expected");
    transcript.Add(name + " -> cancelled");
    dialog.EndModal(kTzDialogCancel);
    return;
  }
  const DialogScript person = std::move(dialogScripts.front());
  dialogScripts.pop_front();
  NoteScreen();
  transcript.Add(name);
  const std::vector<std::string> below = std::exchange(notedScreen, {});
  dialogs.push_back(&dialog);
  try {
    NoteScreen();
    person(dialog);
  } catch (...) {
    RemoveFrom(dialogs, &dialog);
    throw;
  }
  RemoveFrom(dialogs, &dialog);
  if (dialog.IsModalRunning()) Fail(name + " is still open at the end of its script");
  notedScreen = below;
  transcript.Add("end of " + name);
}

void TzHeadlessUI::RunTimers() {
  constexpr int kMostTurns = 1000;
  for (int turn = 0; turn < kMostTurns; ++turn) {
    std::vector<TimerKey> due;
    for (const auto& [key, delay] : timers) {
      if (delay <= 0.0) due.push_back(key);
    }
    if (due.empty()) return;
    for (const TimerKey key : due) UI_NodeManager::Get().FireTimer(key);
  }
  Fail("a timer without a delay is never removed");
}
