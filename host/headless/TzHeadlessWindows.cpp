// SPDX-License-Identifier: Apache-2.0
#include "host/headless/TzHeadlessWindows.h"

#include <algorithm>
#include <sstream>
#include <utility>

TzHeadlessWindows::TzHeadlessWindows() : containerWindow(windows.Create({})), dock(windows.Create({})) {}

void TzHeadlessWindows::RegisterApplicationClass(const TzString& className, TzModuleHandle /*module*/) {
  Note("RegisterApplicationClass " + className.GetUTF8String());
}

TzWindowHandle TzHeadlessWindows::CreateTopLevelWindow(const TzWindowSpec& spec) {
  std::ostringstream call;
  call << "CreateTopLevelWindow " << spec.className << " " << spec.title << " style " << std::hex
       << spec.style << std::dec << " at ";
  if (spec.x == kTzDefaultPosition) {
    call << "default";
  } else {
    call << spec.x;
  }
  call << "," << spec.y << " size " << spec.width << "x" << spec.height;
  Note(call.str());
  mainWindow = windows.Create(spec);
  windows.Find(dock)->parent = mainWindow;
  return mainWindow;
}

void TzHeadlessWindows::SetParent(TzWindowHandle window, TzWindowHandle parent) {
  Note(parent == containerWindow ? "SetParent container" : "SetParent");
  if (TzWindowModel* model = windows.Find(window); model != nullptr) model->parent = parent;
}

void TzHeadlessWindows::ShowWindow(TzWindowHandle window) {
  Note("ShowWindow");
  if (TzWindowModel* model = windows.Find(window); model != nullptr) model->isVisible = true;
}

void TzHeadlessWindows::UpdateWindow(TzWindowHandle window) {
  Note("UpdateWindow");
  windows.Validate(window);
}

TzRect TzHeadlessWindows::GetClientRect(TzWindowHandle window) {
  Note(window == dock ? "GetClientRect dock" : "GetClientRect");
  const TzWindowModel* model = windows.Find(window == dock ? mainWindow : window);
  if (model == nullptr) return {};
  return {0.0, 0.0, model->frame.right - model->frame.left, model->frame.bottom - model->frame.top};
}

TzRect TzHeadlessWindows::GetUpdateRect(TzWindowHandle window) {
  const TzWindowModel* model = windows.Find(window);
  return model != nullptr ? model->updateArea : TzRect{};
}

TzWindowProc TzHeadlessWindows::GetWindowProc(TzWindowHandle window) {
  const TzWindowModel* model = windows.Find(window);
  return model != nullptr ? model->procedure : nullptr;
}

TzWindowProc TzHeadlessWindows::SetWindowProc(TzWindowHandle window, TzWindowProc procedure) {
  Note("SetWindowProc");
  TzWindowModel* model = windows.Find(window);
  return model != nullptr ? std::exchange(model->procedure, procedure) : nullptr;
}

TzMessageResult TzHeadlessWindows::CallWindowProc(TzWindowProc procedure, TzWindowHandle window,
                                                  unsigned message, TzWParam wparam, TzLParam lparam) {
  if (procedure == nullptr) return DefWindowProc(window, message, wparam, lparam);
  return procedure(window, message, wparam, lparam);
}

TzMessageResult TzHeadlessWindows::DefWindowProc(TzWindowHandle window, unsigned message, TzWParam /*wparam*/,
                                                 TzLParam /*lparam*/) {
  return windows.CallDefaultProc(window, message);
}

unsigned TzHeadlessWindows::RegisterWindowMessage(const TzString& name) {
  const auto known = std::ranges::find(messageNames, name);
  const auto index = static_cast<unsigned>(known - messageNames.begin());
  if (known == messageNames.end()) {
    Note("RegisterWindowMessage " + name.GetUTF8String());
    messageNames.push_back(name);
  }
  return kTzMessageFirstRegistered + index;
}

void TzHeadlessWindows::SetProperty(TzWindowHandle window, const TzString& name, void* value) {
  Note("SetProperty " + name.GetUTF8String());
  if (TzWindowModel* model = windows.Find(window); model != nullptr) model->properties[name] = value;
}

void* TzHeadlessWindows::GetProperty(TzWindowHandle window, const TzString& name) {
  const TzWindowModel* model = windows.Find(window);
  if (model == nullptr) return nullptr;
  const auto found = model->properties.find(name);
  return found != model->properties.end() ? found->second : nullptr;
}

void TzHeadlessWindows::RemoveProperty(TzWindowHandle window, const TzString& name) {
  Note("RemoveProperty " + name.GetUTF8String());
  if (TzWindowModel* model = windows.Find(window); model != nullptr) model->properties.erase(name);
}

void TzHeadlessWindows::InitHerder(const TzAppContainterCreatorInfo& info) {
  Note("InitHerder " + std::to_string(info.iconResource));
}

void TzHeadlessWindows::UnInitHerder() { Note("UnInitHerder"); }

TzErrorCodeEnum TzHeadlessWindows::StartRoost(const TzAppContainterCreatorInfo& info, int applicationType) {
  Note("StartRoost " + std::to_string(applicationType));
  if (roostResult != kTzSuccess) return roostResult;
  if (info.createAppBar != nullptr) info.createAppBar();
  releaseAppBar = info.releaseAppBar;
  return kTzSuccess;
}

TzErrorCodeEnum TzHeadlessWindows::EndRoost(int flag) {
  Note("EndRoost " + std::to_string(flag));
  if (auto* release = std::exchange(releaseAppBar, nullptr); release != nullptr) release();
  return roostResult;
}

TzWindowHandle TzHeadlessWindows::GetContainerWindow() {
  Note("GetContainerWindow");
  return containerWindow;
}

TzWindowHandle TzHeadlessWindows::GetDocumentDock(TzWindowHandle window) {
  Note("GetDocumentDock");
  return windows.Find(window) != nullptr ? dock : nullptr;
}

void TzHeadlessWindows::InitializeImageUtils(void* brokerAddressProc) {
  Note(brokerAddressProc != nullptr ? "InitializeImageUtils with broker"
                                    : "InitializeImageUtils without broker");
}
void TzHeadlessWindows::TerminateImageUtils() { Note("TerminateImageUtils"); }

void TzHeadlessWindows::SetApplicationName(const TzString& name) {
  Note("SetApplicationName " + name.GetUTF8String());
}

void TzHeadlessWindows::TerminateAppUI() { Note("TerminateAppUI"); }
