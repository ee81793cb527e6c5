// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>

#include "host/kelpui/UI_Node.h"

namespace kelpui::controls {

/// A node with a content that a person can change.
///
/// In all controls `Set...` is the program's and tells nobody but those who draw; `Enter...` and `Press` are
/// the person's and notify. So a program that sets what it was told starts no circle. A control that is
/// disabled refuses the person.
class UI_Control : public UI_Node {
 public:
  using Changed = std::function<void()>;
  using UI_Node::UI_Node;

  /// Called after each change by the person; replaces the one installed before.
  void InstallChangeNotification(Changed notification) { changed = std::move(notification); }

 protected:
  /// Tells those who draw and the notification.
  void NoteEntered();

 private:
  Changed changed;
};

}  // namespace kelpui::controls
