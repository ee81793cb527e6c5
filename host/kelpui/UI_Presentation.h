// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <optional>

#include "host/text/TzString.h"

namespace kelpui::controls {

enum class UI_Align { None, Left, Right, Top, Bottom, Center, Fill };
/// How a node lays its children side by side.
enum class UI_Placement { Default, Row, Column };

/// How a node wants to look and to be placed: told by a layout sheet, read by the user interface that draws.
/// What a sheet doesn't tell is absent, and the user interface's choice.
struct UI_Presentation {
  UI_Align horizontal = UI_Align::None;
  UI_Align vertical = UI_Align::None;
  /// For all children that don't say otherwise.
  UI_Align childHorizontal = UI_Align::None;
  UI_Align childVertical = UI_Align::None;
  UI_Placement placement = UI_Placement::Default;
  /// Top, left, bottom, right.
  std::optional<std::array<int, 4>> margin;
  /// Between children.
  std::optional<int> spacing;
  std::optional<int> width;
  std::optional<int> height;

  std::optional<int> fontSize;
  /// Static texts of dialogs are bold or plain.
  std::optional<bool> bold;
  /// Width of a field in characters, of a number in digits, of a popup's items at most.
  std::optional<int> characters;
  std::optional<int> digits;
  std::optional<int> popupMaximumWidthChars;
  std::optional<int> lines;
  bool multiline = false;
  bool scrollable = false;
  /// The control shows that it is disabled, not only refuses.
  bool displayDisable = false;
  /// A popup offers an entry for what isn't in its list.
  bool includeCustomItem = true;
  bool wantsFocus = true;
  /// The family of a button's look; empty for the plain one.
  TzString buttonTheme;
};

}  // namespace kelpui::controls
