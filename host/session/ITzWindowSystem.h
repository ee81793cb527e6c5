// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "host/session/TzErrorCode.h"
#include "host/session/TzWindow.h"

/// Windows and the framework that docks them: what a component's start and stop ask of the host. A null
/// window is accepted everywhere and does nothing.
class ITzWindowSystem {
 public:
  virtual ~ITzWindowSystem() = default;

  virtual void RegisterApplicationClass(const TzString& className, TzModuleHandle module) = 0;
  /// Null if no window could be made.
  virtual TzWindowHandle CreateTopLevelWindow(const TzWindowSpec& spec) = 0;
  virtual void SetParent(TzWindowHandle window, TzWindowHandle parent) = 0;
  virtual void ShowWindow(TzWindowHandle window) = 0;
  virtual void UpdateWindow(TzWindowHandle window) = 0;
  virtual TzRect GetClientRect(TzWindowHandle window) = 0;

  virtual void InitHerder(const TzAppContainterCreatorInfo& info) = 0;
  virtual void UnInitHerder() = 0;
  virtual TzErrorCodeEnum StartRoost(const TzAppContainterCreatorInfo& info, int applicationType) = 0;
  virtual TzErrorCodeEnum EndRoost(int flag) = 0;
  /// The window of the application container.
  virtual TzWindowHandle GetContainerWindow() = 0;
  /// The dock that the main window's documents stand in.
  virtual TzWindowHandle GetDocumentDock(TzWindowHandle mainWindow) = 0;

  virtual void InitializeImageUtils(void* brokerAddressProc) = 0;
  virtual void TerminateImageUtils() = 0;
  virtual void SetApplicationName(const TzString& name) = 0;
  virtual void TerminateAppUI() = 0;
};
