// SPDX-License-Identifier: Apache-2.0
#include "host/headless/TzHeadlessCanvas.h"

#include "host/headless/TzHeadlessUI.h"

using kelpui::controls::UI_Align;
using kelpui::controls::UI_Change;
using kelpui::controls::UI_Node;
using kelpui::controls::UI_NodeKind;
using kelpui::controls::UI_NodePtr;
using kelpui::controls::UI_Presentation;

namespace {

/// Gives the sub-views their sizes; trees are all that asks for one. What is in a sub-view is its owner's.
/// By index, for who hears of a size may add views.
void LayOutBelow(const UI_Node& node, TzReal width, TzReal height) {  // NOLINT(misc-no-recursion)
  for (std::size_t index = 0; index < node.GetChildren().size(); ++index) {
    const UI_NodePtr child = node.GetChildren()[index];
    if (child->GetKind() != UI_NodeKind::SubView) {
      LayOutBelow(*child, width, height);
      continue;
    }
    const UI_Presentation& look = child->GetPresentation();
    const bool fillsWidth = look.horizontal == UI_Align::Fill && width > 0.0;
    const bool fillsHeight = look.vertical == UI_Align::Fill && height > 0.0;
    child->SetFrame({0.0, 0.0, fillsWidth ? width : TzReal(look.width.value_or(0)),
                     fillsHeight ? height : TzReal(look.height.value_or(0))});
  }
}

}  // namespace

TzHeadlessCanvas::TzHeadlessCanvas(const TzCanvasSpec& canvasSpec, TzHeadlessUI& userInterface)
    : TzCanvas(canvasSpec), ui(&userInterface) {}

TzHeadlessCanvas::~TzHeadlessCanvas() {
  if (ui != nullptr) ui->CanvasGone(*this);
}

void TzHeadlessCanvas::Redraw(UI_Node& /*node*/, UI_Change /*change*/) {}

void TzHeadlessCanvas::LayOut() { LayOutBelow(*this, GetWidth(), GetHeight()); }

void TzHeadlessCanvas::RunEventLoop() {
  if (ui != nullptr) ui->RunDialog(*this);
}
