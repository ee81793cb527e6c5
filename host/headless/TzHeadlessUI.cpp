// SPDX-License-Identifier: Apache-2.0
#include "host/headless/TzHeadlessUI.h"

namespace {

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

}  // namespace

int TzHeadlessUI::ShowMessageBox(const TzMessageBoxOptions& options, TzMessageBoxKind kind) {
  shownBoxes.push_back({options.GetTitle(), options.GetText(), kind});
  if (boxAnswers.empty()) return AnswerThatChangesNothing(kind);
  const int answer = boxAnswers.front();
  boxAnswers.pop_front();
  return answer;
}

std::vector<TzPath> TzHeadlessUI::ChooseFiles(const TzFileChooserRequest& request) {
  requests.push_back(request);
  if (chooserAnswers.empty()) return {};
  std::vector<TzPath> files = std::move(chooserAnswers.front());
  chooserAnswers.pop_front();
  return files;
}
