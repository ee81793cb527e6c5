// SPDX-License-Identifier: Apache-2.0
#include "host/headless/TzHeadlessDriver.h"

#include <algorithm>

#include "host/kelpui/UI_Checkbox.h"
#include "host/kelpui/UI_NumberEdit.h"
#include "host/kelpui/UI_PictureButton.h"
#include "host/kelpui/UI_Popup.h"
#include "host/kelpui/UI_TextEdit.h"

using namespace kelpui::controls;  // NOLINT(google-build-using-namespace)

namespace {

std::string Quote(const std::string& text) { return "\"" + text + "\""; }

std::string WithoutColon(const std::string& name) {
  return name.ends_with(':') ? name.substr(0, name.size() - 1) : name;
}

bool IsField(const UI_Node& node) {
  return node.GetKind() == UI_NodeKind::TextEdit || node.GetKind() == UI_NodeKind::NumberEdit;
}

std::function<bool(const UI_Node&)> OfKind(UI_NodeKind kind) {
  return [kind](const UI_Node& node) { return node.GetKind() == kind; };
}

bool IsCalled(const TzHeadlessScreen::Sight& sight, const std::string& name) {
  if (name.empty()) return true;
  const bool isNamed = WithoutColon(sight.name) == WithoutColon(name);
  return isNamed || sight.node->GetTooltip() == TzString(name);
}

bool IsNameless(const TzHeadlessScreen::Sight& sight) {
  return sight.name.empty() && sight.node->GetTooltip().IsEmpty();
}

}  // namespace

void TzHeadlessDriver::Fail(const std::string& what) const {
  ui->Fail(what + "\nwhat can be seen:\n" + See());
}

TzHeadlessScreen TzHeadlessDriver::Look() const {
  if (row != nullptr) return TzHeadlessScreen(*row);
  const std::vector<TzCanvas*> canvases = ui->GetFrontCanvases();
  return TzHeadlessScreen(std::vector<Node*>(canvases.begin(), canvases.end()));
}

std::string TzHeadlessDriver::See() const {
  std::string text;
  const TzHeadlessScreen screen = Look();
  for (const std::string& line : screen.GetLines()) text += line + "\n";
  return text;
}

bool TzHeadlessDriver::Sees(const std::string& name) const {
  const TzHeadlessScreen screen = Look();
  return std::ranges::any_of(screen.GetSights(),
                             [&](const TzHeadlessScreen::Sight& each) { return IsCalled(each, name); });
}

UI_Node& TzHeadlessDriver::Find(const std::string& name, const char* kind,
                                const std::function<bool(const Node& node)>& isWanted) const {
  const std::string what = std::string(kind) + " " + Quote(name);
  const TzHeadlessScreen screen = Look();
  for (const bool isFirstLook : {true, false}) {
    Node* found = nullptr;
    for (const TzHeadlessScreen::Sight& sight : screen.GetSights()) {
      const bool isMeant =
          name.empty() ? !isFirstLook || IsNameless(sight) : sight.isNameBorrowed != isFirstLook;
      if (!isMeant || !isWanted(*sight.node) || !IsCalled(sight, name)) continue;
      if (found != nullptr) Fail(what + ": there is more than one");
      found = sight.node;
    }
    if (found != nullptr) return *found;
  }
  Fail(what + ": there is none");
}

UI_Node& TzHeadlessDriver::Reach(const std::string& name, const char* kind,
                                 const std::function<bool(const Node& node)>& isWanted) const {
  Node& node = Find(name, kind, isWanted);
  if (!node.IsEnabled()) Fail(std::string(kind) + " " + Quote(name) + ": it is disabled");
  return node;
}

UI_MultiColumnTree& TzHeadlessDriver::FindTree() const {
  return static_cast<Tree&>(Find("", "tree", OfKind(UI_NodeKind::Tree)));
}

bool TzHeadlessDriver::IsEnabled(const std::string& name) const {
  return Find(name, "control",
              [](const Node& node) { return dynamic_cast<const UI_Control*>(&node) != nullptr; })
      .IsEnabled();
}

std::string TzHeadlessDriver::Read(const std::string& name) const {
  const Node& node = Find(name, "field", [](const Node& each) {
    return each.GetKind() != UI_NodeKind::Button && dynamic_cast<const UI_Control*>(&each) != nullptr;
  });
  switch (node.GetKind()) {
    case UI_NodeKind::Checkbox:
      return static_cast<const UI_Checkbox&>(node).GetValue() == 1 ? "on" : "off";
    case UI_NodeKind::NumberEdit:
      return static_cast<const UI_NumberEdit&>(node).GetText().GetUTF8String();
    case UI_NodeKind::Popup: {
      const auto& popup = static_cast<const UI_Popup&>(node);
      const auto chosen = popup.GetChosenIndex();
      return chosen ? popup.GetItems()[*chosen].name.GetUTF8String() : "";
    }
    default:
      return static_cast<const UI_TextEdit&>(node).GetText().GetUTF8String();
  }
}

void TzHeadlessDriver::Act(const std::string& line, const std::function<void()>& act) {
  ui->NoteScreen();
  ui->GetTranscript().Add(line);
  act();
  ui->RunTimers();
  ui->NoteScreen();
}

void TzHeadlessDriver::Press(const std::string& name) {
  auto& button = static_cast<UI_Button&>(Reach(name, "button", OfKind(UI_NodeKind::Button)));
  Act("press " + Quote(name), [&] { button.Press(); });
}

void TzHeadlessDriver::Type(const std::string& name, const std::string& text) {
  Node& field = Reach(name, "field", IsField);
  Act("type " + Quote(text) + " into " + Quote(name), [&] {
    if (field.GetKind() == UI_NodeKind::TextEdit) {
      static_cast<UI_TextEdit&>(field).EnterText(text);
    } else if (!static_cast<UI_NumberEdit&>(field).EnterText(text)) {
      Fail("field " + Quote(name) + ": " + Quote(text) + " isn't a number");
    }
  });
}

void TzHeadlessDriver::SetChecked(const std::string& name, bool checked) {
  auto& box = static_cast<UI_Checkbox&>(Reach(name, "check box", OfKind(UI_NodeKind::Checkbox)));
  if ((box.GetValue() == 1) == checked) {
    Fail("check box " + Quote(name) + ": it is " + (checked ? "checked" : "unchecked") + " already");
  }
  Act((checked ? "check " : "uncheck ") + Quote(name), [&] { box.EnterValue(checked ? 1 : 0); });
}

void TzHeadlessDriver::Choose(const std::string& name, const std::string& item) {
  auto& popup = static_cast<UI_Popup&>(Reach(name, "popup", OfKind(UI_NodeKind::Popup)));
  const auto found = std::ranges::find(popup.GetItems(), TzString(item), &UI_PopupItem::name);
  if (found == popup.GetItems().end()) Fail("popup " + Quote(name) + ": it has no item " + Quote(item));
  const auto index = static_cast<std::size_t>(found - popup.GetItems().begin());
  Act("choose " + Quote(item) + " in " + Quote(name), [&] { popup.EnterIndex(index); });
}

void TzHeadlessDriver::SelectRows(const std::vector<std::size_t>& rows) {
  Tree& tree = FindTree();
  std::vector<UI_RowPtr> wanted;
  std::string line = "select rows";
  for (const std::size_t index : rows) {
    wanted.push_back(tree.GetRow(static_cast<std::int64_t>(index)));
    line += " " + std::to_string(index);
    if (wanted.back() == nullptr) Fail("row " + std::to_string(index) + ": there is none");
    if (!wanted.back()->IsSelectable()) Fail("row " + std::to_string(index) + ": it can't be selected");
  }
  if (rows.size() > 1 && !tree.AreMultipleSelectionsSupported())
    Fail("the tree lets only one row be selected");
  Act(line, [&] { tree.SelectRows(wanted); });
}

TzHeadlessDriver TzHeadlessDriver::InRow(std::size_t index) const {
  Tree& tree = FindTree();
  UI_RowPtr wanted = tree.GetRow(static_cast<std::int64_t>(index));
  if (wanted == nullptr) Fail("row " + std::to_string(index) + ": there is none");
  tree.ScrollTo(tree.GetShownIndex(*wanted));
  TzHeadlessDriver closer(*ui);
  closer.row = wanted;
  return closer;
}

void TzHeadlessDriver::OnNextDialog(const DialogScript& person) {
  ui->OnNextDialog([ui = ui, person](TzCanvas& /*dialog*/) {
    TzHeadlessDriver front(*ui);
    person(front);
  });
}
