// SPDX-License-Identifier: Apache-2.0
#include "host/kelpui/UI_Checkbox.h"

namespace kelpui::controls {

void UI_Checkbox::SetValue(int newValue) {
  const int checked = newValue != 0 ? 1 : 0;
  if (value == checked) return;
  value = checked;
  NoteChange(UI_Change::State);
}

void UI_Checkbox::EnterValue(int newValue) {
  const int checked = newValue != 0 ? 1 : 0;
  if (!IsEnabled() || value == checked) return;
  value = checked;
  NoteEntered();
}

}  // namespace kelpui::controls
