// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "host/sheets/TzLayoutSheet.h"
#include "host/sheets/TzSheetText.h"

/// The attributes of views: which view has which, and what kind of value each takes.
class TzLayoutAttributes {
 public:
  /// Both have to stay as long as this.
  TzLayoutAttributes(const TzSheetText& sheetText, const TzPropertySheet& properties)
      : text(sheetText), cells(properties) {}

  /// Reads the attribute into the view. False if a view of this kind has none of the name; a value that it
  /// doesn't take throws a `TzSheetError`.
  [[nodiscard]] bool Read(const TzSheetNode::Entry& attribute, TzLayoutNode& view) const;

 private:
  const TzSheetText& text;
  const TzPropertySheet& cells;
};
