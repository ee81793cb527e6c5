// SPDX-License-Identifier: Apache-2.0
#include "host/headless/TzHeadlessScreen.h"

#include <algorithm>

#include "host/kelpui/UI_Checkbox.h"
#include "host/kelpui/UI_NumberEdit.h"
#include "host/kelpui/UI_PictureButton.h"
#include "host/kelpui/UI_Popup.h"
#include "host/kelpui/UI_TextEdit.h"

using namespace kelpui::controls;  // NOLINT(google-build-using-namespace)

namespace {

std::string Quote(const std::string& text) { return "\"" + text + "\""; }
std::string Quote(const TzString& text) { return Quote(text.GetUTF8String()); }

/// Keeps the lines that a draw callback draws.
class DrawnText : public UI_DrawContext {
 public:
  void DrawLine(const TzString& text, const TzRect& /*area*/, UI_Color /*color*/) override {
    if (!content.empty()) content += " ";
    content += text.GetUTF8String();
  }

  std::string content;
};

/// The name that a node bears itself: its label, the text in the field behind it, its image.
std::string GetOwnName(const UI_Node& node) {
  if (!node.GetName().IsEmpty()) return node.GetName().GetUTF8String();
  if (const auto* button = dynamic_cast<const UI_PictureButton*>(&node))
    return button->GetImage().name.GetUTF8String();
  if (const auto* image = dynamic_cast<const UI_Image*>(&node)) return image->GetImage().name.GetUTF8String();
  if (const auto* number = dynamic_cast<const UI_NumberEdit*>(&node)) {
    const std::string label = number->GetLabel().GetUTF8String();
    return label.substr(std::min(label.find_first_not_of(' '), label.size()));
  }
  return {};
}

/// A field without a name is called by the text in front of it, a check box by what it stands before.
std::string GetNameBeside(const std::vector<UI_NodePtr>& siblings, std::size_t index) {
  const UI_NodeKind kind = siblings[index]->GetKind();
  if (kind == UI_NodeKind::Checkbox && index + 1 < siblings.size()) {
    return siblings[index + 1]->GetName().GetUTF8String();
  }
  const bool isField = kind == UI_NodeKind::TextEdit || kind == UI_NodeKind::NumberEdit;
  if (isField && index > 0 && siblings[index - 1]->GetKind() == UI_NodeKind::StaticText) {
    return siblings[index - 1]->GetName().GetUTF8String();
  }
  return {};
}

std::string GetState(const UI_Node& node) {
  switch (node.GetKind()) {
    case UI_NodeKind::TextEdit:
      return " = " + Quote(static_cast<const UI_TextEdit&>(node).GetText());
    case UI_NodeKind::Checkbox:
      return static_cast<const UI_Checkbox&>(node).GetValue() == 1 ? " on" : " off";
    case UI_NodeKind::NumberEdit: {
      const auto& number = static_cast<const UI_NumberEdit&>(node);
      return " = " + number.GetText().GetUTF8String() + number.GetInlineUnit().GetUTF8String();
    }
    case UI_NodeKind::Popup: {
      const auto& popup = static_cast<const UI_Popup&>(node);
      const auto chosen = popup.GetChosenIndex();
      return chosen ? " = " + Quote(popup.GetItems()[*chosen].name) : " with nothing chosen";
    }
    default:
      return {};
  }
}

/// Null for nodes that are seen only by what is in them.
const char* GetKindName(UI_NodeKind kind) {
  switch (kind) {
    case UI_NodeKind::Group:
      return "group";
    case UI_NodeKind::StaticText:
      return "static_text";
    case UI_NodeKind::TextEdit:
      return "edit_text";
    case UI_NodeKind::Checkbox:
      return "checkbox";
    case UI_NodeKind::NumberEdit:
      return "edit_number";
    case UI_NodeKind::Popup:
      return "popup";
    case UI_NodeKind::Button:
      return "button";
    case UI_NodeKind::Image:
      return "image";
    default:
      return nullptr;
  }
}

std::string Indent(std::size_t depth) { return std::string(2 * depth, ' '); }

}  // namespace

TzHeadlessScreen::TzHeadlessScreen(const std::vector<Node*>& roots) {
  for (Node* root : roots) LookAtChildren(*root, 0);
}

TzHeadlessScreen::TzHeadlessScreen(Row& row) { LookAtRow(row, 0); }

void TzHeadlessScreen::LookAtChildren(const Node& node, std::size_t depth) {  // NOLINT(misc-no-recursion)
  const std::vector<UI_NodePtr>& children = node.GetChildren();
  for (std::size_t index = 0; index < children.size(); ++index) {
    Node& child = *children[index];
    if (!child.IsVisible()) continue;
    std::string ownName = GetOwnName(child);
    const bool isBorrowed = ownName.empty();
    Note({&child, isBorrowed ? GetNameBeside(children, index) : std::move(ownName), isBorrowed}, depth);
    Look(child, depth);
  }
}

void TzHeadlessScreen::Look(Node& node, std::size_t depth) {  // NOLINT(misc-no-recursion)
  if (node.GetKind() != UI_NodeKind::Tree) {
    LookAtChildren(node, depth);
    return;
  }
  const auto& tree = static_cast<const UI_MultiColumnTree&>(node);
  const std::vector<UI_RowPtr>& rows = tree.GetRowsInView();
  for (const UI_RowPtr& row : rows) {
    std::size_t level = 1;
    for (const Row* parent = row->GetParentRow(); parent != nullptr; parent = parent->GetParentRow()) ++level;
    LookAtCells(*row, depth + level);
  }
}

void TzHeadlessScreen::LookAtCells(Row& row, std::size_t depth) {  // NOLINT(misc-no-recursion)
  const UI_MultiColumnTree& tree = *row.GetTree();
  DrawnText drawn;
  tree.DrawRow(row, drawn);
  std::string line = Indent(depth) + "row " + std::to_string(tree.GetRowIndex(row));
  if (!drawn.content.empty()) line += " " + Quote(drawn.content);
  lines.push_back(line + (row.IsSelected() ? " selected" : ""));
  for (std::size_t column = 0; row.HasCellViews() && column < tree.GetNumberOfColumns(); ++column) {
    LookAtChildren(*row.GetCellView(column), depth + 1);
  }
}

// Below a row that a script looks at, everything counts, for a person would scroll to it.
void TzHeadlessScreen::LookAtRow(Row& row, std::size_t depth) {  // NOLINT(misc-no-recursion)
  if (row.GetTree() == nullptr) return;
  LookAtCells(row, depth);
  for (std::size_t index = 0; index < row.CountChildRows(); ++index) {
    LookAtRow(*row.GetChildRow(index), depth + 1);
  }
}

void TzHeadlessScreen::Note(const Sight& sight, std::size_t depth) {
  const Node& node = *sight.node;
  if (node.GetKind() == UI_NodeKind::Tree) {
    const auto& tree = static_cast<const UI_MultiColumnTree&>(node);
    sights.push_back(sight);
    lines.push_back(Indent(depth) + "tree of " + std::to_string(tree.CountRows()) + " rows");
    return;
  }
  const char* kind = GetKindName(node.GetKind());
  if (kind == nullptr) return;
  sights.push_back(sight);
  std::string line = Indent(depth) + kind;
  if (!sight.name.empty()) line += " " + Quote(sight.name);
  lines.push_back(line + GetState(node) + (node.IsEnabled() ? "" : " disabled"));
}
