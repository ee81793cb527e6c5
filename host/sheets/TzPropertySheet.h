// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/files/TzResource.h"
#include "host/text/TzVariant.h"

class ITzStringDictionary;

/// While the switch is off the cell reads as the fallback; what was entered stays, and is read again when the
/// switch is on.
struct TzUnlinkRelation {
  TzString switchCell;
  TzVariant fallback;
};

/// The cell reads as another one, or as whether that equals a value.
struct TzDerivation {
  TzString source;
  std::optional<TzVariant> equals;
};

struct TzPropertyCell {
  TzString name;
  /// The value of an interface cell at first, and the kind of every cell for good.
  TzVariant initial = {};
  std::optional<TzUnlinkRelation> unlink = {};
  std::optional<TzDerivation> derivation = {};
  /// The cell reads as a dictionary of these cells; a repeated name has no effect.
  std::vector<TzString> members = {};

  [[nodiscard]] bool IsComputed() const { return derivation.has_value() || !members.empty(); }
};

/// What a property sheet says: named cells, each referring only to cells above it. The text has up to four
/// lists:
///
///     sheet: a_name
///     interface:   # cells that are set: name, default, and a relation
///       - {cell: withTitle, default: false}
///       - {cell: title, default: "", unlink: 'withTitle ? title : ""'}
///     logic:       # cells that follow from others
///       - canEdit <== withTitle
///     invariants:  # the same, for what has to hold
///       - isFirst <== position == 0
///     output:      # dictionaries of cells
///       - {cell: result, dictionary: [withTitle, title]}
struct TzPropertySheet {
  std::string file;
  TzString name;
  std::vector<TzPropertyCell> cells;

  /// Throws `TzSheetError`. Localized texts come from the dictionary; a key that it lacks is a fault.
  static TzPropertySheet Read(const TzResource& text, const ITzStringDictionary* words);

  /// Null if there is none of the name.
  [[nodiscard]] const TzPropertyCell* Find(const TzString& cell) const;
};
