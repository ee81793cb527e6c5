// SPDX-License-Identifier: Apache-2.0
#include "host/kelpui/UI_Button.h"

#include <utility>

namespace kelpui::controls {

namespace {

const UI_Button* pressedButton = nullptr;

/// A press may end the button, so nothing of it is touched afterwards.
class Pressed {
 public:
  explicit Pressed(const UI_Button* button) : outer(std::exchange(pressedButton, button)) {}
  ~Pressed() { pressedButton = outer; }
  Pressed(const Pressed&) = delete;
  Pressed& operator=(const Pressed&) = delete;

 private:
  const UI_Button* outer;
};

}  // namespace

void UI_Button::Press() {
  if (!IsEnabled()) return;
  const Pressed pressed(this);
  NoteEntered();
}

const UI_Button* UI_Button::GetPressed() { return pressedButton; }

}  // namespace kelpui::controls
