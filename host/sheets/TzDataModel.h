// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <map>
#include <vector>

#include "host/sheets/TzPropertySheet.h"

/// The cells of one property sheet, with their values.
///
/// What is set can be read at once. Views and watchers learn of it at the next `Update`: each watcher once,
/// however often its cell was set, and not at all if the cell reads as it did before; all views before the
/// first watcher, so that a watcher finds the screen as the cells want it. A watcher may set cells and
/// update: that becomes another round, after the running one.
///
/// A name that the sheet lacks, a value of another kind than the cell's, and setting a computed cell are
/// faults of the program: `std::logic_error`.
class TzDataModel {
 public:
  using Watcher = std::function<void(const TzVariant& value)>;
  using ViewRefresh = std::function<void(const std::vector<TzString>& changedCells)>;

  explicit TzDataModel(TzPropertySheet propertySheet);
  TzDataModel(const TzDataModel&) = delete;
  TzDataModel& operator=(const TzDataModel&) = delete;

  [[nodiscard]] const TzPropertySheet& GetSheet() const { return sheet; }

  /// The value in force: through the cell's relation.
  [[nodiscard]] TzVariant GetCellValue(const TzString& cell) const;
  /// A number takes the cell's kind of number.
  void SetCellValue(const TzString& cell, const TzVariant& value);
  /// False while an unlink relation puts the fallback in the cell's place.
  [[nodiscard]] bool IsCellLinked(const TzString& cell) const;

  /// Calls the watcher with the new value at each update that finds the cell changed.
  void MonitorCellValue(const TzString& cell, Watcher watcher);
  /// While it answers true, watchers aren't called, and never learn of what changed meanwhile.
  void SetMonitorBlock(std::function<bool()> isBlocked) { monitorsBlocked = std::move(isBlocked); }
  /// One canvas's views; null takes them off.
  void SetViewRefresh(ViewRefresh refresh) { refreshViews = std::move(refresh); }

  void Update();

 private:
  struct Cell {
    TzVariant entered;
    /// What views and watchers were last told.
    TzVariant published;
    bool publishedLinked = true;
    std::vector<Watcher> watchers;
  };

  struct Change {
    std::size_t cell;
    /// False if only its link changed, which views show and watchers aren't told.
    bool readsOtherwise;
  };

  [[nodiscard]] std::size_t IndexOf(const TzString& cell) const;
  [[nodiscard]] TzVariant Compute(const TzPropertyCell& definition, const Cell& cell) const;
  [[nodiscard]] bool IsLinked(const TzPropertyCell& definition) const;
  /// The cells that aren't as published; from then on they are.
  std::vector<Change> PublishChanges();
  void RunRound(const std::vector<Change>& changed);

  TzPropertySheet sheet;
  std::vector<Cell> cells;
  std::map<TzString, std::size_t> indices;
  ViewRefresh refreshViews;
  std::function<bool()> monitorsBlocked;
  bool isUpdating = false;
  bool updateAsked = false;
};
