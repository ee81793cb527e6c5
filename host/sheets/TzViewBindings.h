// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <map>
#include <vector>

#include "host/kelpui/UI_Control.h"
#include "host/kelpui/UI_Image.h"
#include "host/sheets/TzCanvas.h"

/// Makes the nodes of a layout sheet's views and keeps them and the cells of a data model in step, both ways.
class TzViewBindings {
 public:
  using CellEntered = std::function<void(const TzString& cell, const TzVariant& value)>;

  TzViewBindings(TzDataModel& dataModel, TzActionCallback actionCallback, TzSheetResourceLoader imageLoader);
  ~TzViewBindings();
  TzViewBindings(const TzViewBindings&) = delete;
  TzViewBindings& operator=(const TzViewBindings&) = delete;

  [[nodiscard]] kelpui::controls::UI_NodePtr Make(const TzLayoutNode& view);
  [[nodiscard]] TzDataModel& GetDataModel() const { return model; }
  void SetCellEntered(CellEntered notification) { cellEntered = std::move(notification); }

 private:
  using Node = kelpui::controls::UI_Node;

  [[nodiscard]] kelpui::controls::UI_NodePtr MakeBare(const TzLayoutNode& view);
  [[nodiscard]] kelpui::controls::UI_NodePtr MakeTextEdit(const TzLayoutNode& view);
  [[nodiscard]] kelpui::controls::UI_NodePtr MakeCheckbox(const TzLayoutNode& view);
  [[nodiscard]] kelpui::controls::UI_NodePtr MakeNumberEdit(const TzLayoutNode& view);
  [[nodiscard]] kelpui::controls::UI_NodePtr MakePopup(const TzLayoutNode& view);
  [[nodiscard]] kelpui::controls::UI_NodePtr MakeButton(const TzLayoutNode& view);
  [[nodiscard]] kelpui::controls::UI_NodePtr MakeOptional(const TzLayoutNode& view);

  /// The file and its twin of double size, "moveup.png" and "moveup_AT_2X.png".
  [[nodiscard]] kelpui::controls::UI_ImageSupply MakeImageSupply(const TzString& fileName) const;
  /// Shows the cell's value now and after each update that changed it.
  void Follow(const TzString& cell, std::function<void(const TzVariant& value)> show);
  /// A control that edits a cell is enabled while the cell is linked.
  void FollowLink(const TzString& cell, Node& control);
  /// Lets the notification hear the control as long as these bindings are there.
  void Hear(kelpui::controls::UI_Control& control, std::function<void()> notification);
  void Refresh(const std::vector<TzString>& changedCells);
  void Enter(const TzString& cell, const TzVariant& value);

  TzDataModel& model;
  TzActionCallback action;
  TzSheetResourceLoader loader;
  CellEntered cellEntered;
  std::vector<boost::intrusive_ptr<kelpui::controls::UI_Control>> controls;
  std::map<TzString, std::vector<std::function<void(const TzVariant& value)>>> followers;
};
