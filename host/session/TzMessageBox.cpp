// SPDX-License-Identifier: Apache-2.0
#include "host/session/TzMessageBox.h"

#include "host/session/ITzUserInterface.h"
#include "host/session/TzSession.h"
#include "host/text/ITzStringDictionary.h"

namespace {

int Show(const TzMessageBoxOptions& options, TzMessageBoxKind kind, int answerWithoutUI) {
  ITzUserInterface* userInterface = GetUserInterface();
  return userInterface != nullptr ? userInterface->ShowMessageBox(options, kind) : answerWithoutUI;
}

}  // namespace

TzMessageBoxOptions::TzMessageBoxOptions(TzString boxTitle, TzString boxText, TzWindowHandle boxOwner)
    : title(std::move(boxTitle)), text(std::move(boxText)), owner(boxOwner) {}

TzString TzMessageBoxOptions::Resolve(const TzString& word) const {
  const ITzStringDictionary* dictionary = GetStringDictionary();
  return useDictionary && dictionary != nullptr ? dictionary->GetString(word) : word;
}

int TzShowOkOnlyMessageBox(const TzMessageBoxOptions& options) {
  return Show(options, TzMessageBoxKind::Ok, kTzButtonOk);
}

int TzShowYesNoMessageBox(const TzMessageBoxOptions& options) {
  return Show(options, TzMessageBoxKind::YesNo, kTzButtonNo);
}

int TzShowYesNoCancelMessageBox(const TzMessageBoxOptions& options) {
  return Show(options, TzMessageBoxKind::YesNoCancel, kTzButtonCancel);
}
