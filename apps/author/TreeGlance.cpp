// SPDX-License-Identifier: Apache-2.0
#include "apps/author/TreeGlance.h"

namespace {

constexpr double kRowsAtOnce = 40.0;

}  // namespace

TreeGlance::TreeGlance(Tree& glancedTree)
    : held(&glancedTree),
      tree(glancedTree),
      position(glancedTree.GetScrollPosition()),
      frame(glancedTree.GetFrame()) {}

TreeGlance::~TreeGlance() {
  if (tree.GetHeight() != frame.bottom - frame.top) tree.SetFrame(frame);
  if (tree.GetScrollPosition() != position) tree.ScrollTo(position);
}

const TreeGlance::Node* TreeGlance::GetMade(Row& row) {
  // Asking for the cell view of a row without controls would make it empty for good.
  return row.HasCellViews() ? row.GetCellView(0).get() : nullptr;
}

const TreeGlance::Node* TreeGlance::Reveal(Row& row) {
  if (row.HasCellViews()) return GetMade(row);
  if (tree.GetHeight() < tree.GetRowHeight()) {
    // A tree that hasn't been laid out yet shows no row at all.
    TzRect tall = frame;
    tall.bottom = tall.top + kRowsAtOnce * tree.GetRowHeight();
    tree.SetFrame(tall);
  }
  if (!row.HasCellViews()) tree.ScrollTo(tree.GetShownIndex(row));
  return GetMade(row);
}
