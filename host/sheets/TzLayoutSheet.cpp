// SPDX-License-Identifier: Apache-2.0
#include "host/sheets/TzLayoutSheet.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <string_view>

#include "host/sheets/TzLayoutAttributes.h"
#include "host/sheets/TzPropertySheet.h"

using kelpui::controls::UI_NodeKind;

namespace {

struct ViewType {
  std::string_view name;
  UI_NodeKind kind;
  bool holdsViews;
};

constexpr ViewType kTypes[] = {
    {"view", UI_NodeKind::View, true},
    {"palette", UI_NodeKind::Palette, true},
    {"panel", UI_NodeKind::Panel, true},
    {"row", UI_NodeKind::Row, true},
    {"column", UI_NodeKind::Column, true},
    {"group", UI_NodeKind::Group, true},
    {"optional", UI_NodeKind::Optional, true},
    {"subview", UI_NodeKind::SubView, false},
    {"static_text", UI_NodeKind::StaticText, false},
    {"edit_text", UI_NodeKind::TextEdit, false},
    {"checkbox", UI_NodeKind::Checkbox, false},
    {"inline_edit_number", UI_NodeKind::NumberEdit, false},
    {"popup", UI_NodeKind::Popup, false},
    {"button", UI_NodeKind::Button, false},
    {"image", UI_NodeKind::Image, false},
    {"separator", UI_NodeKind::Separator, false},
};

/// Fills a layout from its text.
class LayoutSheetReader {
 public:
  LayoutSheetReader(const TzResource& resource, const TzPropertySheet& properties,
                    const ITzStringDictionary* words)
      : text(resource, words), cells(properties), attributes(text, properties) {
    sheet.file = resource.file;
  }

  TzLayoutSheet Read() {
    const TzSheetNode& root = text.GetRoot();
    for (const auto& [key, line, value] : root.entries) {
      if (key != "layout" && key != "tree") text.Refuse(line, "there is no key '" + key + "' here");
    }
    sheet.name = text.ReadWord(text.Require(root, "layout", TzSheetNode::Kind::Scalar));
    sheet.root = ReadView(text.Require(root, "tree", TzSheetNode::Kind::Map));
    return std::move(sheet);
  }

 private:
  // NOLINTNEXTLINE(misc-no-recursion): a text nests to a bounded depth
  TzLayoutNode ReadView(const TzSheetNode& node) {
    const bool isView = node.kind == TzSheetNode::Kind::Map && !node.entries.empty();
    if (!isView) text.Refuse(node.line, "expected a view: its type with its attributes");
    const TzSheetNode::Entry& head = node.entries.front();
    TzLayoutNode view;
    view.line = head.line;
    const ViewType& type = ReadType(head);
    view.kind = type.kind;
    ReadAttributes(head, view);
    CheckView(view);
    for (auto entry = std::next(node.entries.begin()); entry != node.entries.end(); ++entry) {
      const bool holdsChildren =
          entry->key == "children" && entry->value.kind == TzSheetNode::Kind::List && type.holdsViews;
      if (!holdsChildren) text.Refuse(entry->line, "'" + entry->key + "' can't follow '" + head.key + "'");
      for (const TzSheetNode& child : entry->value.items) view.children.push_back(ReadView(child));
    }
    return view;
  }

  [[nodiscard]] const ViewType& ReadType(const TzSheetNode::Entry& head) const {
    const auto* found = std::ranges::find(kTypes, head.key, &ViewType::name);
    if (found == std::end(kTypes)) text.Refuse(head.line, "there is no view '" + head.key + "'");
    return *found;
  }

  void ReadAttributes(const TzSheetNode::Entry& head, TzLayoutNode& view) const {
    if (head.value.kind != TzSheetNode::Kind::Map && head.value.kind != TzSheetNode::Kind::Nothing) {
      text.Refuse(head.line, "expected the attributes of '" + head.key + "'");
    }
    for (const TzSheetNode::Entry& attribute : head.value.entries) {
      if (attributes.Read(attribute, view)) continue;
      text.Refuse(attribute.line, "'" + head.key + "' has no attribute '" + attribute.key + "'");
    }
  }

  void CheckView(const TzLayoutNode& view) {
    if (!view.identifier.IsEmpty() && !identifiers.insert(view.identifier).second) {
      text.Refuse(view.line, "identifier '" + view.identifier.GetUTF8String() + "' is used twice");
    }
    CheckKind(view, view.name.cell, TzVariant::Kind::Text);
    CheckEditable(view);
    switch (view.kind) {
      case UI_NodeKind::TextEdit:
        return CheckKind(view, view.bind, TzVariant::Kind::Text);
      case UI_NodeKind::Checkbox:
        return CheckKind(view, view.bind, TzVariant::Kind::Bool);
      case UI_NodeKind::Button:
        if (view.action.IsEmpty()) text.Refuse(view.line, "a button needs an 'action'");
        return CheckKind(view, view.bind, TzVariant::Kind::Bool);
      case UI_NodeKind::Optional:
        if (view.bind.IsEmpty()) text.Refuse(view.line, "'optional' needs a 'bind'");
        return CheckKind(view, view.bind, view.value.GetKind());
      case UI_NodeKind::Image:
        if (view.image.IsEmpty()) text.Refuse(view.line, "an image needs an 'image'");
        return;
      case UI_NodeKind::NumberEdit:
        return CheckNumberEdit(view);
      case UI_NodeKind::Popup:
        return CheckPopup(view);
      default:
        return;
    }
  }

  void CheckEditable(const TzLayoutNode& view) const {
    const bool isField = view.kind == UI_NodeKind::TextEdit || view.kind == UI_NodeKind::Checkbox ||
                         view.kind == UI_NodeKind::NumberEdit || view.kind == UI_NodeKind::Popup;
    if (!isField || view.bind.IsEmpty() || !cells.Find(view.bind)->IsComputed()) return;
    text.Refuse(view.line,
                "cell '" + view.bind.GetUTF8String() + "' follows from others; nobody can enter it");
  }

  /// No cell is fine.
  void CheckKind(const TzLayoutNode& view, const TzString& cell, TzVariant::Kind kind) const {
    if (cell.IsEmpty()) return;
    const TzVariant::Kind held = cells.Find(cell)->initial.GetKind();
    if (held == kind) return;
    text.Refuse(view.line, "cell '" + cell.GetUTF8String() + "' holds " + GetKindWords(held) + "; expected " +
                               GetKindWords(kind));
  }

  void CheckNumberEdit(const TzLayoutNode& view) const {
    if (view.minMaxFilter.IsEmpty()) text.Refuse(view.line, "a number needs a 'min_max_filter'");
    CheckKind(view, view.minMaxFilter, TzVariant::Kind::Dictionary);
    const TzVariant::Dictionary& limits = cells.Find(view.minMaxFilter)->initial.GetDictionary();
    for (const char* limit : {"min_value", "max_value"}) {
      const auto found = limits.find(limit);
      if (found == limits.end() || !found->second.IsNumber()) {
        text.Refuse(view.line,
                    "cell '" + view.minMaxFilter.GetUTF8String() + "' has no number '" + limit + "'");
      }
    }
    if (!view.bind.IsEmpty() && !cells.Find(view.bind)->initial.IsNumber()) {
      CheckKind(view, view.bind, TzVariant::Kind::Integer);
    }
  }

  void CheckPopup(const TzLayoutNode& view) const {
    if (view.items.IsEmpty()) text.Refuse(view.line, "a popup needs 'items'");
    CheckKind(view, view.items, TzVariant::Kind::List);
    for (const TzVariant& item : cells.Find(view.items)->initial.GetList()) {
      const TzVariant::Dictionary& entry = item.GetDictionary();
      if (!entry.contains("name") || !entry.contains("value")) {
        text.Refuse(view.line,
                    "an item of cell '" + view.items.GetUTF8String() + "' has no name or no value");
      }
    }
  }

  TzSheetText text;
  const TzPropertySheet& cells;
  TzLayoutAttributes attributes;
  TzLayoutSheet sheet;
  std::set<TzString> identifiers;
};

}  // namespace

TzLayoutSheet TzLayoutSheet::Read(const TzResource& text, const TzPropertySheet& cells,
                                  const ITzStringDictionary* words) {
  return LayoutSheetReader(text, cells, words).Read();
}
