// SPDX-License-Identifier: Apache-2.0
#include "host/kelpui/UI_RowList.h"

#include <utility>

#include "host/kelpui/UI_MultiColumnTreeRow.h"

namespace kelpui::controls {

namespace {

using Row = UI_MultiColumnTreeRow;

/// Priorities only have to be unlike each other: a fixed series (xorshift) serves, and makes runs alike.
std::uint32_t NextPriority() {
  static std::uint32_t state = 2463534242U;
  state ^= state << 13U;
  state ^= state >> 17U;
  state ^= state << 5U;
  return state;
}

}  // namespace

/// The operations on links, which only the list may see.
struct UI_RowLinks {
  static UI_RowList::Link& Of(Row& row) { return UI_RowList::LinkOf(row); }
  static std::size_t Rows(Row* row) { return row != nullptr ? Of(*row).rows : 0; }
  static std::size_t Shown(Row* row) { return row != nullptr ? Of(*row).shown : 0; }

  /// Counts anew what hangs on the row, and ties that to it.
  static void Pull(Row& row) {
    UI_RowList::Link& link = Of(row);
    link.rows = 1 + Rows(link.left) + Rows(link.right);
    link.shown = UI_RowList::ShownOf(row) + Shown(link.left) + Shown(link.right);
    if (link.left != nullptr) Of(*link.left).up = &row;
    if (link.right != nullptr) Of(*link.right).up = &row;
  }

  static Row* Merge(Row* left, Row* right) {  // NOLINT(misc-no-recursion)
    if (left == nullptr) return right;
    if (right == nullptr) return left;
    if (Of(*left).priority >= Of(*right).priority) {
      Of(*left).right = Merge(Of(*left).right, right);
      Pull(*left);
      return left;
    }
    Of(*right).left = Merge(left, Of(*right).left);
    Pull(*right);
    return right;
  }

  /// The first `count` rows, and the others.
  static std::pair<Row*, Row*> Split(Row* row, std::size_t count) {  // NOLINT(misc-no-recursion)
    if (row == nullptr) return {nullptr, nullptr};
    UI_RowList::Link& link = Of(*row);
    if (count > Rows(link.left)) {
      const auto [head, tail] = Split(link.right, count - Rows(link.left) - 1);
      link.right = head;
      Pull(*row);
      return {row, tail};
    }
    const auto [head, tail] = Split(link.left, count);
    link.left = tail;
    Pull(*row);
    return {head, row};
  }
};

UI_RowList::~UI_RowList() {
  while (root != nullptr) Remove(*root);
}

UI_RowList::Link& UI_RowList::LinkOf(UI_MultiColumnTreeRow& row) { return row.link; }
std::size_t UI_RowList::ShownOf(const UI_MultiColumnTreeRow& row) { return row.CountShown(); }

std::size_t UI_RowList::CountRows() const { return UI_RowLinks::Rows(root); }
std::size_t UI_RowList::CountShown() const { return UI_RowLinks::Shown(root); }

UI_MultiColumnTreeRow* UI_RowList::GetRow(std::size_t index) const {
  Row* row = root;
  while (row != nullptr) {
    const std::size_t before = UI_RowLinks::Rows(row->link.left);
    if (index == before) return row;
    const bool isLeft = index < before;
    if (!isLeft) index -= before + 1;
    row = isLeft ? row->link.left : row->link.right;
  }
  return nullptr;
}

std::size_t UI_RowList::GetIndex(const UI_MultiColumnTreeRow& row) const {
  std::size_t index = UI_RowLinks::Rows(row.link.left);
  for (const Row* each = &row; each->link.up != nullptr; each = each->link.up) {
    const Link& up = each->link.up->link;
    if (up.right == each) index += UI_RowLinks::Rows(up.left) + 1;
  }
  return index;
}

std::size_t UI_RowList::CountShownBefore(const UI_MultiColumnTreeRow& row) const {
  std::size_t shown = UI_RowLinks::Shown(row.link.left);
  for (const Row* each = &row; each->link.up != nullptr; each = each->link.up) {
    const Row& up = *each->link.up;
    if (up.link.right == each) shown += UI_RowLinks::Shown(up.link.left) + up.CountShown();
  }
  return shown;
}

std::size_t UI_RowList::GetDepth(const UI_MultiColumnTreeRow& row) const {
  std::size_t depth = 0;
  for (const Row* each = row.link.up; each != nullptr; each = each->link.up) ++depth;
  return depth;
}

UI_MultiColumnTreeRow* UI_RowList::FindShown(std::size_t& offset) const {
  Row* row = root;
  while (row != nullptr) {
    const std::size_t before = UI_RowLinks::Shown(row->link.left);
    if (offset < before) {
      row = row->link.left;
      continue;
    }
    offset -= before;
    if (offset < row->CountShown()) return row;
    offset -= row->CountShown();
    row = row->link.right;
  }
  return nullptr;
}

void UI_RowList::Insert(UI_MultiColumnTreeRow& row, std::size_t index) {
  intrusive_ptr_add_ref(&row);
  row.link = {};
  row.link.priority = NextPriority();
  UI_RowLinks::Pull(row);
  const auto [head, tail] = UI_RowLinks::Split(root, index);
  root = UI_RowLinks::Merge(UI_RowLinks::Merge(head, &row), tail);
  root->link.up = nullptr;
}

void UI_RowList::Remove(UI_MultiColumnTreeRow& row) {
  const auto [head, rest] = UI_RowLinks::Split(root, GetIndex(row));
  const auto [only, tail] = UI_RowLinks::Split(rest, 1);
  only->link = {};
  root = UI_RowLinks::Merge(head, tail);
  if (root != nullptr) root->link.up = nullptr;
  intrusive_ptr_release(&row);
}

void UI_RowList::ShownChanged(UI_MultiColumnTreeRow& row) {
  for (Row* each = &row; each != nullptr; each = each->link.up) UI_RowLinks::Pull(*each);
}

}  // namespace kelpui::controls
