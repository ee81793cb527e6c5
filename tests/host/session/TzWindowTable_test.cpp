// SPDX-License-Identifier: Apache-2.0
#include "host/session/TzWindowTable.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/TestSession.h"

using testing::ElementsAre;

namespace {

std::vector<unsigned> messages;
bool refusesClose = false;

/// Keeps the messages, wants a smallest size, and lets the default procedure do the rest.
TzMessageResult Listen(TzWindowHandle window, unsigned message, TzWParam wparam, TzLParam lparam) {
  messages.push_back(message);
  if (message == kTzMessageGetMinMaxInfo) *reinterpret_cast<TzMinMaxInfo*>(lparam) = {580, 430};
  if (message == kTzMessageClose && refusesClose) return 0;
  return GetWindowSystem()->CallWindowProc(nullptr, window, message, wparam, lparam);
}

class WindowTest : public testing::Test {
 protected:
  WindowTest() {
    messages.clear();
    refusesClose = false;
    window = system.CreateTopLevelWindow(
        {.className = "PLEXOUI", .title = "plexoUI", .width = 650, .height = 500});
    EXPECT_EQ(system.SetWindowProc(window, Listen), nullptr);
  }

  TestSession session;
  TzHeadlessWindows& system = session.windows;
  TzWindowTable& table = session.windows.GetWindows();
  TzWindowHandle window = nullptr;
};

}  // namespace

TEST_F(WindowTest, ResizingAsksForTheSmallestSizeAndReportsTheNewOne) {
  table.Resize(window, 600, 100);
  EXPECT_THAT(messages, ElementsAre(kTzMessageGetMinMaxInfo, kTzMessageWindowPosChanged, kTzMessageSize));
  EXPECT_EQ(system.GetClientRect(window).right, 600.0);
  EXPECT_EQ(system.GetClientRect(window).bottom, 430.0);
  EXPECT_EQ(system.GetClientRect(system.GetDocumentDock(window)).bottom, 430.0)
      << "the dock fills the window";
  EXPECT_EQ(system.GetUpdateRect(window).right, 600.0);
  system.UpdateWindow(window);
  EXPECT_EQ(system.GetUpdateRect(window).right, 0.0);
}

TEST_F(WindowTest, MovingReportsThatTheSizeStayed) {
  static unsigned flags = 0;
  system.SetWindowProc(window, [](TzWindowHandle, unsigned, TzWParam, TzLParam lparam) {
    flags = reinterpret_cast<const TzWindowPos*>(lparam)->flags;
    return TzMessageResult{0};
  });
  table.Move(window, 10, 20);
  EXPECT_EQ(flags, kTzPosNoSize);
  EXPECT_EQ(table.Find(window)->frame.right, 660.0);
}

TEST_F(WindowTest, AWindowGoesOnlyIfItsProcedureLetsTheClosePass) {
  refusesClose = true;
  EXPECT_FALSE(table.Close(window));
  refusesClose = false;
  EXPECT_TRUE(table.Close(window));
  EXPECT_THAT(messages, ElementsAre(kTzMessageClose, kTzMessageClose, kTzMessageNcDestroy));
  EXPECT_EQ(system.GetMainWindow(), nullptr);
}

TEST_F(WindowTest, RegistersEachMessageNameOnce) {
  const unsigned first = system.RegisterWindowMessage("com.ostrand.roost.document.close");
  EXPECT_GE(first, kTzMessageFirstRegistered);
  EXPECT_NE(system.RegisterWindowMessage("other"), first);
  EXPECT_EQ(system.RegisterWindowMessage("com.ostrand.roost.document.close"), first);
}

TEST_F(WindowTest, AFrameworkThatStartsMakesTheAppBarAndReleasesItOnceAtItsEnd) {
  static int bars = 0;
  const TzAppContainterCreatorInfo info{.createAppBar = [] { ++bars; }, .releaseAppBar = [] { --bars; }};
  system.SetRoostResult(kTzFailure);
  EXPECT_EQ(system.StartRoost(info, 1), kTzFailure);
  EXPECT_EQ(bars, 0);
  system.SetRoostResult(kTzSuccess);
  system.StartRoost(info, 1);
  EXPECT_EQ(bars, 1);
  system.EndRoost(1);
  system.EndRoost(1);
  EXPECT_EQ(bars, 0);
}

TEST_F(WindowTest, AWindowThatHasGoneTakesEverythingAndDoesNothing) {
  table.Destroy(window);
  messages.clear();
  for (TzWindowHandle gone : {window, TzWindowHandle{}}) {
    system.SetParent(gone, nullptr);
    system.ShowWindow(gone);
    system.SetProperty(gone, "name", &messages);
    EXPECT_EQ(system.GetProperty(gone, "name"), nullptr);
    EXPECT_EQ(system.SetWindowProc(gone, Listen), nullptr);
    table.Resize(gone, 1, 1);
    table.Move(gone, 1, 1);
    EXPECT_EQ(system.GetClientRect(gone).right, 0.0);
  }
  EXPECT_TRUE(messages.empty());
}
