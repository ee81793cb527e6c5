// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "host/session/ITzWindowSystem.h"
#include "host/session/TzWindowTable.h"

/// Windows that nobody sees: they have their sizes, procedures and properties, and a script does to them what
/// a person would (`GetWindows`). What a component asks of the framework is answered and kept as a list of
/// calls, in order, each as its operation's name with the arguments that matter ("StartRoost 1").
///
/// A framework that starts makes the application bar with the component's callback, and one that ends
/// releases it.
///
/// There is one main window, with one dock that fills it, in one container window.
class TzHeadlessWindows : public ITzWindowSystem {
 public:
  TzHeadlessWindows();

  [[nodiscard]] const std::vector<std::string>& GetCalls() const { return calls; }
  /// What the next starts and ends of the framework answer.
  void SetRoostResult(TzErrorCodeEnum result) { roostResult = result; }
  /// What a person does to windows goes through here.
  [[nodiscard]] TzWindowTable& GetWindows() { return windows; }
  /// The window made last; null before the first and when it has gone.
  [[nodiscard]] TzWindowHandle GetMainWindow() const {
    return windows.Find(mainWindow) != nullptr ? mainWindow : nullptr;
  }

  void RegisterApplicationClass(const TzString& className, TzModuleHandle module) override;
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
  void InitHerder(const TzAppContainterCreatorInfo& info) override;
  void UnInitHerder() override;
  TzErrorCodeEnum StartRoost(const TzAppContainterCreatorInfo& info, int applicationType) override;
  TzErrorCodeEnum EndRoost(int flag) override;
  TzWindowHandle GetContainerWindow() override;
  TzWindowHandle GetDocumentDock(TzWindowHandle window) override;
  void InitializeImageUtils(void* brokerAddressProc) override;
  void TerminateImageUtils() override;
  void SetApplicationName(const TzString& name) override;
  void TerminateAppUI() override;

 private:
  void Note(const std::string& call) { calls.push_back(call); }

  std::vector<std::string> calls;
  TzErrorCodeEnum roostResult = kTzSuccess;
  void (*releaseAppBar)() = nullptr;
  TzWindowTable windows;
  std::vector<TzString> messageNames;
  TzWindowHandle containerWindow;
  TzWindowHandle dock;
  TzWindowHandle mainWindow = nullptr;
};
