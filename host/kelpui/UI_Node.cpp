// SPDX-License-Identifier: Apache-2.0
#include "host/kelpui/UI_Node.h"

#include <algorithm>
#include <stdexcept>

#include "host/kelpui/UI_NodeManager.h"

namespace kelpui::controls {

namespace {

template <typename List, typename Notification>
void InstallFor(const void* owner, List& list, Notification notification) {
  const auto installed = std::ranges::find(list, owner, [](const auto& each) { return each.owner; });
  if (installed != list.end()) {
    installed->notification = std::move(notification);
  } else {
    list.push_back({owner, std::move(notification)});
  }
}

}  // namespace

UI_Node::~UI_Node() {
  for (const UI_NodePtr& child : children) child->parentNode = nullptr;
  if (hasTimers) UI_NodeManager::Get().StopTimers(*this);
}

void UI_Node::SetName(TzString text) {
  if (name == text) return;
  name = std::move(text);
  NoteChange(UI_Change::State);
}

void UI_Node::SetTooltip(TzString text) {
  if (tooltip == text) return;
  tooltip = std::move(text);
  NoteChange(UI_Change::State);
}

void UI_Node::AddChild(UI_NodePtr child) {
  if (child->parentNode != nullptr) throw std::logic_error("node: it has a parent already");
  child->parentNode = this;
  children.push_back(std::move(child));
  NoteChange(UI_Change::Children);
}

void UI_Node::RemoveChild(UI_Node& child) {
  const auto found = std::ranges::find(children, &child, [](const UI_NodePtr& each) { return each.get(); });
  if (found == children.end()) return;
  const UI_NodePtr held = *found;
  children.erase(found);
  held->parentNode = nullptr;
  NoteChange(UI_Change::Children);
}

UI_NodePtr UI_Node::FindChildRecursive(const TzString& wanted) const {
  for (const UI_NodePtr& child : children) {
    if (child->identifier == wanted) return child;
    if (UI_NodePtr below = child->FindChildRecursive(wanted)) return below;
  }
  return nullptr;
}

void UI_Node::SetFrame(const TzRect& newFrame) {
  const UI_KeepAlive held(*this);
  const TzReal width = GetWidth();
  const TzReal height = GetHeight();
  const bool isSamePlace = frame.left == newFrame.left && frame.top == newFrame.top;
  frame = newFrame;
  const bool isSameSize = width == GetWidth() && height == GetHeight();
  if (!isSamePlace || !isSameSize) NoteChange(UI_Change::Frame);
  if (!isSameSize) UI_SizeChanged();
}

void UI_Node::InstallSizeChangedNotification(const void* owner, SizeChanged notification) {
  InstallFor(owner, sizeNotifications, std::move(notification));
}

void UI_Node::InstallTimerNotification(const void* owner, TimerFired notification) {
  InstallFor(owner, timerNotifications, std::move(notification));
}

void UI_Node::SetVisible(bool visible) {
  if (isVisible == visible) return;
  isVisible = visible;
  NoteChange(UI_Change::State);
}

bool UI_Node::IsShown() const {
  const UI_Node* node = this;
  while (node != nullptr && node->isVisible) node = node->parentNode;
  return node == nullptr;
}

void UI_Node::SetEnabled(bool enabled) {
  if (isEnabled == enabled) return;
  isEnabled = enabled;
  NoteChange(UI_Change::State);
}

void UI_Node::UI_InstallTimer(double delay, std::uint32_t timerId) {
  hasTimers = true;
  UI_NodeManager::Get().StartTimer(*this, delay, timerId);
}

void UI_Node::UI_RemoveTimer(std::uint32_t timerId) { UI_NodeManager::Get().StopTimer(*this, timerId); }

void UI_Node::FireTimer(std::uint32_t timerId) {
  const UI_KeepAlive held(*this);
  // A copy, for a notification may install others.
  const auto notifications = timerNotifications;
  for (const auto& each : notifications) {
    if (each.notification(*this, timerId)) return;
  }
}

void UI_Node::UI_SizeChanged() {
  const auto notifications = sizeNotifications;
  for (const auto& each : notifications) each.notification(*this);
}

void UI_Node::DescendantChanged(UI_Node& node, UI_Change change) {
  if (parentNode != nullptr) parentNode->DescendantChanged(node, change);
}

void UI_Node::NoteChange(UI_Change change) { DescendantChanged(*this, change); }

}  // namespace kelpui::controls
