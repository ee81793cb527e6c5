// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "host/kelpui/UI_Node.h"
#include "host/sheets/TzLayoutSheet.h"

class TzDataModel;
class TzViewBindings;

/// Where a canvas stands.
struct TzCanvasSpec {
  enum class Place { Window, AppBar, Dialog };

  Place place = Place::Window;
  /// The window that it is put into, or that a dialog belongs to.
  TzWindowHandle parent = nullptr;
  /// Of a dialog.
  TzString title = {};
  /// Of a dialog, on the screen.
  TzRect bounds = {};
};

/// A button of a canvas was pressed: its action, and the value of the cell that it is bound to, or nothing.
using TzActionCallback = std::function<void(const TzString& action, const TzVariant& value)>;

/// Gives the bytes of a file by its name; empty if there is none.
using TzSheetResourceLoader = std::function<std::string_view(const TzString& fileName)>;

/// A layout sheet on a screen: the root of the nodes that were made of its views, bound to the cells of a
/// data model. What is the same for every user interface is here; a user interface derives the few
/// operations by which it draws.
class TzCanvas : public kelpui::controls::UI_Node {
 public:
  explicit TzCanvas(TzCanvasSpec canvasSpec);

  [[nodiscard]] const TzCanvasSpec& GetSpec() const { return spec; }

  /// Makes the nodes of the sheet and shows in them what the cells hold. From then on a change of a cell
  /// reaches its views at the model's update, and what a person enters reaches the cell, with an update.
  /// Once for a canvas. The model has to stay until `Unbind`, or until the canvas has gone.
  void ShowSheet(const TzLayoutSheet& layout, TzDataModel& model, const TzActionCallback& action,
                 const TzSheetResourceLoader& loader);
  /// Called with each cell that a person changed, after its update.
  void SetCellEntered(std::function<void(const TzString& cell, const TzVariant& value)> notification);
  /// Cuts the views off from the cells; they stay as they are.
  void Unbind();

  /// The cells behind the views; null before `ShowSheet` and after `Unbind`. For hosts that read or fill what
  /// a sheet shows by the names of its cells.
  [[nodiscard]] TzDataModel* GetDataModel() const;

  /// The whole size, of which the user interface gives each view its share. The notification comes after.
  void SetSize(const TzRect& size);
  void SetResized(std::function<void(const TzRect& size)> notification) { resized = std::move(notification); }

  /// Of all trees on the canvas; each then calls back.
  void ClearSelection();

  /// Shows the canvas and takes events until `EndModal`; the result is what that was given. Ended before it
  /// begins, it doesn't show.
  int RunModal();
  void EndModal(int result);
  [[nodiscard]] bool IsModalRunning() const { return isModalRunning; }

 protected:
  ~TzCanvas() override;
  void DescendantChanged(UI_Node& node, kelpui::controls::UI_Change change) override;

  /// A node changed in a way that a person could see.
  virtual void Redraw(UI_Node& node, kelpui::controls::UI_Change change) = 0;
  /// The canvas has a new size, or views came or went: gives the nodes their frames.
  virtual void LayOut() = 0;
  /// Takes events until `IsModalRunning` is false.
  virtual void RunEventLoop() = 0;

 private:
  TzCanvasSpec spec;
  std::unique_ptr<TzViewBindings> bindings;
  std::function<void(const TzRect& size)> resized;
  bool isModalRunning = false;
  std::optional<int> modalResult;
};

using TzCanvasPtr = boost::intrusive_ptr<TzCanvas>;
