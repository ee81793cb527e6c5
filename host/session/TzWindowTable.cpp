// SPDX-License-Identifier: Apache-2.0
#include "host/session/TzWindowTable.h"

#include <algorithm>

TzWindowHandle TzWindowTable::Create(const TzWindowSpec& spec) {
  auto window = std::make_unique<TzWindowModel>();
  const auto left = static_cast<TzReal>(spec.x == kTzDefaultPosition ? 0 : spec.x);
  const auto top = static_cast<TzReal>(spec.y == kTzDefaultPosition ? 0 : spec.y);
  window->spec = spec;
  window->frame = {left, top, left + spec.width, top + spec.height};
  TzWindowHandle handle = window.get();
  windows[handle] = std::move(window);
  return handle;
}

TzWindowModel* TzWindowTable::Find(TzWindowHandle window) const {
  const auto found = windows.find(window);
  return found != windows.end() ? found->second.get() : nullptr;
}

TzMessageResult TzWindowTable::SendMessage(TzWindowHandle window, unsigned message, TzWParam wparam,
                                           TzLParam lparam) {
  const TzWindowModel* model = Find(window);
  if (model == nullptr) return 0;
  if (model->procedure != nullptr) return model->procedure(window, message, wparam, lparam);
  return CallDefaultProc(window, message);
}

TzMessageResult TzWindowTable::CallDefaultProc(TzWindowHandle window, unsigned message) {
  if (message == kTzMessageClose) Destroy(window);
  return 0;
}

void TzWindowTable::Resize(TzWindowHandle window, int width, int height) {
  TzMinMaxInfo limits;
  SendMessage(window, kTzMessageGetMinMaxInfo, 0, reinterpret_cast<TzLParam>(&limits));
  TzWindowModel* model = Find(window);
  if (model == nullptr) return;
  model->frame.right = model->frame.left + std::max(width, limits.minTrackWidth);
  model->frame.bottom = model->frame.top + std::max(height, limits.minTrackHeight);
  model->updateArea = {0.0, 0.0, model->frame.right - model->frame.left,
                       model->frame.bottom - model->frame.top};
  ChangePosition(window, kTzPosNoMove);
  SendMessage(window, kTzMessageSize, 0, 0);
}

void TzWindowTable::Move(TzWindowHandle window, int x, int y) {
  TzWindowModel* model = Find(window);
  if (model == nullptr) return;
  const TzReal width = model->frame.right - model->frame.left;
  const TzReal height = model->frame.bottom - model->frame.top;
  model->frame = {TzReal(x), TzReal(y), x + width, y + height};
  ChangePosition(window, kTzPosNoSize);
}

void TzWindowTable::ChangePosition(TzWindowHandle window, unsigned unchanged) {
  const TzRect frame = Find(window)->frame;
  const TzWindowPos position{static_cast<int>(frame.left), static_cast<int>(frame.top),
                             static_cast<int>(frame.right - frame.left),
                             static_cast<int>(frame.bottom - frame.top), unchanged};
  SendMessage(window, kTzMessageWindowPosChanged, 0, reinterpret_cast<TzLParam>(&position));
}

void TzWindowTable::Validate(TzWindowHandle window) {
  if (TzWindowModel* model = Find(window); model != nullptr) model->updateArea = {};
}

bool TzWindowTable::Close(TzWindowHandle window) {
  SendMessage(window, kTzMessageClose, 0, 0);
  return Find(window) == nullptr;
}

void TzWindowTable::Destroy(TzWindowHandle window) {
  if (Find(window) == nullptr) return;
  SendMessage(window, kTzMessageNcDestroy, 0, 0);
  windows.erase(window);
}
