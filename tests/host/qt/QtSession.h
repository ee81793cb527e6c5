// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>
#include <QTimer>
#include <functional>
#include <string>

#include "host/qt/TzQtUserInterface.h"
#include "host/qt/TzQtWindows.h"
#include "host/session/TzSession.h"
#include "host/text/TzStringDictionary.h"

/// A session that draws, with a main window of the usual size.
class QtSession {
 public:
  QtSession()
      : previous(TzSession::Install({.dictionary = &words, .userInterface = &ui, .windows = &windows})),
        mainWindow(windows.CreateTopLevelWindow({"TEST", "test", kTzOverlappedWindow, 100, 100, 650, 500})) {}
  ~QtSession() { TzSession::Install(previous); }
  QtSession(const QtSession&) = delete;
  QtSession& operator=(const QtSession&) = delete;

  TzStringDictionary words;
  TzQtWindows windows;
  TzQtUserInterface ui{windows};

 private:
  TzSession previous;

 public:
  TzWindowHandle mainWindow;
};

/// What the person does once a modal window is up. Fails the test where none comes, and where it isn't closed
/// by that.
inline void OnNextWindow(const std::function<void(QWidget& window)>& person) {
  QTimer::singleShot(0, qApp, [person] {
    for (int turn = 0; turn < 100 && QApplication::activeModalWidget() == nullptr; ++turn) QTest::qWait(10);
    QWidget* window = QApplication::activeModalWidget();
    ASSERT_NE(window, nullptr);
    person(*window);
    QTimer::singleShot(10'000, window, [window] {
      if (!window->isVisible()) return;
      ADD_FAILURE() << "a window is still open: " << window->windowTitle().toStdString();
      window->close();
    });
  });
}

/// The shown widget of the type whose accessible name, or text without the mark of its mnemonic, is this.
template <typename Widget>
Widget* FindShown(const QWidget& root, const QString& name) {
  for (Widget* each : root.findChildren<Widget*>()) {
    if (!each->isVisibleTo(&root)) continue;
    const QString text = each->property("text").toString().remove(QLatin1Char('&'));
    if (each->accessibleName() == name || (!name.isEmpty() && text == name)) return each;
  }
  return nullptr;
}
