// SPDX-License-Identifier: Apache-2.0
#include "host/qt/TzQtWindows.h"

#include <QPalette>
#include <algorithm>
#include <cmath>

#include "QtSession.h"
#include "host/qt/TzQtPalette.h"

namespace {

/// The messages that the main window got, and what it answers.
struct Heard {
  std::vector<unsigned> messages;
  bool letsClose = false;
  QtSession* session = nullptr;
};
Heard* heard = nullptr;

TzMessageResult Hear(TzWindowHandle window, unsigned message, TzWParam wparam, TzLParam lparam) {
  heard->messages.push_back(message);
  if (message == kTzMessageGetMinMaxInfo) *reinterpret_cast<TzMinMaxInfo*>(lparam) = {580, 430};
  if (message == kTzMessageClose && !heard->letsClose) return 0;
  return heard->session->windows.DefWindowProc(window, message, wparam, lparam);
}

class WindowsTest : public testing::Test {
 protected:
  WindowsTest() {
    heard = &log;
    log.session = &session;
    session.windows.SetWindowProc(session.mainWindow, &Hear);
    session.windows.ShowWindow(session.mainWindow);
    QApplication::processEvents();
    log.messages.clear();
  }
  ~WindowsTest() override { session.windows.SetWindowProc(session.mainWindow, nullptr); }

  [[nodiscard]] bool HasHeard(unsigned message) const {
    return std::ranges::find(log.messages, message) != log.messages.end();
  }

  QtSession session;
  Heard log;
};

using TzQtWindowsTest = WindowsTest;

}  // namespace

TEST_F(TzQtWindowsTest, AResizeIsHeardWithTheSizesThatThePartsHaveThen) {
  QWidget* window = session.windows.GetMainWidget();
  EXPECT_EQ(window->minimumSize(), QSize(580, 430));
  window->resize(800, 600);
  QApplication::processEvents();
  EXPECT_TRUE(HasHeard(kTzMessageSize));
  EXPECT_TRUE(HasHeard(kTzMessageWindowPosChanged));
  const TzRect client = session.windows.GetClientRect(session.mainWindow);
  EXPECT_EQ(client.right, 800);
  EXPECT_EQ(client.bottom, 600);
  const TzRect dock = session.windows.GetClientRect(session.windows.GetDocumentDock(session.mainWindow));
  EXPECT_EQ(dock.right, 800);
  EXPECT_LT(dock.bottom, 600);
  window->resize(100, 100);
  EXPECT_EQ(window->size(), QSize(580, 430));
}

TEST_F(TzQtWindowsTest, AWindowClosesIfItsProcedureLetsIt) {
  QWidget* window = session.windows.GetMainWidget();
  EXPECT_FALSE(window->close());
  EXPECT_TRUE(window->isVisible());
  log.letsClose = true;
  const QObject patience;
  QTimer::singleShot(5'000, &patience, [] { QApplication::exit(1); });
  QTimer::singleShot(0, window, [window] { window->close(); });
  EXPECT_EQ(QApplication::exec(), 0) << "a program that waits for its last window goes on to its end";
  EXPECT_FALSE(window->isVisible());
  EXPECT_EQ(log.messages.back(), kTzMessageNcDestroy);
  // What has gone is accepted everywhere.
  EXPECT_EQ(session.windows.FindWidget(session.mainWindow), nullptr);
  EXPECT_EQ(session.windows.GetClientRect(session.mainWindow).right, 0);
  EXPECT_EQ(session.windows.GetDocumentDock(session.mainWindow), nullptr);
}

TEST_F(TzQtWindowsTest, TheFrameworkMakesTheBarAndReleasesItOnce) {
  static int bars;
  bars = 0;
  const TzAppContainterCreatorInfo info{.createAppBar = [] { ++bars; }, .releaseAppBar = [] { --bars; }};
  EXPECT_EQ(session.windows.StartRoost(info, 1), kTzSuccess);
  EXPECT_EQ(bars, 1);
  session.windows.EndRoost(1);
  session.windows.EndRoost(1);
  EXPECT_EQ(bars, 0);

  session.windows.SetApplicationName("Plexo Packager");
  EXPECT_EQ(session.windows.GetMainWidget()->windowTitle(), "Plexo Packager");
}

TEST(TzQtPaletteTest, TextsCanBeReadInBothPalettes) {
  // The contrast of WCAG 2.1, 1.4.3 for texts and 1.4.11 for outlines.
  const auto luminance = [](const QColor& color) {
    const auto linear = [](double part) {
      return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
  };
  const struct {
    QPalette::ColorRole front;
    QPalette::ColorRole back;
    double least;
  } cases[] = {
      {QPalette::WindowText, QPalette::Window, 4.5},    {QPalette::Text, QPalette::Base, 4.5},
      {QPalette::ButtonText, QPalette::Button, 4.5},    {QPalette::HighlightedText, QPalette::Highlight, 4.5},
      {QPalette::PlaceholderText, QPalette::Base, 4.5}, {QPalette::Mid, QPalette::Base, 3.0},
      {QPalette::Mid, QPalette::Window, 3.0},
  };
  for (const TzPalette palette : {ReadTzPalette("light"), ReadTzPalette("DARK")}) {
    TzApplyPalette(palette);
    for (const auto& [front, back, least] : cases) {
      const double one = luminance(QApplication::palette().color(front)) + 0.05;
      const double other = luminance(QApplication::palette().color(back)) + 0.05;
      EXPECT_GE(std::max(one, other) / std::min(one, other), least) << front << " on " << back;
    }
  }
  EXPECT_EQ(ReadTzPalette("purple"), TzPalette::System);
  TzApplyPalette(TzPalette::System);
}
