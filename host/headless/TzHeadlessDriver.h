// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "host/headless/TzHeadlessScreen.h"
#include "host/headless/TzHeadlessUI.h"

/// A person in front of a headless user interface, so that a script reads as what somebody does:
///
///     TzHeadlessDriver ui(headlessUI);
///     ui.OnNextDialog([](TzHeadlessDriver& dialog) {
///       dialog.Type("Identifier", "My Course 1");
///       dialog.Press("OK");
///     });
///     ui.Press("Multiple SCOs");
///     ui.SelectRows({0, 2});
///
/// Views are called by what can be read on or beside them (`TzHeadlessScreen`), with or without a colon at
/// the end, or by their tooltip; a name of its own counts before one that stands beside. An empty name means
/// the only view of its kind that has none, else the only one of its kind.
///
/// Guarantees: only what a person can reach can be used. A view that isn't there, isn't enabled or isn't the
/// only one of its name throws a `TzHeadlessFailure` that lists what can be seen. After each act the timers
/// that are due have fired, and the transcript tells what changed on the screen.
class TzHeadlessDriver {
 public:
  using DialogScript = std::function<void(TzHeadlessDriver& dialog)>;

  /// In front of what is on top at the time of each act.
  explicit TzHeadlessDriver(TzHeadlessUI& userInterface) : ui(&userInterface) {}

  void Press(const std::string& name);
  /// Into a field of text or of a number.
  void Type(const std::string& name, const std::string& text);
  void Check(const std::string& name) { SetChecked(name, true); }
  void Uncheck(const std::string& name) { SetChecked(name, false); }
  /// An item of a popup, by its text.
  void Choose(const std::string& name, const std::string& item);
  /// Rows of the top level of the only tree, and no others.
  void SelectRows(const std::vector<std::size_t>& rows);

  /// The person looking at one top-level row of the only tree and at what is below it; it is scrolled into
  /// view.
  [[nodiscard]] TzHeadlessDriver InRow(std::size_t row) const;

  void AnswerNextBox(TzMessageBoxButton answer) { ui->AnswerNextBox(answer); }
  void AnswerNextBox(const TzString& text, TzMessageBoxButton answer) { ui->AnswerNextBox(text, answer); }
  void AnswerNextChooser(std::vector<TzPath> files) { ui->AnswerNextChooser(std::move(files)); }
  void AnswerNextFolderChooser(const TzString& folder) { ui->AnswerNextFolderChooser(folder); }
  void OnNextDialog(const DialogScript& person);
  /// See `TzHeadlessUI::CheckFinished`.
  void CheckFinished() const { ui->CheckFinished(); }

  /// What can be seen, a line each, as `TzHeadlessScreen` words it.
  [[nodiscard]] std::string See() const;
  [[nodiscard]] bool Sees(const std::string& name) const;
  [[nodiscard]] bool IsEnabled(const std::string& name) const;
  /// What a field, check box ("on", "off") or popup shows.
  [[nodiscard]] std::string Read(const std::string& name) const;
  [[nodiscard]] std::string GetTranscript() const { return ui->GetTranscript().GetText(); }

 private:
  using Node = kelpui::controls::UI_Node;
  using Tree = kelpui::controls::UI_MultiColumnTree;

  [[nodiscard]] TzHeadlessScreen Look() const;
  /// The only view of the name among those that `isWanted` takes; `kind` is what the failure calls them.
  [[nodiscard]] Node& Find(const std::string& name, const char* kind,
                           const std::function<bool(const Node& node)>& isWanted) const;
  /// The same, and enabled.
  [[nodiscard]] Node& Reach(const std::string& name, const char* kind,
                            const std::function<bool(const Node& node)>& isWanted) const;
  [[nodiscard]] Tree& FindTree() const;
  void SetChecked(const std::string& name, bool checked);
  void Act(const std::string& line, const std::function<void()>& act);
  [[noreturn]] void Fail(const std::string& what) const;

  TzHeadlessUI* ui;
  kelpui::controls::UI_RowPtr row;
};
