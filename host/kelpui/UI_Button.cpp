// SPDX-License-Identifier: Apache-2.0
#include "host/kelpui/UI_Button.h"

namespace kelpui::controls {

void UI_Button::Press() {
  if (IsEnabled()) NoteEntered();
}

}  // namespace kelpui::controls
