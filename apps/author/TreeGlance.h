// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <type_traits>

#include "host/kelpui/UI_MultiColumnTree.h"

/// Gets at the controls of rows that nobody has looked at yet: these are made when a row first comes into
/// view. At its end the person's view of the tree is as it was.
class TreeGlance {
 public:
  using Tree = kelpui::controls::UI_MultiColumnTree;
  using Row = kelpui::controls::UI_MultiColumnTreeRow;
  using Node = kelpui::controls::UI_Node;

  explicit TreeGlance(Tree& glancedTree);
  ~TreeGlance();
  TreeGlance(const TreeGlance&) = delete;
  TreeGlance& operator=(const TreeGlance&) = delete;

  /// The row's container of controls; null if it has none.
  const Node* Reveal(Row& row);

  /// The first control of the kind that the row has; null if it has none.
  template <typename Control>
  Control* Find(Row& row) {
    return FindIn<Control>(Reveal(row));
  }
  /// The same without bringing the row into view: null also if nobody has looked at it yet.
  template <typename Control>
  static Control* FindMade(Row& row) {
    return FindIn<Control>(GetMade(row));
  }

 private:
  static const Node* GetMade(Row& row);

  template <typename Control>
  static Control* FindIn(const Node* cell) {
    if (cell == nullptr) return nullptr;
    for (const auto& child : cell->GetChildren()) {
      if (auto* control = dynamic_cast<Control*>(child.get())) return control;
    }
    return nullptr;
  }

  kelpui::controls::UI_NodePtr held;
  Tree& tree;
  std::size_t position;
  TzRect frame;
};
