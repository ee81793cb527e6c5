// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "host/sheets/TzCanvas.h"

class TzHeadlessUI;

/// A canvas that draws nothing. Of the layout it knows as much as a session needs: a view that fills a
/// direction has the canvas's size there, any other the size that the sheet gives it.
class TzHeadlessCanvas : public TzCanvas {
 public:
  TzHeadlessCanvas(const TzCanvasSpec& canvasSpec, TzHeadlessUI& userInterface);

  /// The user interface has gone.
  void Forget() { ui = nullptr; }

 protected:
  ~TzHeadlessCanvas() override;
  void Redraw(kelpui::controls::UI_Node& node, kelpui::controls::UI_Change change) override;
  void LayOut() override;
  void RunEventLoop() override;

 private:
  TzHeadlessUI* ui;
};
