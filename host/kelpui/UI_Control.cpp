// SPDX-License-Identifier: Apache-2.0
#include "host/kelpui/UI_Control.h"

namespace kelpui::controls {

void UI_Control::NoteEntered() {
  const UI_KeepAlive held(*this);
  NoteChange(UI_Change::State);
  // A copy, for the notification may install another.
  const Changed notification = changed;
  if (notification) notification();
}

}  // namespace kelpui::controls
