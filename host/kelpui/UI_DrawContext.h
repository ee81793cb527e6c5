// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "host/session/TzWindow.h"
#include "host/text/TzString.h"

namespace kelpui::controls {

/// Red, green, blue from the high byte to the low one.
using UI_Color = std::uint32_t;

/// What a draw callback draws into.
class UI_DrawContext {
 public:
  virtual ~UI_DrawContext() = default;
  /// One line, cut off at the rectangle.
  virtual void DrawLine(const TzString& text, const TzRect& area, UI_Color color) = 0;
};

}  // namespace kelpui::controls
