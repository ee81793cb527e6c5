// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "host/kelpui/UI_MultiColumnTree.h"
#include "host/kelpui/UI_Node.h"

/// What can be seen at one time, as nodes and as words.
class TzHeadlessScreen {
 public:
  using Node = kelpui::controls::UI_Node;
  using Row = kelpui::controls::UI_MultiColumnTreeRow;

  /// A control, text, image or tree that can be seen, and what a person would call it.
  struct Sight {
    Node* node = nullptr;
    /// Its label, caption or image; where it has none of its own, the text beside it. Empty where there is
    /// none either.
    std::string name;
    /// The name is that of what stands beside it.
    bool isNameBorrowed = false;
  };

  /// All that is shown below these nodes, in the order in which it stands there; of a tree, the rows in view.
  explicit TzHeadlessScreen(const std::vector<Node*>& roots);
  /// All that is shown in the row and in those below it.
  explicit TzHeadlessScreen(Row& row);

  [[nodiscard]] const std::vector<Sight>& GetSights() const { return sights; }
  /// A line for each sight with its kind, name and state, and for each row of a tree in view:
  ///
  ///     edit_text "Identifier:" = "My_Course"
  ///     checkbox "Force Module Sequence" on
  ///     button "moveup.png" disabled
  ///     tree of 3 rows
  ///       row 0 "intro" selected
  [[nodiscard]] const std::vector<std::string>& GetLines() const { return lines; }

 private:
  void Look(Node& node, std::size_t depth);
  void LookAtChildren(const Node& node, std::size_t depth);
  void LookAtCells(Row& row, std::size_t depth);
  void LookAtRow(Row& row, std::size_t depth);
  void Note(const Sight& sight, std::size_t depth);

  std::vector<Sight> sights;
  std::vector<std::string> lines;
};
