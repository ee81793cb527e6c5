// SPDX-License-Identifier: Apache-2.0
#include "host/sheets/TzLayoutAttributes.h"

#include <algorithm>
#include <iterator>
#include <string_view>

#include "host/sheets/TzPropertySheet.h"

using kelpui::controls::UI_Align;
using kelpui::controls::UI_NodeKind;
using kelpui::controls::UI_Placement;
using kelpui::controls::UI_Presentation;

namespace {

using Kinds = unsigned;

template <typename... More>
constexpr Kinds Of(UI_NodeKind kind, More... more) {
  return ((1U << static_cast<unsigned>(kind)) | ... | (1U << static_cast<unsigned>(more)));
}

constexpr Kinds kBoxes = Of(UI_NodeKind::View, UI_NodeKind::Palette, UI_NodeKind::Panel, UI_NodeKind::Row,
                            UI_NodeKind::Column, UI_NodeKind::Group, UI_NodeKind::Optional);
constexpr Kinds kContainers = kBoxes | Of(UI_NodeKind::SubView);
constexpr Kinds kControls = Of(UI_NodeKind::TextEdit, UI_NodeKind::Checkbox, UI_NodeKind::NumberEdit,
                               UI_NodeKind::Popup, UI_NodeKind::Button);
constexpr Kinds kNamed = kControls | Of(UI_NodeKind::View, UI_NodeKind::Palette, UI_NodeKind::Panel,
                                        UI_NodeKind::Group, UI_NodeKind::StaticText);
constexpr Kinds kAll = ~0U;

constexpr std::pair<std::string_view, UI_Align> kAligns[] = {
    {"align_left", UI_Align::Left},     {"align_right", UI_Align::Right},   {"align_top", UI_Align::Top},
    {"align_bottom", UI_Align::Bottom}, {"align_center", UI_Align::Center}, {"align_fill", UI_Align::Fill},
};
constexpr std::pair<std::string_view, UI_Placement> kPlacements[] = {
    {"place_row", UI_Placement::Row},
    {"place_column", UI_Placement::Column},
};

/// The word behind the @ of a reference; empty if it is none.
std::string_view GetReference(const TzSheetNode& node) {
  const bool isReference =
      node.kind == TzSheetNode::Kind::Scalar && node.text.size() > 1 && node.text.front() == '@';
  return isReference ? std::string_view(node.text).substr(1) : std::string_view();
}

/// Reads the values of attributes.
class AttributeReader {
 public:
  AttributeReader(const TzSheetText& sheetText, const TzPropertySheet& properties)
      : text(sheetText), cells(properties) {}

  [[nodiscard]] TzString ReadReference(const TzSheetNode& node) const {
    const std::string_view word = GetReference(node);
    if (word.empty()) text.Refuse(node.line, "expected a reference: '@name'");
    return word;
  }

  [[nodiscard]] TzString ReadCell(const TzSheetNode& node) const {
    TzString cell = ReadReference(node);
    if (cells.Find(cell) == nullptr) {
      text.Refuse(node.line, "there is no cell '" + cell.GetUTF8String() + "' in " + cells.file);
    }
    return cell;
  }

  [[nodiscard]] TzLayoutText ReadTextOrCell(const TzSheetNode& node) const {
    if (GetReference(node).empty()) return {ReadText(node), {}};
    return {{}, ReadCell(node)};
  }

  [[nodiscard]] TzString ReadText(const TzSheetNode& node) const {
    return ReadKind(node, TzVariant::Kind::Text).GetString();
  }
  [[nodiscard]] bool ReadBool(const TzSheetNode& node) const {
    return ReadKind(node, TzVariant::Kind::Bool).GetBool();
  }
  [[nodiscard]] int ReadInteger(const TzSheetNode& node) const {
    constexpr std::int64_t kMost = 100'000;
    const std::int64_t number = ReadKind(node, TzVariant::Kind::Integer).GetInteger();
    if (number < 0 || number > kMost) text.Refuse(node.line, "'" + node.text + "' is out of any measure");
    return static_cast<int>(number);
  }
  [[nodiscard]] TzVariant ReadValue(const TzSheetNode& node) const { return text.ReadValue(node); }

  template <typename Value, std::size_t count>
  [[nodiscard]] Value ReadSymbol(const TzSheetNode& node,
                                 const std::pair<std::string_view, Value> (&symbols)[count]) const {
    const std::string_view word = GetReference(node);
    for (const auto& [symbol, value] : symbols) {
      if (symbol == word) return value;
    }
    text.Refuse(node.line, "'" + node.text + "' isn't one of the values that this attribute takes");
  }

  /// One number for all sides, or a list of four.
  [[nodiscard]] std::array<int, 4> ReadMargin(const TzSheetNode& node) const {
    std::array<int, 4> margin{};
    if (node.kind != TzSheetNode::Kind::List) {
      margin.fill(ReadInteger(node));
      return margin;
    }
    if (node.items.size() != margin.size()) text.Refuse(node.line, "a margin has one number or four");
    std::ranges::transform(node.items, margin.begin(),
                           [this](const TzSheetNode& side) { return ReadInteger(side); });
    return margin;
  }

 private:
  [[nodiscard]] TzVariant ReadKind(const TzSheetNode& node, TzVariant::Kind kind) const {
    TzVariant value = text.ReadValue(node);
    if (value.GetKind() != kind) {
      text.Refuse(node.line,
                  std::string("expected ") + GetKindWords(kind) + ", not " + GetKindWords(value.GetKind()));
    }
    return value;
  }

  const TzSheetText& text;
  const TzPropertySheet& cells;
};

using Read = const AttributeReader&;
using From = const TzSheetNode&;

/// An attribute, the views that have it, and how it is read into one.
struct Attribute {
  std::string_view name;
  Kinds kinds;
  void (*set)(Read read, From from, TzLayoutNode& view);
};

constexpr Attribute kContentAttributes[] = {
    {"name", kNamed, [](Read read, From from, TzLayoutNode& view) { view.name = read.ReadTextOrCell(from); }},
    {"tooltip", kControls,
     [](Read read, From from, TzLayoutNode& view) { view.tooltip = read.ReadText(from); }},
    {"label", Of(UI_NodeKind::NumberEdit),
     [](Read read, From from, TzLayoutNode& view) { view.label = read.ReadText(from); }},
    {"identifier", kAll,
     [](Read read, From from, TzLayoutNode& view) { view.identifier = read.ReadText(from); }},
    {"image", Of(UI_NodeKind::Image, UI_NodeKind::Button),
     [](Read read, From from, TzLayoutNode& view) { view.image = read.ReadText(from); }},
    {"bind", kControls | Of(UI_NodeKind::Optional),
     [](Read read, From from, TzLayoutNode& view) { view.bind = read.ReadCell(from); }},
    {"value", Of(UI_NodeKind::Optional),
     [](Read read, From from, TzLayoutNode& view) { view.value = read.ReadValue(from); }},
    {"action", Of(UI_NodeKind::Button),
     [](Read read, From from, TzLayoutNode& view) { view.action = read.ReadReference(from); }},
    {"items", Of(UI_NodeKind::Popup),
     [](Read read, From from, TzLayoutNode& view) { view.items = read.ReadCell(from); }},
    {"min_max_filter", Of(UI_NodeKind::NumberEdit),
     [](Read read, From from, TzLayoutNode& view) { view.minMaxFilter = read.ReadCell(from); }},
    {"cancel", Of(UI_NodeKind::Button),
     [](Read read, From from, TzLayoutNode& view) { view.cancel = read.ReadBool(from); }},
};

/// An attribute of how the view looks.
struct PresentationAttribute {
  std::string_view name;
  Kinds kinds;
  void (*set)(Read read, From from, UI_Presentation& look);
};

constexpr PresentationAttribute kPresentationAttributes[] = {
    {"horizontal", kAll,
     [](Read read, From from, UI_Presentation& look) { look.horizontal = read.ReadSymbol(from, kAligns); }},
    {"vertical", kAll,
     [](Read read, From from, UI_Presentation& look) { look.vertical = read.ReadSymbol(from, kAligns); }},
    {"child_horizontal", kContainers,
     [](Read read, From from, UI_Presentation& look) {
       look.childHorizontal = read.ReadSymbol(from, kAligns);
     }},
    {"child_vertical", kContainers,
     [](Read read, From from, UI_Presentation& look) {
       look.childVertical = read.ReadSymbol(from, kAligns);
     }},
    {"placement", kContainers,
     [](Read read, From from, UI_Presentation& look) {
       look.placement = read.ReadSymbol(from, kPlacements);
     }},
    {"margin", kContainers,
     [](Read read, From from, UI_Presentation& look) { look.margin = read.ReadMargin(from); }},
    {"spacing", kContainers,
     [](Read read, From from, UI_Presentation& look) { look.spacing = read.ReadInteger(from); }},
    {"width", kAll, [](Read read, From from, UI_Presentation& look) { look.width = read.ReadInteger(from); }},
    {"height", kAll,
     [](Read read, From from, UI_Presentation& look) { look.height = read.ReadInteger(from); }},
    {"wants_focus", kControls | Of(UI_NodeKind::Panel),
     [](Read read, From from, UI_Presentation& look) { look.wantsFocus = read.ReadBool(from); }},
    {"font_size", Of(UI_NodeKind::StaticText),
     [](Read read, From from, UI_Presentation& look) { look.fontSize = read.ReadInteger(from); }},
    {"bold", Of(UI_NodeKind::StaticText),
     [](Read read, From from, UI_Presentation& look) { look.bold = read.ReadBool(from); }},
    {"characters", Of(UI_NodeKind::TextEdit),
     [](Read read, From from, UI_Presentation& look) { look.characters = read.ReadInteger(from); }},
    {"lines", Of(UI_NodeKind::TextEdit),
     [](Read read, From from, UI_Presentation& look) { look.lines = read.ReadInteger(from); }},
    {"multiline", Of(UI_NodeKind::TextEdit),
     [](Read read, From from, UI_Presentation& look) { look.multiline = read.ReadBool(from); }},
    {"scrollable", Of(UI_NodeKind::TextEdit),
     [](Read read, From from, UI_Presentation& look) { look.scrollable = read.ReadBool(from); }},
    {"digits", Of(UI_NodeKind::NumberEdit),
     [](Read read, From from, UI_Presentation& look) { look.digits = read.ReadInteger(from); }},
    {"display_disable", Of(UI_NodeKind::NumberEdit),
     [](Read read, From from, UI_Presentation& look) { look.displayDisable = read.ReadBool(from); }},
    {"popup_maximum_width_chars", Of(UI_NodeKind::Popup),
     [](Read read, From from, UI_Presentation& look) {
       look.popupMaximumWidthChars = read.ReadInteger(from);
     }},
    {"include_custom_item", Of(UI_NodeKind::Popup),
     [](Read read, From from, UI_Presentation& look) { look.includeCustomItem = read.ReadBool(from); }},
    {"button_theme", Of(UI_NodeKind::Button),
     [](Read read, From from, UI_Presentation& look) { look.buttonTheme = read.ReadReference(from); }},
};

}  // namespace

bool TzLayoutAttributes::Read(const TzSheetNode::Entry& attribute, TzLayoutNode& view) const {
  const AttributeReader reader(text, cells);
  const auto applies = [&](const auto& each) {
    return each.name == attribute.key && (each.kinds & Of(view.kind)) != 0;
  };
  if (const auto* found = std::ranges::find_if(kContentAttributes, applies);
      found != std::end(kContentAttributes)) {
    found->set(reader, attribute.value, view);
    return true;
  }
  const auto* found = std::ranges::find_if(kPresentationAttributes, applies);
  if (found == std::end(kPresentationAttributes)) return false;
  found->set(reader, attribute.value, view.presentation);
  return true;
}
