// SPDX-License-Identifier: Apache-2.0
#include "shell/TzWin32MessageTarget.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>

#include "core/PlexoCourseModel.h"
#include "core/PlexoLinearCourseModel.h"
#include "core/PlexoModuleCourseModel.h"
#include "support/PanelSession.h"
#include "support/StagedCourse.h"

using testing::ElementsAre;

namespace {

constexpr const char* kProperty = "tz_win_messagetarget";
constexpr const char* kUnsaved = "There are unsaved changes. Do you want to publish them before exiting?";

/// What reached the procedure that stood in the window before.
std::vector<unsigned> forwarded;

TzMessageResult EarlierProc(TzWindowHandle window, unsigned message, TzWParam wparam, TzLParam lparam) {
  forwarded.push_back(message);
  GetWindowSystem()->DefWindowProc(window, message, wparam, lparam);
  return 7;
}

class MessageTargetTest : public testing::Test {
 protected:
  MessageTargetTest() {
    forwarded.clear();
    windows.SetWindowProc(window, EarlierProc);
  }

  [[nodiscard]] TzWindowTable& Table() const { return windows.GetWindows(); }

  TzMessageResult Send(unsigned message, TzLParam lparam = 0) const {
    return Table().SendMessage(window, message, 0, lparam);
  }

  PanelSession panel;
  TzHeadlessWindows& windows = panel.session.windows;
  TzWindowHandle window = windows.CreateTopLevelWindow({});
};

class ThrowingTarget : public TzWin32MessageTarget {
 public:
  ThrowingTarget(TzWindowHandle target, int& deleted) : TzWin32MessageTarget(target, true), count(deleted) {}
  ~ThrowingTarget() override { ++count; }
  TzMessageResult HandleMessage(TzWindowHandle /*target*/, unsigned /*message*/, TzWParam /*wparam*/,
                                TzLParam /*lparam*/) override {
    throw std::runtime_error("thrown by a handler");
  }

 private:
  int& count;
};

}  // namespace

TEST_F(MessageTargetTest, ForwardsWhatItDoesNotAnswerItself) {
  const TzWin32MessageTarget target(window, false);
  const unsigned registered = windows.RegisterWindowMessage("com.ostrand.roost.document.close");
  for (const unsigned message :
       {unsigned{kTzMessageSize}, unsigned{kTzMessageWindowPosChanged}, 0x400U, registered}) {
    EXPECT_EQ(Send(message), 7) << message;
  }
  for (const unsigned message : {kTzMessageSetCursor, kTzMessageGetMinMaxInfo}) EXPECT_EQ(Send(message), 0);
  EXPECT_THAT(forwarded, ElementsAre(kTzMessageSize, kTzMessageWindowPosChanged, 0x400U, registered));
}

TEST_F(MessageTargetTest, KeepsTheWindowAtItsLeastSize) {
  const TzWin32MessageTarget target(window, false);
  Table().Resize(window, 100, 2000);
  const TzRect size = windows.GetClientRect(window);
  EXPECT_EQ(size.right, 580.0);
  EXPECT_EQ(size.bottom, 2000.0);
}

TEST_F(MessageTargetTest, ThePanelFollowsASizeAndAPositionThatHasToBeDrawn) {
  // The panel's own window, whose size the panel takes at each call.
  window = panel.window;
  const TzWin32MessageTarget target(window, false);
  TzWindowModel& model = *Table().Find(window);
  const auto canvases = panel.session.ui.GetFrontCanvases();
  const auto isInWindow = [&](const TzCanvas* canvas) { return canvas->GetSpec().parent == window; };
  const auto found = std::ranges::find_if(canvases, isInWindow);
  ASSERT_NE(found, canvases.end());
  const auto width = [&] { return (*found)->GetWidth(); };
  const auto change = [&](TzReal to, const TzRect& toDraw) {
    model.frame.right = model.frame.left + to;
    model.updateArea = toDraw;
  };
  const TzRect drawn{};
  const TzRect part{0.0, 0.0, 10.0, 10.0};

  change(901.0, drawn);
  Send(kTzMessageSize);
  EXPECT_EQ(width(), 901.0);

  const struct {
    unsigned unchanged;
    TzRect toDraw;
    bool follows;
  } rows[] = {
      {kTzPosNoMove, part, true},
      {kTzPosNoSize, part, true},
      {0, part, true},
      {kTzPosNoSize | kTzPosNoMove, part, false},
      {kTzPosNoSize | kTzPosNoMove | 4, part, false},
      {kTzPosNoMove, drawn, false},
  };
  for (const auto& [unchanged, toDraw, follows] : rows) {
    change(700.0, drawn);
    Send(kTzMessageSize);
    change(800.0, toDraw);
    const TzWindowPos position{.flags = unchanged};
    Send(kTzMessageWindowPosChanged, reinterpret_cast<TzLParam>(&position));
    EXPECT_EQ(width(), follows ? 800.0 : 700.0) << unchanged;
  }
}

TEST_F(MessageTargetTest, AWindowClosesOnlyIfItsProjectMay) {
  enum class Course { Clean, EmptyModules, FlatWork, ModuleWork };
  const struct {
    Course course;
    int answer;
    bool closes;
  } rows[] = {
      {Course::Clean, 0, true},
      {Course::EmptyModules, 0, true},
      // Yes closes without publishing, No keeps the course to be published.
      {Course::FlatWork, kTzButtonYes, true},
      {Course::FlatWork, kTzButtonNo, false},
      {Course::ModuleWork, kTzButtonNo, false},
      {Course::ModuleWork, kTzButtonYes, true},
  };
  for (const auto& [course, answer, closes] : rows) {
    PanelSession fresh;
    window = windows.CreateTopLevelWindow({});
    const TzWin32MessageTarget target(window, false);
    const bool isFlat = course == Course::FlatWork;
    GetCourseModel()->SetCourseType(isFlat ? PlexoCourseType::LINEAR : PlexoCourseType::CONTENT_POST);
    GetModuleCourseModel()->AddModule("1", "Edited");
    if (isFlat) GetLinearCourseModel()->AddSCO(MakeSCO("a"));
    if (course == Course::ModuleWork) GetModuleCourseModel()->AddContentSCO("1", MakeSCO("a"));
    GetCourseModel()->SetIsDirty(course != Course::Clean);
    if (answer != 0) fresh.ui.AnswerNextBox(kUnsaved, static_cast<TzMessageBoxButton>(answer));
    EXPECT_EQ(Table().Close(window), closes);
    EXPECT_NO_THROW(fresh.ui.CheckFinished());
    EXPECT_EQ(GetCourseModel()->GetIsDirty(), answer != 0) << "closing publishes nothing";
    for (const TzShownBox& box : fresh.session.ui.GetShownBoxes()) EXPECT_EQ(box.title, "Plexo Warning");
  }
}

TEST_F(MessageTargetTest, WithoutWordsToAskInADirtyCourseStaysOpen) {
  const TzWin32MessageTarget target(window, false);
  GetLinearCourseModel()->AddSCO(MakeSCO("a"));
  GetCourseModel()->SetIsDirty(true);
  TzSession mute = TzSession::Current();
  mute.dictionary = nullptr;
  const TzSession session = TzSession::Install(mute);
  EXPECT_FALSE(Table().Close(window));
  TzSession::Install(session);
}

TEST_F(MessageTargetTest, GivesTheWindowBackUnlessAnotherHasTakenIt) {
  {
    const TzWin32MessageTarget target(window, false);
    EXPECT_EQ(windows.GetProperty(window, kProperty), &target);
    EXPECT_NE(windows.GetWindowProc(window), EarlierProc);
  }
  EXPECT_EQ(windows.GetWindowProc(window), EarlierProc);
  EXPECT_EQ(windows.GetProperty(window, kProperty), nullptr);
  const TzWindowProc later = [](TzWindowHandle, unsigned, TzWParam, TzLParam) -> TzMessageResult {
    return 9;
  };
  {
    const TzWin32MessageTarget target(window, false);
    windows.SetWindowProc(window, later);
  }
  EXPECT_EQ(windows.GetWindowProc(window), later);
  EXPECT_EQ(windows.GetProperty(window, kProperty), nullptr);
}

TEST_F(MessageTargetTest, ExceptionsEndInTheWindowAndItsLastMessageDeletesATargetThatIsToGoWithIt) {
  int deleted = 0;
  new ThrowingTarget(window, deleted);
  EXPECT_EQ(Send(kTzMessageSize), 0);
  EXPECT_EQ(deleted, 0);
  Table().Destroy(window);
  EXPECT_EQ(deleted, 1);
  EXPECT_TRUE(forwarded.empty());
}

TEST_F(MessageTargetTest, AWindowWhoseTargetHasGoneFallsBackToTheDefault) {
  const TzWin32MessageTarget target(window, false);
  windows.RemoveProperty(window, kProperty);
  EXPECT_TRUE(Table().Close(window));
  EXPECT_TRUE(forwarded.empty());
}
