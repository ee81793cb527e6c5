// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "host/kelpui/UI_Presentation.h"
#include "host/kelpui/UI_RefCounted.h"
#include "host/session/TzWindow.h"
#include "host/text/TzString.h"

namespace kelpui::controls {

class UI_Node;
using UI_NodePtr = boost::intrusive_ptr<UI_Node>;

/// What a node is drawn as.
enum class UI_NodeKind {
  Canvas,
  View,
  Palette,
  Panel,
  Row,
  Column,
  Group,
  Optional,
  SubView,
  StaticText,
  TextEdit,
  Checkbox,
  NumberEdit,
  Popup,
  Button,
  Image,
  Separator,
  Tree,
};

/// What of a node changed, for those who draw it.
enum class UI_Change {
  /// Its text, value, name, or whether it is enabled or visible.
  State,
  Children,
  Frame,
  /// Rows of a tree, or which of them are selected.
  Rows,
  /// Nothing that can be read off it, but it wants to be drawn anew.
  Redraw,
};

/// A node of what a user interface shows: its place, its state and its children. It draws nothing: a user
/// interface mirrors nodes and hears of their changes at the root.
///
/// Notifications have an owner, any address that identifies who installed them: an owner has one of each kind
/// on a node, and installing again replaces it. A notification may do anything, also let go of the node.
class UI_Node : public UI_RefCounted {
 public:
  using SizeChanged = std::function<void(UI_Node& node)>;
  /// True when the timer was the notification's own; then no other is asked.
  using TimerFired = std::function<bool(UI_Node& node, std::uint32_t timerId)>;

  explicit UI_Node(UI_NodeKind nodeKind) : kind(nodeKind) {}

  [[nodiscard]] UI_NodeKind GetKind() const { return kind; }

  [[nodiscard]] const TzString& GetIdentifier() const { return identifier; }
  void SetIdentifier(TzString word) { identifier = std::move(word); }
  /// What a person knows it by: a label or a caption. Empty where it has none.
  [[nodiscard]] const TzString& GetName() const { return name; }
  void SetName(TzString text);
  [[nodiscard]] const TzString& GetTooltip() const { return tooltip; }
  void SetTooltip(TzString text);
  [[nodiscard]] const UI_Presentation& GetPresentation() const { return presentation; }
  void SetPresentation(UI_Presentation wanted) { presentation = std::move(wanted); }

  /// Puts a node that has no parent behind the others; one that has is a `std::logic_error`.
  void AddChild(UI_NodePtr child);
  /// Nothing happens if it isn't a child.
  void RemoveChild(UI_Node& child);
  [[nodiscard]] const std::vector<UI_NodePtr>& GetChildren() const { return children; }
  /// Null at the root, and for a node that hangs nowhere.
  [[nodiscard]] UI_Node* GetParent() const { return parentNode; }
  /// The first node of this identifier below this one, parents before their children; null if there is none.
  [[nodiscard]] UI_NodePtr FindChildRecursive(const TzString& wanted) const;

  /// In pixels, from the parent's left top.
  [[nodiscard]] const TzRect& GetFrame() const { return frame; }
  /// A new size (not a new place alone) goes through `UI_SizeChanged` to the notifications.
  void SetFrame(const TzRect& newFrame);
  [[nodiscard]] TzReal GetWidth() const { return frame.right - frame.left; }
  [[nodiscard]] TzReal GetHeight() const { return frame.bottom - frame.top; }
  void InstallSizeChangedNotification(const void* owner, SizeChanged notification);

  /// Whether this node itself was shown; see `IsShown`.
  [[nodiscard]] bool IsVisible() const { return isVisible; }
  void SetVisible(bool visible);
  /// True if neither this node nor one above it is hidden.
  [[nodiscard]] bool IsShown() const;
  [[nodiscard]] bool IsEnabled() const { return isEnabled; }
  void SetEnabled(bool enabled);
  /// Asks for a redraw.
  void Invalidate() { NoteChange(UI_Change::Redraw); }

  void InstallTimerNotification(const void* owner, TimerFired notification);
  /// Fires every `delay` seconds until it is removed; 0.0 as soon as the running event has ended. A timer of
  /// this id that the node has already starts anew.
  void UI_InstallTimer(double delay, std::uint32_t timerId);
  void UI_RemoveTimer(std::uint32_t timerId);
  /// Called by the node manager: asks the notifications, in the order of their installing.
  void FireTimer(std::uint32_t timerId);

 protected:
  ~UI_Node() override;

  /// The node has a new size. The base tells the notifications.
  virtual void UI_SizeChanged();
  /// Something at or below this node changed. The base passes it to the parent; a root acts on it.
  virtual void DescendantChanged(UI_Node& node, UI_Change change);

  /// To be called at every change that a person could see.
  void NoteChange(UI_Change change);
  /// For nodes that hang on this one without being among its children.
  void Adopt(UI_Node& node) { node.parentNode = this; }
  static void Disown(UI_Node& node) { node.parentNode = nullptr; }

 private:
  template <typename Notification>
  struct Owned {
    const void* owner;
    Notification notification;
  };

  UI_NodeKind kind;
  UI_Node* parentNode = nullptr;
  std::vector<UI_NodePtr> children;
  TzString identifier;
  TzString name;
  TzString tooltip;
  UI_Presentation presentation;
  TzRect frame;
  bool isVisible = true;
  bool isEnabled = true;
  bool hasTimers = false;
  std::vector<Owned<SizeChanged>> sizeNotifications;
  std::vector<Owned<TimerFired>> timerNotifications;
};

}  // namespace kelpui::controls
