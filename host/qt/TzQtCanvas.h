// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QPointer>
#include <QWidget>

#include "host/qt/TzQtMirrors.h"
#include "host/sheets/TzCanvas.h"

/// A canvas that is drawn: a widget that shows the nodes, each by its mirror, where `TzQtLayout` places them.
///
/// Guarantees: after every change the nodes have their frames before the operation that changed them returns,
/// shown or not. Each button, check box and label that can be seen has a mnemonic letter of its own as long
/// as there are letters. Where the widget has gone, with its window or with the user interface, the canvas
/// goes on as one that shows nothing.
///
/// In a dialog, Enter presses the first button of the dialog's own that doesn't cancel, Escape and closing
/// press the one that does; where there is none, they end the dialog as cancelled. A dialog that is larger
/// than the screen is as large as that, and scrolls.
class TzQtCanvas : public TzCanvas, private ITzQtMeasures {
 public:
  /// Called when the canvas goes.
  using Gone = std::function<void(TzQtCanvas& canvas)>;

  /// The widget goes into the parent; in a dialog, it gets a window of its own, which belongs to the
  /// parent's.
  TzQtCanvas(const TzCanvasSpec& canvasSpec, QWidget* parent, Gone goneNotification,
             std::shared_ptr<const TzQtTooltipKeys> tooltipKeys = nullptr);

  /// The user interface goes.
  void Forget();
  /// Null when it has gone.
  [[nodiscard]] QWidget* GetWidget() const;
  /// Of the whole sheet as it is shown.
  [[nodiscard]] TzQtRoom Measure();

 protected:
  ~TzQtCanvas() override;
  void DescendantChanged(UI_Node& node, kelpui::controls::UI_Change change) override;
  void Redraw(UI_Node& node, kelpui::controls::UI_Change change) override;
  void LayOut() override;
  void RunEventLoop() override;

 private:
  class Surface;
  class Dialog;

  [[nodiscard]] TzQtRoom MeasureNode(const UI_Node& node) const override;
  [[nodiscard]] QMargins GetFrameMargins(const UI_Node& box) const override;
  [[nodiscard]] int GetLabelWidth(const UI_Node& node) const override;
  void SetLabelWidth(const UI_Node& node, int width, int indent) override;
  [[nodiscard]] int GetSpacing() const override;

  [[nodiscard]] std::vector<TzQtMirror*> ListMirrors() const;
  void ShowStructure();
  void ShowVisibility();
  void ShowMnemonics();
  void ShowDefaultButton();
  void ShowTabOrder();
  void FocusFirst();
  void PlaceMirror(const UI_Node& node);
  /// True if a button was there to be pressed.
  bool PressCancel();
  void SizeChanged();

  Gone gone;
  QPointer<Surface> surface;
  QPointer<Dialog> dialog;
  TzQtMirrors mirrors;
  bool isLayingOut = false;
  bool isLayOutAsked = false;
};
