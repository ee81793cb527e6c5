// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "host/headless/TzTranscript.h"
#include "host/session/ITzUserInterface.h"

class TzHeadlessCanvas;

/// A box that was shown.
struct TzShownBox {
  TzString title;
  TzString text;
  TzMessageBoxKind kind = TzMessageBoxKind::Ok;
};

/// The user interface that draws nothing: it answers from a script and keeps what it was asked to show.
///
/// Guarantees: answers are used up in the order they were given. What happens where the script has none is
/// chosen at construction. A loose session takes the answer that changes nothing: OK, No, Cancel, a chooser
/// or dialog that is cancelled. A strict session throws a `TzHeadlessFailure`, and keeps it for
/// `CheckFinished`, since code between may hold up exceptions.
class TzHeadlessUI : public ITzUserInterface {
 public:
  enum class Script { Loose, Strict };
  /// Plays the person in a dialog; when it returns, the dialog has to be closed.
  using DialogScript = std::function<void(TzCanvas& dialog)>;

  explicit TzHeadlessUI(Script strictness = Script::Loose) : script(strictness) {}
  ~TzHeadlessUI() override;
  TzHeadlessUI(const TzHeadlessUI&) = delete;
  TzHeadlessUI& operator=(const TzHeadlessUI&) = delete;

  void AnswerNextBox(TzMessageBoxButton answer) { boxAnswers.push_back({answer, std::nullopt}); }
  /// And fails if the box has another text.
  void AnswerNextBox(const TzString& text, TzMessageBoxButton answer) {
    boxAnswers.push_back({answer, text});
  }
  void AnswerNextChooser(std::vector<TzPath> files) { chooserAnswers.push_back(std::move(files)); }
  /// The title of a file whenever it is chosen from here on; empty for none.
  void GiveTitle(const TzPath& file, const TzString& title) { givenTitles[file] = title; }
  /// Empty for a chooser that is cancelled.
  void AnswerNextFolderChooser(const TzString& folder) { folderAnswers.push_back(folder); }
  void OnNextDialog(DialogScript person) { dialogScripts.push_back(std::move(person)); }

  /// Throws if a strict session failed before, or if parts of the script weren't used.
  void CheckFinished() const;

  /// Another person sits down: forgets the script, a failure, what was shown and the transcript. What is on
  /// the screen stays, with its timers.
  void StartOver();

  /// All boxes shown so far, in order.
  [[nodiscard]] const std::vector<TzShownBox>& GetShownBoxes() const { return shownBoxes; }
  /// All file choosers opened so far, in order.
  [[nodiscard]] const std::vector<TzFileChooserRequest>& GetChooserRequests() const { return requests; }
  [[nodiscard]] const std::vector<TzFolderChooserRequest>& GetFolderRequests() const {
    return folderRequests;
  }
  [[nodiscard]] TzTranscript& GetTranscript() { return transcript; }

  /// What a person can reach: the dialog on top until it closes, else all canvases in the order of their
  /// making.
  [[nodiscard]] std::vector<TzCanvas*> GetFrontCanvases() const;

  /// Enters into the transcript what on the screen isn't as at the last call: called before and after each
  /// act of a person, it leaves nothing out that was shown.
  void NoteScreen();

  /// The event has ended: fires the timers without a delay, and those that they start, until none is left. A
  /// timer that is never removed is a failure, in a loose session too.
  void RunTimers();

  /// Keeps the failure and throws it.
  [[noreturn]] void Fail(const std::string& what);

  int ShowMessageBox(const TzMessageBoxOptions& options, TzMessageBoxKind kind) override;
  std::vector<TzPath> ChooseFiles(const TzFileChooserRequest& request) override;
  [[nodiscard]] TzString GetGivenTitle(const TzPath& file) const override;
  TzString ChooseFolder(const TzFolderChooserRequest& request) override;
  TzCanvasPtr CreateCanvas(const TzCanvasSpec& spec) override;
  void StartTimer(TimerKey key, double delay) override { timers[key] = delay; }
  void StopTimer(TimerKey key) override { timers.erase(key); }

  // For canvases.
  void RunDialog(TzHeadlessCanvas& dialog);
  void CanvasGone(TzHeadlessCanvas& canvas);

 private:
  struct BoxAnswer {
    TzMessageBoxButton answer;
    std::optional<TzString> text;
  };

  /// Strict: fails. Loose: returns.
  void Unexpected(const std::string& what);
  int TakeBoxAnswer(const TzShownBox& box);

  Script script;
  std::deque<BoxAnswer> boxAnswers;
  std::deque<std::vector<TzPath>> chooserAnswers;
  std::map<TzPath, TzString> givenTitles;
  std::deque<TzString> folderAnswers;
  std::deque<DialogScript> dialogScripts;
  std::vector<TzShownBox> shownBoxes;
  std::vector<TzFileChooserRequest> requests;
  std::vector<TzFolderChooserRequest> folderRequests;
  std::vector<TzHeadlessCanvas*> canvases;
  std::vector<TzHeadlessCanvas*> dialogs;
  std::map<TimerKey, double> timers;
  TzTranscript transcript;
  std::vector<std::string> notedScreen;
  std::optional<std::string> failure;
};
