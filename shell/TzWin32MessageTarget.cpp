// SPDX-License-Identifier: Apache-2.0
#include "shell/TzWin32MessageTarget.h"

#include "host/session/ITzWindowSystem.h"
#include "host/session/TzSession.h"
#include "panel/PlexoView.h"
#include "shell/PlexoUIUtils.h"

namespace {

constexpr const char* kTargetProperty = "tz_win_messagetarget";
constexpr const char* kDocumentCloseMessage = "com.ostrand.roost.document.close";

constexpr TzReal kLeastWidth = 580.0;
constexpr TzReal kLeastHeight = 430.0;

/// Makes the message known to the window system. What arrives of it goes the way of all other messages, so
/// the number isn't kept.
void RegisterDocumentClose(ITzWindowSystem& windows) {
  static bool isRegistered = false;
  if (isRegistered) return;
  windows.RegisterWindowMessage(kDocumentCloseMessage);
  isRegistered = true;
}

/// What a message carries in the form of a number.
template <typename Content>
Content* GetPointer(TzLParam lparam) {
  return reinterpret_cast<Content*>(lparam);  // NOLINT(performance-no-int-to-ptr)
}

void ResizePanelTo(const TzRect& area) {
  PlexoView::ResizePanel(area.right - area.left, area.bottom - area.top);
}

/// A change that doesn't make the window draw anything needs no new layout.
void FollowPosition(ITzWindowSystem& windows, TzWindowHandle window, TzLParam lparam) {
  constexpr unsigned kNothingChanged = kTzPosNoSize | kTzPosNoMove;
  const auto* position = GetPointer<const TzWindowPos>(lparam);
  if (position == nullptr || (position->flags & kNothingChanged) == kNothingChanged) return;
  const TzRect area = windows.GetUpdateRect(window);
  const bool isEmpty = area.left == 0.0 && area.top == 0.0 && area.right == 0.0 && area.bottom == 0.0;
  if (!isEmpty) ResizePanelTo(area);
}

void TellLeastSize(TzLParam lparam) {
  auto* limits = GetPointer<TzMinMaxInfo>(lparam);
  if (limits == nullptr) return;
  limits->minTrackWidth = static_cast<int>(kLeastWidth);
  limits->minTrackHeight = static_cast<int>(kLeastHeight);
}

}  // namespace

TzWin32MessageTarget::TzWin32MessageTarget(TzWindowHandle targetWindow, bool deleteWithWindow)
    : window(targetWindow), autoDelete(deleteWithWindow) {
  ITzWindowSystem* windows = GetWindowSystem();
  if (windows == nullptr) return;
  previousProc = windows->SetWindowProc(window, SharedProc);
  windows->SetProperty(window, kTargetProperty, this);
}

TzWin32MessageTarget::~TzWin32MessageTarget() {
  ITzWindowSystem* windows = GetWindowSystem();
  if (windows == nullptr) return;
  try {
    if (windows->GetWindowProc(window) == SharedProc) windows->SetWindowProc(window, previousProc);
    windows->RemoveProperty(window, kTargetProperty);
  } catch (...) {
    // The window goes, or the component does: there is nobody left to tell.
  }
}

TzMessageResult TzWin32MessageTarget::SharedProc(TzWindowHandle window, unsigned message, TzWParam wparam,
                                                 TzLParam lparam) {
  ITzWindowSystem* windows = GetWindowSystem();
  if (windows == nullptr) return 0;
  TzWin32MessageTarget* target = nullptr;
  TzMessageResult result = 0;
  // Asked before the message, in which the component may be stopped and the target deleted.
  bool goesWithWindow = false;
  try {
    target = static_cast<TzWin32MessageTarget*>(windows->GetProperty(window, kTargetProperty));
    goesWithWindow = target != nullptr && target->autoDelete && message == kTzMessageNcDestroy;
    result = target != nullptr ? target->HandleMessage(window, message, wparam, lparam)
                               : windows->DefWindowProc(window, message, wparam, lparam);
  } catch (...) {
    // The framework that called can't take an exception.
    result = 0;
  }
  if (goesWithWindow) delete target;
  return result;
}

TzMessageResult TzWin32MessageTarget::HandleMessage(TzWindowHandle messageWindow, unsigned message,
                                                    TzWParam wparam, TzLParam lparam) {
  ITzWindowSystem* windows = GetWindowSystem();
  if (windows == nullptr) return 0;
  RegisterDocumentClose(*windows);
  switch (message) {
    case kTzMessageSize:
      ResizePanelTo(windows->GetClientRect(messageWindow));
      break;
    case kTzMessageWindowPosChanged:
      FollowPosition(*windows, messageWindow, lparam);
      break;
    case kTzMessageGetMinMaxInfo:
      TellLeastSize(lparam);
      return 0;
    case kTzMessageClose:
      if (!PlexoUIUtils::ContinueProjectClosure()) return 0;
      break;
    case kTzMessageSetCursor:
      return windows->DefWindowProc(messageWindow, message, wparam, lparam);
    default:
      break;
  }
  return windows->CallWindowProc(previousProc, messageWindow, message, wparam, lparam);
}
