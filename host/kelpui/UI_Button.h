// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "host/kelpui/UI_Control.h"

namespace kelpui::controls {

/// A button; its name is its caption. A press is its change.
class UI_Button : public UI_Control {
 public:
  explicit UI_Button(const TzString& caption = {}) : UI_Control(UI_NodeKind::Button) { SetName(caption); }

  /// Nothing happens if the button is disabled.
  void Press();
  /// The button whose press is being carried out, the innermost one; null if there is none. For telling which
  /// button asked for something. UI thread only.
  [[nodiscard]] static const UI_Button* GetPressed();

  /// The button that closing the dialog presses.
  [[nodiscard]] bool IsCancel() const { return isCancel; }
  void SetIsCancel(bool cancels) { isCancel = cancels; }

 private:
  bool isCancel = false;
};

}  // namespace kelpui::controls
