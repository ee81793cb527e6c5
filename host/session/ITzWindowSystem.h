// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "host/session/TzErrorCode.h"
#include "host/session/TzWindow.h"
#include "host/session/TzWindowMessage.h"

/// Windows and the framework that docks them: what a component's start and stop ask of the host. A null
/// window, or one that has gone, is accepted everywhere and does nothing.
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
  /// What of the window waits to be drawn; all zero if nothing does.
  virtual TzRect GetUpdateRect(TzWindowHandle window) = 0;

  /// Null if the window has none of its own.
  virtual TzWindowProc GetWindowProc(TzWindowHandle window) = 0;
  /// Puts a procedure in the window's place for messages and returns the one that was.
  virtual TzWindowProc SetWindowProc(TzWindowHandle window, TzWindowProc procedure) = 0;
  /// Calls the procedure, or the default one where it is null.
  virtual TzMessageResult CallWindowProc(TzWindowProc procedure, TzWindowHandle window, unsigned message,
                                         TzWParam wparam, TzLParam lparam) = 0;
  /// What a window does that has no procedure of its own: a close destroys it, else 0 and nothing.
  virtual TzMessageResult DefWindowProc(TzWindowHandle window, unsigned message, TzWParam wparam,
                                        TzLParam lparam) = 0;
  /// The same number for the same name.
  virtual unsigned RegisterWindowMessage(const TzString& name) = 0;

  virtual void SetProperty(TzWindowHandle window, const TzString& name, void* value) = 0;
  /// Null if the window has none of the name.
  virtual void* GetProperty(TzWindowHandle window, const TzString& name) = 0;
  virtual void RemoveProperty(TzWindowHandle window, const TzString& name) = 0;

  virtual void InitHerder(const TzAppContainterCreatorInfo& info) = 0;
  virtual void UnInitHerder() = 0;
  virtual TzErrorCodeEnum StartRoost(const TzAppContainterCreatorInfo& info, int applicationType) = 0;
  virtual TzErrorCodeEnum EndRoost(int flag) = 0;
  /// The window of the application container.
  virtual TzWindowHandle GetContainerWindow() = 0;
  /// The dock that the main window's documents stand in. It fills the window.
  virtual TzWindowHandle GetDocumentDock(TzWindowHandle mainWindow) = 0;

  virtual void InitializeImageUtils(void* brokerAddressProc) = 0;
  virtual void TerminateImageUtils() = 0;
  virtual void SetApplicationName(const TzString& name) = 0;
  virtual void TerminateAppUI() = 0;
};
