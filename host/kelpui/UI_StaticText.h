// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "host/kelpui/UI_Node.h"

namespace kelpui::controls {

/// A text to read; it is the node's name.
class UI_StaticText : public UI_Node {
 public:
  explicit UI_StaticText(const TzString& text = {}) : UI_Node(UI_NodeKind::StaticText) { SetName(text); }

  [[nodiscard]] const TzString& GetText() const { return GetName(); }
  void SetText(const TzString& text) { SetName(text); }
};

}  // namespace kelpui::controls
