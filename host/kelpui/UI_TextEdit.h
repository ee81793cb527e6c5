// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "host/kelpui/UI_Control.h"

namespace kelpui::controls {

/// A field of text, of one line unless its presentation says otherwise.
class UI_TextEdit : public UI_Control {
 public:
  UI_TextEdit() : UI_Control(UI_NodeKind::TextEdit) {}

  [[nodiscard]] const TzString& GetText() const { return text; }
  void SetText(const TzString& newText);
  /// The person typed: the whole text that the field shows then. The same text is no change.
  void EnterText(const TzString& newText);

 private:
  TzString text;
};

}  // namespace kelpui::controls
