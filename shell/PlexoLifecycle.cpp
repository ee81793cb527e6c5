// SPDX-License-Identifier: Apache-2.0
#include "host/files/TzFileUtil.h"
#include "host/session/ITzWindowSystem.h"
#include "host/session/TzSession.h"
#include "shell/PlexoExports.h"

namespace {

/// Numbered resources of the library.
constexpr int kIconResource = 101;
constexpr const char* kWindowTitle = "plexoUI";
constexpr const char* kWindowClass = "PLEXOUI";

/// An application of the kind that has documents in a dock.
constexpr int kApplicationType = 1;

TzWindowHandle mainWindow = nullptr;

/// Any address inside the library tells the host which module it is.
TzModuleHandle ThisModule() { return &mainWindow; }

TzWindowHandle MakeMainWindow(ITzWindowSystem& windows) {
  windows.RegisterApplicationClass(kWindowClass, ThisModule());
  return windows.CreateTopLevelWindow({
      .className = kWindowClass,
      .title = kWindowTitle,
      .style = kTzOverlappedWindow,
      .x = kTzDefaultPosition,
      .y = 300,
      .width = 650,
      .height = 500,
      .module = ThisModule(),
  });
}

}  // namespace

// The framework is started on the window that it later holds, and the window becomes a child of the container
// only when that exists: the order of the steps is the host's and must stay. A step that fails leaves a null
// handle behind, with which the next ones do nothing.
TzErrorCodeEnum InitializePlexoUI() {
  ITzWindowSystem* windows = GetWindowSystem();
  if (windows == nullptr) return kTzFailure;
  mainWindow = MakeMainWindow(*windows);
  const TzAppContainterCreatorInfo info{
      .iconResource = kIconResource, .mainWindow = mainWindow, .module = ThisModule()};
  windows->InitHerder(info);
  windows->InitializeImageUtils(GetTzBrokerAddressProc());
  windows->SetApplicationName("Plexo Packager");
  const TzErrorCodeEnum result = windows->StartRoost(info, kApplicationType);
  windows->SetParent(mainWindow, windows->GetContainerWindow());
  windows->ShowWindow(mainWindow);
  windows->UpdateWindow(mainWindow);
  return result;
}

TzErrorCodeEnum TerminatePlexoUI() {
  TzFileUtil::DeleteAllTempFilesCreated();
  ITzWindowSystem* windows = GetWindowSystem();
  if (windows == nullptr) return kTzFailure;
  const TzErrorCodeEnum result = windows->EndRoost(1);
  windows->UnInitHerder();
  windows->TerminateImageUtils();
  windows->TerminateAppUI();
  return result;
}
