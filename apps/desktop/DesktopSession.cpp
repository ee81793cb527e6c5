// SPDX-License-Identifier: Apache-2.0
#include "apps/desktop/DesktopSession.h"

#include <QApplication>

#include "apps/desktop/DesktopWords.h"
#include "host/qt/TzQtText.h"

DesktopSession::DesktopSession(DesktopWindow& window, DesktopSettings& settings)
    : windows(window), userInterface(windows, settings, problems) {
  RegisterDesktopWords(dictionary);
  previous = TzSession::Install({.dictionary = &dictionary,
                                 .userInterface = &author,
                                 .windows = &windows,
                                 .progress = &progress,
                                 .problems = &problems});
}

DesktopSession::~DesktopSession() {
  author.Forget();
  TzSession::Install(previous);
}

QString DesktopSession::GetWord(const char* key) const { return ToQtText(dictionary.GetString(key)); }

bool DesktopSession::IsBusy() const {
  return progress.IsReporting() || QApplication::activeModalWidget() != nullptr;
}
