// SPDX-License-Identifier: Apache-2.0
#include "host/sheets/TzViewBindings.h"

#include <algorithm>

#include "host/kelpui/UI_Checkbox.h"
#include "host/kelpui/UI_NumberEdit.h"
#include "host/kelpui/UI_PictureButton.h"
#include "host/kelpui/UI_Popup.h"
#include "host/kelpui/UI_StaticText.h"
#include "host/kelpui/UI_SubView.h"
#include "host/kelpui/UI_TextEdit.h"
#include "host/sheets/TzDataModel.h"

using namespace kelpui::controls;  // NOLINT(google-build-using-namespace)

namespace {

std::vector<UI_PopupItem> MakeItems(const TzVariant& list) {
  std::vector<UI_PopupItem> items;
  for (const TzVariant& each : list.GetList()) {
    const TzVariant::Dictionary& item = each.GetDictionary();
    items.push_back({item.at("name").GetString(), item.at("value")});
  }
  return items;
}

/// Unless the sheet names it, a button goes by its action and a field by its cell, so that a host finds "ok"
/// whatever its caption, and what has no caption.
const TzString& GetIdentifier(const TzLayoutNode& view) {
  if (!view.identifier.IsEmpty()) return view.identifier;
  return view.kind == UI_NodeKind::TextEdit ? view.bind : view.action;
}

}  // namespace

TzViewBindings::TzViewBindings(TzDataModel& dataModel, TzActionCallback actionCallback,
                               TzSheetResourceLoader imageLoader)
    : model(dataModel), action(std::move(actionCallback)), loader(std::move(imageLoader)) {
  model.SetViewRefresh([this](const std::vector<TzString>& changedCells) { Refresh(changedCells); });
}

TzViewBindings::~TzViewBindings() {
  model.SetViewRefresh(nullptr);
  for (const auto& control : controls) control->InstallChangeNotification(nullptr);
}

// NOLINTNEXTLINE(misc-no-recursion): a layout nests to a bounded depth
UI_NodePtr TzViewBindings::Make(const TzLayoutNode& view) {
  UI_NodePtr node = MakeBare(view);
  node->SetIdentifier(GetIdentifier(view));
  node->SetPresentation(view.presentation);
  node->SetTooltip(view.tooltip);
  if (view.name.cell.IsEmpty()) {
    node->SetName(view.name.text);
  } else {
    Follow(view.name.cell, [node](const TzVariant& value) { node->SetName(value.GetString()); });
  }
  for (const TzLayoutNode& child : view.children) node->AddChild(Make(child));
  return node;
}

UI_NodePtr TzViewBindings::MakeBare(const TzLayoutNode& view) {
  switch (view.kind) {
    case UI_NodeKind::SubView:
      return new UI_SubView;
    case UI_NodeKind::StaticText:
      return new UI_StaticText;
    case UI_NodeKind::Optional:
      return MakeOptional(view);
    case UI_NodeKind::TextEdit:
      return MakeTextEdit(view);
    case UI_NodeKind::Checkbox:
      return MakeCheckbox(view);
    case UI_NodeKind::NumberEdit:
      return MakeNumberEdit(view);
    case UI_NodeKind::Popup:
      return MakePopup(view);
    case UI_NodeKind::Button:
      return MakeButton(view);
    case UI_NodeKind::Image:
      return new UI_Image(MakeImageSupply(view.image));
    default:
      return new UI_Node(view.kind);
  }
}

UI_NodePtr TzViewBindings::MakeOptional(const TzLayoutNode& view) {
  UI_NodePtr node = new UI_Node(UI_NodeKind::Optional);
  Follow(view.bind,
         [node, wanted = view.value](const TzVariant& value) { node->SetVisible(value == wanted); });
  return node;
}

UI_NodePtr TzViewBindings::MakeTextEdit(const TzLayoutNode& view) {
  auto* edit = new UI_TextEdit;
  UI_NodePtr node = edit;
  if (view.bind.IsEmpty()) return node;
  Follow(view.bind, [node, edit](const TzVariant& value) { edit->SetText(value.GetString()); });
  FollowLink(view.bind, *node);
  Hear(*edit, [this, edit, cell = view.bind] { Enter(cell, edit->GetText()); });
  return node;
}

UI_NodePtr TzViewBindings::MakeCheckbox(const TzLayoutNode& view) {
  auto* box = new UI_Checkbox;
  UI_NodePtr node = box;
  if (view.bind.IsEmpty()) return node;
  Follow(view.bind, [node, box](const TzVariant& value) { box->SetValue(value.GetBool() ? 1 : 0); });
  FollowLink(view.bind, *node);
  Hear(*box, [this, box, cell = view.bind] { Enter(cell, box->GetValue() == 1); });
  return node;
}

UI_NodePtr TzViewBindings::MakeNumberEdit(const TzLayoutNode& view) {
  const TzVariant filter = model.GetCellValue(view.minMaxFilter);
  const TzVariant::Dictionary& limits = filter.GetDictionary();
  auto* edit = new UI_NumberEdit(
      {limits.at("min_value").GetDouble(), limits.at("max_value").GetDouble(), /*decimalPlaces=*/0});
  UI_NodePtr node = edit;
  edit->SetLabel(view.label);
  if (view.bind.IsEmpty()) return node;
  Follow(view.bind, [node, edit](const TzVariant& value) { edit->SetValue(value.GetDouble()); });
  FollowLink(view.bind, *node);
  Hear(*edit, [this, edit, cell = view.bind] { Enter(cell, edit->GetValue()); });
  return node;
}

UI_NodePtr TzViewBindings::MakePopup(const TzLayoutNode& view) {
  auto* popup = new UI_Popup;
  UI_NodePtr node = popup;
  Follow(view.items, [node, popup](const TzVariant& value) { popup->SetItems(MakeItems(value)); });
  if (view.bind.IsEmpty()) return node;
  Follow(view.bind, [node, popup](const TzVariant& value) { popup->SetValue(value); });
  FollowLink(view.bind, *node);
  Hear(*popup, [this, popup, cell = view.bind] { Enter(cell, popup->GetValue()); });
  return node;
}

UI_NodePtr TzViewBindings::MakeButton(const TzLayoutNode& view) {
  UI_Button* button = nullptr;
  if (view.image.IsEmpty()) {
    button = new UI_Button;
  } else {
    button = new UI_PictureButton(MakeImageSupply(view.image));
  }
  UI_NodePtr node = button;
  button->SetIsCancel(view.cancel);
  if (!view.bind.IsEmpty()) {
    Follow(view.bind, [node](const TzVariant& value) { node->SetEnabled(value.GetBool()); });
  }
  Hear(*button, [this, name = view.action, cell = view.bind] {
    // A copy, for the action may end the canvas, and this with it.
    const TzActionCallback callback = action;
    const TzVariant value = cell.IsEmpty() ? TzVariant() : model.GetCellValue(cell);
    if (callback) callback(name, value);
  });
  return node;
}

UI_ImageSupply TzViewBindings::MakeImageSupply(const TzString& fileName) const {
  if (!loader) return [fileName] { return UI_ImageData{fileName, {}, {}}; };
  const std::string file = fileName.GetUTF8String();
  const std::size_t point = std::min(file.rfind('.'), file.size());
  const TzString doubleSize = file.substr(0, point) + "_AT_2X" + file.substr(point);
  return [images = loader, fileName, doubleSize] {
    return UI_ImageData{fileName, images(fileName), images(doubleSize)};
  };
}

void TzViewBindings::Follow(const TzString& cell, std::function<void(const TzVariant& value)> show) {
  show(model.GetCellValue(cell));
  followers[cell].push_back(std::move(show));
}

void TzViewBindings::FollowLink(const TzString& cell, Node& control) {
  const UI_NodePtr node(&control);
  Follow(cell,
         [this, node, cell](const TzVariant& /*value*/) { node->SetEnabled(model.IsCellLinked(cell)); });
}

void TzViewBindings::Hear(UI_Control& control, std::function<void()> notification) {
  control.InstallChangeNotification(std::move(notification));
  controls.emplace_back(&control);
}

void TzViewBindings::Refresh(const std::vector<TzString>& changedCells) {
  for (const TzString& cell : changedCells) {
    const auto found = followers.find(cell);
    if (found == followers.end()) continue;
    const TzVariant value = model.GetCellValue(cell);
    for (const auto& show : found->second) show(value);
  }
}

void TzViewBindings::Enter(const TzString& cell, const TzVariant& value) {
  // A copy, for a watcher may end the canvas, and this with it.
  const CellEntered notification = cellEntered;
  model.SetCellValue(cell, value);
  model.Update();
  if (notification) notification(cell, value);
}
