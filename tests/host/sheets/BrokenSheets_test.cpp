// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "host/sheets/TzLayoutSheet.h"
#include "host/sheets/TzPropertySheet.h"
#include "host/sheets/TzSheetError.h"
#include "host/text/TzStringDictionary.h"
#include "support/SheetPair.h"

namespace {

/// A text whose first line is line 1, and the fault that it is refused for; empty if it isn't.
struct SheetCase {
  std::string text;
  std::string fault;
};

std::string FaultOf(const std::string& properties, const std::string& layout) {
  TzStringDictionary words;
  words.RegisterDefault("kOk", "OK");
  const SheetPair sheets(properties, layout);
  try {
    const TzPropertySheet cells = TzPropertySheet::Read(sheets.Properties(), &words);
    if (!layout.empty()) TzLayoutSheet::Read(sheets.Layout(), cells, &words);
  } catch (const TzSheetError& error) {
    return error.what();
  }
  return {};
}

std::string Interface(const std::string& cells) { return "sheet: s\ninterface:\n" + cells; }
std::string Layout(const std::string& view) { return "layout: l\ntree:\n" + view; }

constexpr const char* kCells = R"(sheet: s
interface:
  - {cell: flag, default: true}
  - {cell: title, default: "t"}
  - {cell: number, default: 1}
  - {cell: limits, default: {min_value: 0, max_value: 9}}
  - {cell: noLimits, default: {min_value: 0}}
  - {cell: list, default: [{name: localize("kOk"), value: 0}]}
  - {cell: badList, default: [{name: "a"}]}
logic:
  - isOne <== number == 1
)";

}  // namespace

TEST(BrokenSheets, APropertySheetIsRefusedWithFileLineAndReason) {
  const SheetCase cases[] = {
      {Interface("  - {cell: a, default: true}\n"), ""},
      {Interface("  - {cell: a, default: localize(\"kOk\")}\n"), ""},
      {"", "cells.yaml:1: isn't a sheet: it has no keys"},
      {"- a\n", "cells.yaml:1: isn't a sheet: it has no keys"},
      {"interface: []\n", "cells.yaml:1: 'sheet' is missing"},
      {"sheet: s\n", "cells.yaml:1: 'interface' is missing"},
      {"sheet: s\ninterface: 5\n", "cells.yaml:2: 'interface' has another kind of value"},
      {"sheet: s\ninterface: []\ncells: []\n", "cells.yaml:3: there is no key 'cells' here"},
      {"sheet: s\nsheet: s\n", "cells.yaml:2: 'sheet' stands here twice"},
      {"sheet: s\n---\nsheet: s\n", "cells.yaml:2: a second document starts here"},
      {"sheet: &a s\ninterface: *a\n", "cells.yaml:2: an alias; a sheet says everything where it stands"},
      {"sheet: [s\n", "cells.yaml:2: end of sequence flow not found"},
      {std::string(100, '['), "cells.yaml:1: is nested deeper than 64 levels"},
      {"sheet: a name\ninterface: []\n",
       "cells.yaml:1: 'a name' isn't a name; expected letters, digits and underscores"},
      {Interface("  - a\n"), "cells.yaml:3: expected keys with values"},
      {Interface("  - {default: 1}\n"), "cells.yaml:3: 'cell' is missing"},
      {Interface("  - {cell: a}\n"), "cells.yaml:3: cell 'a' has no default"},
      {Interface("  - {cell: a, default: }\n"), "cells.yaml:3: a value is missing; an empty text is \"\""},
      {Interface("  - {cell: a, default: maybe}\n"),
       "cells.yaml:3: 'maybe' is no value; expected true, false, a number, a \"text\" or localize(\"key\")"},
      {Interface("  - {cell: a, default: localize(kOk)}\n"),
       "cells.yaml:3: 'localize(kOk)' isn't of the form localize(\"key\")"},
      {Interface("  - cell: a\n    default: localize(\"kNone\")\n"),
       "cells.yaml:4: the dictionary has no text for 'kNone'"},
      {Interface("  - {cell: a, default: 1}\n  - {cell: a, default: 2}\n"),
       "cells.yaml:4: cell 'a' stands here twice"},
      {Interface("  - {cell: a, default: 1, unlink: 'b ? a : 0'}\n"),
       "cells.yaml:3: there is no cell 'b' above"},
      {Interface("  - {cell: a, default: true, unlink: 'a ? a : false'}\n"),
       "cells.yaml:3: there is no cell 'a' above"},
      {Interface("  - {cell: b, default: 1}\n  - {cell: a, default: 1, unlink: 'b ? a : 0'}\n"),
       "cells.yaml:4: 'b' isn't a switch: it isn't true or false"},
      {Interface("  - {cell: b, default: true}\n  - {cell: a, default: 1, unlink: 'b ? a : \"\"'}\n"),
       "cells.yaml:4: the fallback is of another kind than the default"},
      {Interface("  - {cell: b, default: true}\n  - {cell: a, default: 1, unlink: 'b ? c : 0'}\n"),
       "cells.yaml:4: 'b ? c : 0' isn't of the form 'switch ? a : fallback'"},
      {Interface("  - {cell: a, default: 1}\nlogic:\n  - b <== c\n"),
       "cells.yaml:5: there is no cell 'c' above"},
      {Interface("  - {cell: a, default: 1}\nlogic:\n  - b < a\n"),
       "cells.yaml:5: 'b < a' isn't of the form 'name <== cell' or 'name <== cell == value'"},
      {Interface("  - {cell: a, default: 1}\ninvariants:\n  - a <== a == 1\n"),
       "cells.yaml:5: cell 'a' stands here twice"},
      {Interface("  - {cell: a, default: 1}\noutput:\n  - {cell: r, dictionary: [a, b]}\n"),
       "cells.yaml:5: there is no cell 'b' above"},
      {Interface("  - {cell: a, default: 1}\noutput:\n  - {cell: r, dictionary: []}\n"),
       "cells.yaml:5: the dictionary of cell 'r' is empty"},
  };
  for (const auto& [text, fault] : cases) EXPECT_EQ(FaultOf(text, ""), fault) << text;
}

TEST(BrokenSheets, ALayoutSheetIsRefusedWithFileLineAndReason) {
  const SheetCase cases[] = {
      {Layout("  column:\n"), ""},
      {Layout("  edit_text: {name: '@title', bind: '@title'}\n"), ""},
      {"layout: l\n", "views.yaml:1: 'tree' is missing"},
      {"layout: l\ntree:\n  row:\nsheet: s\n", "views.yaml:4: there is no key 'sheet' here"},
      {Layout("  colum:\n"), "views.yaml:3: there is no view 'colum'"},
      {Layout("  column: 5\n"), "views.yaml:3: expected the attributes of 'column'"},
      {Layout("  column:\n  childs: []\n"), "views.yaml:4: 'childs' can't follow 'column'"},
      {Layout("  separator:\n  children: []\n"), "views.yaml:4: 'children' can't follow 'separator'"},
      {Layout("  column:\n  children:\n    - 5\n"),
       "views.yaml:5: expected a view: its type with its attributes"},
      {Layout("  column:\n    colour: 5\n"), "views.yaml:4: 'column' has no attribute 'colour'"},
      {Layout("  column: {bind: '@flag'}\n"), "views.yaml:3: 'column' has no attribute 'bind'"},
      {Layout("  checkbox: {bind: '@flog'}\n"), "views.yaml:3: there is no cell 'flog' in cells.yaml"},
      {Layout("  checkbox: {bind: flag}\n"), "views.yaml:3: expected a reference: '@name'"},
      {Layout("  checkbox: {bind: '@title'}\n"),
       "views.yaml:3: cell 'title' holds a text; expected true or false"},
      {Layout("  edit_text: {bind: '@number'}\n"),
       "views.yaml:3: cell 'number' holds a whole number; expected a text"},
      {Layout("  static_text: {name: '@flag'}\n"),
       "views.yaml:3: cell 'flag' holds true or false; expected a text"},
      {Layout("  checkbox: {bind: '@isOne'}\n"),
       "views.yaml:3: cell 'isOne' follows from others; nobody can enter it"},
      {Layout("  static_text: {name: 5}\n"), "views.yaml:3: expected a text, not a whole number"},
      {Layout("  static_text: {name: localize(\"kNone\")}\n"),
       "views.yaml:3: the dictionary has no text for 'kNone'"},
      {Layout("  optional:\n"), "views.yaml:3: 'optional' needs a 'bind'"},
      {Layout("  optional: {bind: '@title'}\n"),
       "views.yaml:3: cell 'title' holds a text; expected true or false"},
      {Layout("  button: {name: \"OK\"}\n"), "views.yaml:3: a button needs an 'action'"},
      {Layout("  button: {action: '@ok', bind: '@number'}\n"),
       "views.yaml:3: cell 'number' holds a whole number; expected true or false"},
      {Layout("  image:\n"), "views.yaml:3: an image needs an 'image'"},
      {Layout("  inline_edit_number: {bind: '@number'}\n"),
       "views.yaml:3: a number needs a 'min_max_filter'"},
      {Layout("  inline_edit_number: {min_max_filter: '@noLimits'}\n"),
       "views.yaml:3: cell 'noLimits' has no number 'max_value'"},
      {Layout("  inline_edit_number: {bind: '@title', min_max_filter: '@limits'}\n"),
       "views.yaml:3: cell 'title' holds a text; expected a whole number"},
      {Layout("  popup: {bind: '@number'}\n"), "views.yaml:3: a popup needs 'items'"},
      {Layout("  popup: {items: '@badList'}\n"),
       "views.yaml:3: an item of cell 'badList' has no name or no value"},
      {Layout("  row: {vertical: '@align_middle'}\n"),
       "views.yaml:3: '@align_middle' isn't one of the values that this attribute takes"},
      {Layout("  row: {margin: [1, 2]}\n"), "views.yaml:3: a margin has one number or four"},
      {Layout("  row: {spacing: -1}\n"), "views.yaml:3: '-1' is out of any measure"},
      {Layout("  row: {spacing: 1.5}\n"),
       "views.yaml:3: expected a whole number, not a number with a fraction"},
      {Layout(
           "  row:\n  children:\n    - subview: {identifier: \"a\"}\n    - subview: {identifier: \"a\"}\n"),
       "views.yaml:6: identifier 'a' is used twice"},
  };
  for (const auto& [text, fault] : cases) EXPECT_EQ(FaultOf(kCells, text), fault) << text;
}

TEST(BrokenSheets, WithoutADictionaryALocalizedTextIsItsKey) {
  const SheetPair sheets(Interface("  - {cell: a, default: localize(\"kAny\")}\n"), "");
  EXPECT_EQ(TzPropertySheet::Read(sheets.Properties(), nullptr).cells.front().initial, "kAny");
}
