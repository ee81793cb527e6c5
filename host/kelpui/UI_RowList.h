// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>

namespace kelpui::controls {

class UI_MultiColumnTreeRow;

/// The rows under one parent, in their order: a balanced tree (a treap) whose links lie in the rows.
///
/// Costs, with n rows in the list: `CountRows` and `CountShown` are constant; all else takes about log n
/// steps, wherever in the list it happens. So n operations take about n log n. The list holds its rows.
///
/// Shown rows are those that no collapsed row hides; a row counts with all that is shown below it.
class UI_RowList {
 public:
  /// What a row keeps for the list that it is in.
  struct Link {
    UI_MultiColumnTreeRow* up = nullptr;
    UI_MultiColumnTreeRow* left = nullptr;
    UI_MultiColumnTreeRow* right = nullptr;
    std::uint32_t priority = 0;
    std::size_t rows = 0;
    std::size_t shown = 0;
  };

  UI_RowList() = default;
  ~UI_RowList();
  UI_RowList(const UI_RowList&) = delete;
  UI_RowList& operator=(const UI_RowList&) = delete;

  [[nodiscard]] std::size_t CountRows() const;
  [[nodiscard]] std::size_t CountShown() const;
  /// Null past the end.
  [[nodiscard]] UI_MultiColumnTreeRow* GetRow(std::size_t index) const;

  // The rows given here are in the list.
  [[nodiscard]] std::size_t GetIndex(const UI_MultiColumnTreeRow& row) const;
  /// Shown rows of the list in front of this row.
  [[nodiscard]] std::size_t CountShownBefore(const UI_MultiColumnTreeRow& row) const;
  /// How many links lie between the row and the root: what a look-up costs.
  [[nodiscard]] std::size_t GetDepth(const UI_MultiColumnTreeRow& row) const;
  /// The row of the list that the shown row at `offset` is, or lies below; `offset` becomes its place there,
  /// 0 being the row itself. Null past the end.
  [[nodiscard]] UI_MultiColumnTreeRow* FindShown(std::size_t& offset) const;

  /// An index past the end appends.
  void Insert(UI_MultiColumnTreeRow& row, std::size_t index);
  void Remove(UI_MultiColumnTreeRow& row);
  /// Another number of rows is shown below the row.
  void ShownChanged(UI_MultiColumnTreeRow& row);

 private:
  friend struct UI_RowLinks;

  static Link& LinkOf(UI_MultiColumnTreeRow& row);
  static std::size_t ShownOf(const UI_MultiColumnTreeRow& row);

  UI_MultiColumnTreeRow* root = nullptr;
};

}  // namespace kelpui::controls
