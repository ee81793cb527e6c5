// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/files/TzResource.h"
#include "host/kelpui/UI_Node.h"
#include "host/text/TzVariant.h"

class ITzStringDictionary;
struct TzPropertySheet;

/// A text of a view: as it stands, or what a cell holds.
struct TzLayoutText {
  TzString text;
  /// Empty for a text as it stands.
  TzString cell;
};

/// One view of a layout sheet.
struct TzLayoutNode {
  kelpui::controls::UI_NodeKind kind = kelpui::controls::UI_NodeKind::View;
  int line = 1;
  TzLayoutText name;
  TzString tooltip;
  /// Behind a number's field.
  TzString label;
  /// Of a button that has none it is the action.
  TzString identifier;
  /// File name of an image.
  TzString image;
  /// The cell that the view shows and edits; for a button, the one that enables it; for `optional`, the one
  /// that shows it. Empty for none.
  TzString bind;
  /// `optional` shows while its cell has this value; true where the sheet doesn't say.
  TzVariant value = true;
  TzString action;
  /// Cells: a popup's list, a number's limits.
  TzString items;
  TzString minMaxFilter;
  /// The button that closing the dialog presses.
  bool cancel = false;
  kelpui::controls::UI_Presentation presentation;
  std::vector<TzLayoutNode> children;
};

/// What a layout sheet says: one view with views below it. In the text a view is a map of its type with its
/// attributes, and of its children:
///
///     layout: a_name
///     tree:
///       row: {margin: [0, 0, 0, 5], child_horizontal: '@align_fill'}
///       children:
///         - edit_text: {name: localize("kTitle"), bind: '@title', characters: 30}
///         - button: {name: OK, action: '@ok'}
struct TzLayoutSheet {
  std::string file;
  TzString name;
  TzLayoutNode root;

  /// Throws `TzSheetError` for a type or attribute that doesn't exist, an attribute that the type doesn't
  /// have, a cell that the property sheet lacks or that holds another kind of value than the view edits, an
  /// identifier used twice, and a key that the dictionary lacks.
  static TzLayoutSheet Read(const TzResource& text, const TzPropertySheet& cells,
                            const ITzStringDictionary* words);
};
