// SPDX-License-Identifier: Apache-2.0
#include "host/headless/TzHeadlessWindows.h"

#include <sstream>

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
  mainWindowArea = {0.0, 0.0, static_cast<TzReal>(spec.width), static_cast<TzReal>(spec.height)};
  return &mainWindow;
}

void TzHeadlessWindows::SetParent(TzWindowHandle /*window*/, TzWindowHandle parent) {
  Note(parent == &containerWindow ? "SetParent container" : "SetParent");
}

void TzHeadlessWindows::ShowWindow(TzWindowHandle /*window*/) { Note("ShowWindow"); }
void TzHeadlessWindows::UpdateWindow(TzWindowHandle /*window*/) { Note("UpdateWindow"); }

TzRect TzHeadlessWindows::GetClientRect(TzWindowHandle window) {
  Note(window == &dock ? "GetClientRect dock" : "GetClientRect");
  return window != nullptr ? mainWindowArea : TzRect{};
}

void TzHeadlessWindows::InitHerder(const TzAppContainterCreatorInfo& info) {
  Note("InitHerder " + std::to_string(info.iconResource));
}

void TzHeadlessWindows::UnInitHerder() { Note("UnInitHerder"); }

TzErrorCodeEnum TzHeadlessWindows::StartRoost(const TzAppContainterCreatorInfo& /*info*/,
                                              int applicationType) {
  Note("StartRoost " + std::to_string(applicationType));
  return roostResult;
}

TzErrorCodeEnum TzHeadlessWindows::EndRoost(int flag) {
  Note("EndRoost " + std::to_string(flag));
  return roostResult;
}

TzWindowHandle TzHeadlessWindows::GetContainerWindow() {
  Note("GetContainerWindow");
  return &containerWindow;
}

TzWindowHandle TzHeadlessWindows::GetDocumentDock(TzWindowHandle window) {
  Note("GetDocumentDock");
  return window != nullptr ? &dock : nullptr;
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
