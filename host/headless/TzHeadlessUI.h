// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <deque>
#include <vector>

#include "host/session/ITzUserInterface.h"

/// A box that was shown.
struct TzShownBox {
  TzString title;
  TzString text;
  TzMessageBoxKind kind = TzMessageBoxKind::Ok;
};

/// The user interface that draws nothing: it answers from a script and keeps what it was asked to show.
///
/// Guarantees: answers are used up in the order they were given. A box without an answer left takes the one
/// that changes nothing (OK, No, Cancel), a chooser without one counts as cancelled.
class TzHeadlessUI : public ITzUserInterface {
 public:
  void AnswerNextBox(TzMessageBoxButton answer) { boxAnswers.push_back(answer); }
  void AnswerNextChooser(std::vector<TzPath> files) { chooserAnswers.push_back(std::move(files)); }

  /// All boxes shown so far, in order.
  [[nodiscard]] const std::vector<TzShownBox>& GetShownBoxes() const { return shownBoxes; }
  /// All choosers opened so far, in order.
  [[nodiscard]] const std::vector<TzFileChooserRequest>& GetChooserRequests() const { return requests; }

  int ShowMessageBox(const TzMessageBoxOptions& options, TzMessageBoxKind kind) override;
  std::vector<TzPath> ChooseFiles(const TzFileChooserRequest& request) override;

 private:
  std::deque<TzMessageBoxButton> boxAnswers;
  std::deque<std::vector<TzPath>> chooserAnswers;
  std::vector<TzShownBox> shownBoxes;
  std::vector<TzFileChooserRequest> requests;
};
