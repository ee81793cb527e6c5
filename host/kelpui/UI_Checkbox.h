// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "host/kelpui/UI_Control.h"

namespace kelpui::controls {

/// A box that is checked (1) or not (0); its name stands beside it.
class UI_Checkbox : public UI_Control {
 public:
  explicit UI_Checkbox(const TzString& label = {}) : UI_Control(UI_NodeKind::Checkbox) { SetName(label); }

  [[nodiscard]] int GetValue() const { return value; }
  /// Anything but 0 checks it.
  void SetValue(int newValue);
  void EnterValue(int newValue);

 private:
  int value = 0;
};

}  // namespace kelpui::controls
