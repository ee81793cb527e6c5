// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "host/session/ITzWindowSystem.h"

/// Windows that exist only by name: what a component asks for is answered and kept as a list of calls, in
/// order, each as its operation's name with the arguments that matter ("StartRoost 1").
class TzHeadlessWindows : public ITzWindowSystem {
 public:
  [[nodiscard]] const std::vector<std::string>& GetCalls() const { return calls; }
  /// What the next starts and ends of the framework answer.
  void SetRoostResult(TzErrorCodeEnum result) { roostResult = result; }

  void RegisterApplicationClass(const TzString& className, TzModuleHandle module) override;
  TzWindowHandle CreateTopLevelWindow(const TzWindowSpec& spec) override;
  void SetParent(TzWindowHandle window, TzWindowHandle parent) override;
  void ShowWindow(TzWindowHandle window) override;
  void UpdateWindow(TzWindowHandle window) override;
  TzRect GetClientRect(TzWindowHandle window) override;
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
  TzRect mainWindowArea;
  // Their addresses are the handles.
  char mainWindow = 0;
  char containerWindow = 0;
  char dock = 0;
};
