// SPDX-License-Identifier: Apache-2.0
#include "host/kelpui/UI_TextEdit.h"

namespace kelpui::controls {

void UI_TextEdit::SetText(const TzString& newText) {
  if (text == newText) return;
  text = newText;
  NoteChange(UI_Change::State);
}

void UI_TextEdit::EnterText(const TzString& newText) {
  if (!IsEnabled() || text == newText) return;
  text = newText;
  NoteEntered();
}

}  // namespace kelpui::controls
