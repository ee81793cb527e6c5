// SPDX-License-Identifier: Apache-2.0
#include "host/sheets/TzCanvas.h"

#include <stdexcept>
#include <utility>

#include "host/kelpui/UI_MultiColumnTree.h"
#include "host/sheets/TzDataModel.h"
#include "host/sheets/TzViewBindings.h"

using kelpui::controls::UI_Change;
using kelpui::controls::UI_KeepAlive;
using kelpui::controls::UI_MultiColumnTree;
using kelpui::controls::UI_Node;
using kelpui::controls::UI_NodeKind;
using kelpui::controls::UI_NodePtr;

namespace {

/// By index, for who hears of a selection may add views.
void ClearSelectionBelow(const UI_Node& node) {  // NOLINT(misc-no-recursion)
  for (std::size_t index = 0; index < node.GetChildren().size(); ++index) {
    const UI_NodePtr child = node.GetChildren()[index];
    if (auto* tree = dynamic_cast<UI_MultiColumnTree*>(child.get())) tree->ClearSelection();
    ClearSelectionBelow(*child);
  }
}

}  // namespace

TzCanvas::TzCanvas(TzCanvasSpec canvasSpec) : UI_Node(UI_NodeKind::Canvas), spec(std::move(canvasSpec)) {}

TzCanvas::~TzCanvas() = default;

void TzCanvas::ShowSheet(const TzLayoutSheet& layout, TzDataModel& model, const TzActionCallback& action,
                         const TzSheetResourceLoader& loader) {
  if (bindings != nullptr) throw std::logic_error("canvas: it shows a sheet already");
  bindings = std::make_unique<TzViewBindings>(model, action, loader);
  AddChild(bindings->Make(layout.root));
}

void TzCanvas::SetCellEntered(
    std::function<void(const TzString& cell, const TzVariant& value)> notification) {
  if (bindings != nullptr) bindings->SetCellEntered(std::move(notification));
}

void TzCanvas::Unbind() { bindings.reset(); }

TzDataModel* TzCanvas::GetDataModel() const {
  return bindings != nullptr ? &bindings->GetDataModel() : nullptr;
}

void TzCanvas::SetSize(const TzRect& size) {
  const UI_KeepAlive held(*this);
  SetFrame(size);
  LayOut();
  const auto notification = resized;
  if (notification) notification(size);
}

void TzCanvas::ClearSelection() {
  const UI_KeepAlive held(*this);
  ClearSelectionBelow(*this);
}

int TzCanvas::RunModal() {
  const UI_KeepAlive held(*this);
  isModalRunning = !modalResult.has_value();
  if (isModalRunning) RunEventLoop();
  isModalRunning = false;
  return std::exchange(modalResult, std::nullopt).value_or(0);
}

void TzCanvas::EndModal(int result) {
  modalResult = result;
  isModalRunning = false;
}

void TzCanvas::DescendantChanged(UI_Node& node, UI_Change change) {
  if (change == UI_Change::Children || change == UI_Change::State) LayOut();
  Redraw(node, change);
}
