// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QPointer>
#include <QWidget>
#include <vector>

#include "host/session/ITzWindowSystem.h"
#include "host/session/TzWindowTable.h"

/// Real windows. There is one main window at a time, with the application bar at its top and the document
/// dock below; it stands for the container too, so that the title that a person reads is the application's
/// name. Sizes are in logical pixels and without the decoration around a window.
///
/// What a person does to the main window becomes the messages of its procedures. A close goes through if the
/// procedures let the window be destroyed.
class TzQtWindows : public ITzWindowSystem {
 public:
  TzQtWindows();
  ~TzQtWindows() override;
  TzQtWindows(const TzQtWindows&) = delete;
  TzQtWindows& operator=(const TzQtWindows&) = delete;

  /// Of the main window or of the dock. Null for any other handle, and when it has gone.
  [[nodiscard]] QWidget* FindWidget(TzWindowHandle window) const;
  /// Null without one.
  [[nodiscard]] QWidget* GetMainWidget() const;
  /// Where the application bar's canvas goes.
  [[nodiscard]] QWidget* GetBar() const;

  void RegisterApplicationClass(const TzString& /*className*/, TzModuleHandle /*module*/) override {}
  /// The main window; one that there was before goes.
  TzWindowHandle CreateTopLevelWindow(const TzWindowSpec& spec) override;
  void SetParent(TzWindowHandle window, TzWindowHandle parent) override;
  void ShowWindow(TzWindowHandle window) override;
  void UpdateWindow(TzWindowHandle window) override;
  TzRect GetClientRect(TzWindowHandle window) override;
  TzRect GetUpdateRect(TzWindowHandle window) override;
  TzWindowProc GetWindowProc(TzWindowHandle window) override;
  TzWindowProc SetWindowProc(TzWindowHandle window, TzWindowProc procedure) override;
  TzMessageResult CallWindowProc(TzWindowProc procedure, TzWindowHandle window, unsigned message,
                                 TzWParam wparam, TzLParam lparam) override;
  TzMessageResult DefWindowProc(TzWindowHandle window, unsigned message, TzWParam wparam,
                                TzLParam lparam) override;
  unsigned RegisterWindowMessage(const TzString& name) override;
  void SetProperty(TzWindowHandle window, const TzString& name, void* value) override;
  void* GetProperty(TzWindowHandle window, const TzString& name) override;
  void RemoveProperty(TzWindowHandle window, const TzString& name) override;
  void InitHerder(const TzAppContainterCreatorInfo& /*info*/) override {}
  void UnInitHerder() override {}
  TzErrorCodeEnum StartRoost(const TzAppContainterCreatorInfo& info, int applicationType) override;
  TzErrorCodeEnum EndRoost(int flag) override;
  TzWindowHandle GetContainerWindow() override { return containerWindow; }
  TzWindowHandle GetDocumentDock(TzWindowHandle window) override;
  void InitializeImageUtils(void* /*brokerAddressProc*/) override {}
  void TerminateImageUtils() override {}
  void SetApplicationName(const TzString& name) override;
  void TerminateAppUI() override {}

 private:
  class MainWindow;

  /// The dock has a new size, and the main window maybe too.
  void Resized();
  void Moved(const QPoint& place);
  /// True if the window may close.
  bool Close();
  void ShowTitle();

  TzWindowTable windows;
  TzWindowHandle containerWindow;
  TzWindowHandle dock;
  TzWindowHandle mainWindow = nullptr;
  QPointer<MainWindow> mainWidget;
  /// The person is closing the window.
  bool isClosing = false;
  void (*releaseAppBar)() = nullptr;
  std::vector<TzString> messageNames;
};
