// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <iterator>

#include "core/PlexoModuleCourseModel.h"
#include "host/files/TzFileUtil.h"
#include "host/session/ITzWindowSystem.h"
#include "host/session/TzSession.h"
#include "panel/PlexoAppBar.h"
#include "panel/PlexoRowImages.h"
#include "panel/PlexoView.h"
#include "shell/PlexoExports.h"
#include "shell/TzWin32MessageTarget.h"

namespace {

/// Numbered resources of the library.
constexpr int kIconResource = 101;
constexpr int kWindowTitleString = 103;
constexpr int kWindowClassString = 109;

struct NumberedString {
  int number;
  const char* text;
};

/// The library's string table: names that the window system knows it by, and that no translation may change.
constexpr NumberedString kStringTable[] = {{kWindowTitleString, "plexoUI"}, {kWindowClassString, "PLEXOUI"}};

TzString LoadNumberedString(int number) {
  const auto* found = std::ranges::find(kStringTable, number, &NumberedString::number);
  return found != std::end(kStringTable) ? found->text : TzString();
}

/// An application of the kind that has documents in a dock.
constexpr int kApplicationType = 1;

// What the start makes; all null before it.
TzWindowHandle mainWindow = nullptr;
TzWin32MessageTarget* messageTarget = nullptr;
PlexoView* panelView = nullptr;

/// Any address inside the library tells the host which module it is.
TzModuleHandle ThisModule() { return &mainWindow; }

TzWindowHandle MakeMainWindow(ITzWindowSystem& windows) {
  const TzString className = LoadNumberedString(kWindowClassString);
  windows.RegisterApplicationClass(className, ThisModule());
  return windows.CreateTopLevelWindow({
      .className = className,
      .title = LoadNumberedString(kWindowTitleString),
      .style = kTzOverlappedWindow,
      .x = kTzDefaultPosition,
      .y = 300,
      .width = 650,
      .height = 500,
      .module = ThisModule(),
  });
}

/// Puts the panel into the window's dock, at the window's size.
void MakePanel(ITzWindowSystem& windows) {
  const TzRect client = windows.GetClientRect(mainWindow);
  TzWindowHandle dock = windows.GetDocumentDock(mainWindow);
  // The dock's own size plays no part: it fills the window, but the host may tell of it late.
  windows.GetClientRect(dock);
  panelView = GetPlexoView(dock);
  if (panelView == nullptr) return;
  panelView->SetModuleCourse(GetModuleCourseModel());
  PlexoView::ResizePanel(client.right - client.left, client.bottom - client.top);
}

void DeleteMessageTarget() {
  delete messageTarget;
  messageTarget = nullptr;
}

}  // namespace

// The framework is started on the window that it later holds, and the window becomes a child of the container
// only when that exists: the order of the steps is the host's and must stay. A step that fails leaves a null
// handle behind, with which the next ones do nothing.
TzErrorCodeEnum InitializePlexoUI() {
  ITzWindowSystem* windows = GetWindowSystem();
  if (windows == nullptr) return kTzFailure;
  mainWindow = MakeMainWindow(*windows);
  const TzAppContainterCreatorInfo info{.iconResource = kIconResource,
                                        .createAppBar = CreateAppBar,
                                        .releaseAppBar = ReleaseAppBar,
                                        .mainWindow = mainWindow,
                                        .module = ThisModule()};
  windows->InitHerder(info);
  windows->InitializeImageUtils(GetTzBrokerAddressProc());
  windows->SetApplicationName("Plexo Packager");
  const TzErrorCodeEnum result = windows->StartRoost(info, kApplicationType);
  windows->SetParent(mainWindow, windows->GetContainerWindow());
  messageTarget = new TzWin32MessageTarget(mainWindow, false);
  windows->ShowWindow(mainWindow);
  windows->UpdateWindow(mainWindow);
  MakePanel(*windows);
  return result;
}

// The files go first, while everything that they belong to is still there, and the window gets its procedure
// back before the framework takes the window down. The bar is released last, for a host that hasn't done it.
// Panel and course stay until the process ends.
TzErrorCodeEnum TerminatePlexoUI() {
  TzFileUtil::DeleteAllTempFilesCreated();
  DeleteMessageTarget();
  ITzWindowSystem* windows = GetWindowSystem();
  TzErrorCodeEnum result = kTzFailure;
  if (windows != nullptr) result = windows->EndRoost(1);
  PlexoRowImages::ReleaseResourceManager();
  if (windows != nullptr) {
    windows->UnInitHerder();
    windows->TerminateImageUtils();
    windows->TerminateAppUI();
  }
  ReleaseAppBar();
  return result;
}
