// SPDX-License-Identifier: Apache-2.0
#include "host/qt/TzQtLayout.h"

#include <algorithm>
#include <array>
#include <optional>
#include <tuple>

using kelpui::controls::UI_Align;
using kelpui::controls::UI_NodeKind;
using kelpui::controls::UI_NodePtr;
using kelpui::controls::UI_Placement;
using kelpui::controls::UI_Presentation;

namespace {

using Node = kelpui::controls::UI_Node;

std::vector<Node*> GetShownChildren(const Node& box) {
  std::vector<Node*> shown;
  for (const UI_NodePtr& child : box.GetChildren()) {
    if (child->IsVisible()) shown.push_back(child.get());
  }
  return shown;
}

bool IsAtEnd(UI_Align align) { return align == UI_Align::Right || align == UI_Align::Bottom; }

/// Whether a leaf that is to fill the room beside its neighbours has a use for it.
bool TakesMoreWidth(UI_NodeKind kind) {
  return kind == UI_NodeKind::TextEdit || kind == UI_NodeKind::Popup || kind == UI_NodeKind::SubView ||
         kind == UI_NodeKind::Separator;
}

bool TakesMoreHeight(const Node& node) {
  return node.GetKind() == UI_NodeKind::SubView || node.GetKind() == UI_NodeKind::Button ||
         node.GetPresentation().multiline;
}

}  // namespace

bool TzQtLayout::IsBox(const Node& node) {
  switch (node.GetKind()) {
    case UI_NodeKind::Canvas:
    case UI_NodeKind::View:
    case UI_NodeKind::Palette:
    case UI_NodeKind::Panel:
    case UI_NodeKind::Row:
    case UI_NodeKind::Column:
    case UI_NodeKind::Group:
    case UI_NodeKind::Optional:
      return true;
    default:
      return false;
  }
}

TzQtLayout::Axis TzQtLayout::GetAxis(const Node& box) {
  const UI_Placement placement = box.GetPresentation().placement;
  if (placement == UI_Placement::Row) return Axis::Horizontal;
  if (placement == UI_Placement::Column) return Axis::Vertical;
  return box.GetKind() == UI_NodeKind::Row ? Axis::Horizontal : Axis::Vertical;
}

UI_Align TzQtLayout::GetAlign(const Node& child, Axis axis) {
  const bool isHorizontal = axis == Axis::Horizontal;
  const UI_Presentation& look = child.GetPresentation();
  const UI_Align own = isHorizontal ? look.horizontal : look.vertical;
  const Node* box = child.GetParent();
  if (own != UI_Align::None || box == nullptr) return own;
  // A canvas is filled by what it shows.
  if (box->GetKind() == UI_NodeKind::Canvas) return UI_Align::Fill;
  return isHorizontal ? box->GetPresentation().childHorizontal : box->GetPresentation().childVertical;
}

bool TzQtLayout::Fills(const Node& child, Axis axis) const {
  const UI_Align align = GetAlign(child, axis);
  if (align == UI_Align::None) {
    // Frames under each other end at one line.
    const bool isFrame = child.GetKind() == UI_NodeKind::Group && GetAxis(*child.GetParent()) != axis;
    return isFrame || needs.at(&child).Along(axis).wantsMore;
  }
  if (align != UI_Align::Fill) return false;
  if (IsBox(child) || child.GetKind() == UI_NodeKind::SubView) return true;
  const UI_Presentation& look = child.GetPresentation();
  const bool isFixed = axis == Axis::Horizontal ? look.width.has_value() : look.height.has_value();
  const Node& box = *child.GetParent();
  // Across the box there are no neighbours to take room from.
  if (GetAxis(box) != axis) return !isFixed;
  return !isFixed && (axis == Axis::Horizontal ? TakesMoreWidth(child.GetKind()) : TakesMoreHeight(child));
}

int TzQtLayout::GetSpacing(const Node& box) const {
  return box.GetPresentation().spacing.value_or(measures.GetSpacing());
}

QMargins TzQtLayout::GetMargins(const Node& box) const {
  const std::array<int, 4> own = box.GetPresentation().margin.value_or(std::array<int, 4>{});
  return measures.GetFrameMargins(box) + QMargins(own[1], own[0], own[3], own[2]);
}

TzQtRoom TzQtLayout::Measure(const Node& root) {
  needs.clear();
  const Needs& whole = MeasureNeeds(root);
  return {{whole.horizontal.minimum, whole.vertical.minimum},
          {whole.horizontal.preferred, whole.vertical.preferred}};
}

const TzQtLayout::Needs& TzQtLayout::MeasureNeeds(const Node& node) {  // NOLINT(misc-no-recursion)
  const Needs measured = IsBox(node) ? MeasureBox(node) : MeasureLeaf(node);
  return needs[&node] = measured;
}

TzQtLayout::Needs TzQtLayout::MeasureLeaf(const Node& node) const {
  const TzQtRoom room = measures.MeasureNode(node);
  const UI_Presentation& look = node.GetPresentation();
  // What a sheet tells was measured with one font; a larger one, or longer words, aren't cut off.
  const int width = std::max(look.width.value_or(room.preferred.width()), room.minimum.width());
  const int height = std::max(look.height.value_or(room.preferred.height()), room.minimum.height());
  return {{room.minimum.width(), width, false}, {room.minimum.height(), height, look.multiline}};
}

TzQtLayout::Needs TzQtLayout::MeasureBox(const Node& box) {  // NOLINT(misc-no-recursion)
  if (box.GetKind() == UI_NodeKind::Group) AlignLabels(box);
  const std::vector<Node*> children = GetShownChildren(box);
  Needs sum;
  Need& along = GetAxis(box) == Axis::Horizontal ? sum.horizontal : sum.vertical;
  for (const Node* child : children) {
    const Needs& one = MeasureNeeds(*child);
    for (const Axis axis : {Axis::Horizontal, Axis::Vertical}) {
      Need& total = axis == Axis::Horizontal ? sum.horizontal : sum.vertical;
      const Need& part = one.Along(axis);
      const bool adds = &total == &along;
      total.minimum = adds ? total.minimum + part.minimum : std::max(total.minimum, part.minimum);
      total.preferred = adds ? total.preferred + part.preferred : std::max(total.preferred, part.preferred);
      total.wantsMore = total.wantsMore || Fills(*child, axis);
    }
  }
  const int gaps = GetSpacing(box) * std::max(static_cast<int>(children.size()) - 1, 0);
  const QMargins margins = GetMargins(box);
  const UI_Presentation& look = box.GetPresentation();
  for (const auto& [need, around, told] : {std::tuple<Need&, int, std::optional<int>>{
                                               sum.horizontal, margins.left() + margins.right(), look.width},
                                           {sum.vertical, margins.top() + margins.bottom(), look.height}}) {
    const int fixed = around + (&need == &along ? gaps : 0);
    need.minimum += fixed;
    need.preferred = std::max(need.minimum, told.value_or(need.preferred + fixed));
  }
  return sum;
}

void TzQtLayout::AlignLabels(const Node& group) {
  struct Labelled {
    const Node* field;
    int start;
  };
  std::vector<Labelled> fields;
  for (Node* child : GetShownChildren(group)) {
    const bool isRow = IsBox(*child) && GetAxis(*child) == Axis::Horizontal;
    int start = isRow ? GetMargins(*child).left() : 0;
    for (const Node* each : isRow ? GetShownChildren(*child) : std::vector<Node*>{child}) {
      if (IsBox(*each)) break;
      if (measures.GetLabelWidth(*each) > 0) {
        fields.push_back({each, start});
        break;
      }
      start += MeasureLeaf(*each).horizontal.preferred + GetSpacing(*child);
    }
  }
  int textStart = 0;
  for (const Labelled& each : fields) textStart = std::max(textStart, each.start);
  const auto getIndent = [&](const Labelled& each) { return each.start > 0 ? textStart - each.start : 0; };
  int end = 0;
  for (const Labelled& each : fields) {
    end = std::max(end, each.start + getIndent(each) + measures.GetLabelWidth(*each.field));
  }
  for (const Labelled& each : fields) measures.SetLabelWidth(*each.field, end - each.start, getIndent(each));
}

void TzQtLayout::Place(Node& root, const QSize& size) {
  const TzRect& old = root.GetFrame();
  root.SetFrame({old.left, old.top, old.left + size.width(), old.top + size.height()});
  PlaceChildren(root);
}

void TzQtLayout::PlaceChildren(Node& box) {  // NOLINT(misc-no-recursion)
  const QRect all(0, 0, static_cast<int>(box.GetWidth()), static_cast<int>(box.GetHeight()));
  const QRect content = all.marginsRemoved(GetMargins(box));
  const Axis axis = GetAxis(box);
  const bool isRow = axis == Axis::Horizontal;
  std::vector<Node*> children = GetShownChildren(box);
  // What has come since it was measured waits for the next layout.
  std::erase_if(children, [this](const Node* child) { return !needs.contains(child); });
  const std::vector<Span> spans = Distribute(box, children, isRow ? content.width() : content.height());
  const std::vector<UI_NodePtr> held(children.begin(), children.end());
  for (std::size_t index = 0; index < held.size(); ++index) {
    const Span across = PlaceAcross(box, *held[index], isRow ? content.height() : content.width());
    const Span& horizontal = isRow ? spans[index] : across;
    const Span& vertical = isRow ? across : spans[index];
    const int x = direction == Qt::RightToLeft ? content.width() - horizontal.start - horizontal.length
                                               : horizontal.start;
    const TzReal left = content.left() + x;
    const TzReal top = content.top() + vertical.start;
    held[index]->SetFrame({left, top, left + horizontal.length, top + vertical.length});
    if (IsBox(*held[index])) PlaceChildren(*held[index]);
  }
}

void TzQtLayout::Shrink(const std::vector<Node*>& children, Axis axis, int missing,
                        std::vector<Span>& spans) const {
  while (missing > 0) {
    int yielding = 0;
    for (std::size_t index = 0; index < children.size(); ++index) {
      yielding += spans[index].length > needs.at(children[index]).Along(axis).minimum ? 1 : 0;
    }
    if (yielding == 0) return;
    const int share = (missing + yielding - 1) / yielding;
    for (std::size_t index = 0; index < children.size(); ++index) {
      const int slack = spans[index].length - needs.at(children[index]).Along(axis).minimum;
      const int give = std::clamp(slack, 0, std::min(share, missing));
      spans[index].length -= give;
      missing -= give;
    }
  }
}

std::vector<TzQtLayout::Span> TzQtLayout::Distribute(const Node& box, const std::vector<Node*>& children,
                                                     int available) const {
  const Axis axis = GetAxis(box);
  const int spacing = GetSpacing(box);
  std::vector<Span> spans;
  int free = available + spacing;
  int filling = 0;
  for (const Node* child : children) {
    spans.push_back({0, needs.at(child).Along(axis).preferred});
    free -= spans.back().length + spacing;
    filling += Fills(*child, axis) ? 1 : 0;
  }
  if (free < 0) Shrink(children, axis, -free, spans);
  for (std::size_t index = 0; index < children.size() && free > 0 && filling > 0; ++index) {
    if (!Fills(*children[index], axis)) continue;
    const int share = free / filling--;
    free -= share;
    spans[index].length += share;
  }
  int position = 0;
  for (std::size_t index = 0; index < children.size(); ++index) {
    const UI_Align align = GetAlign(*children[index], axis);
    if (free > 0 && (IsAtEnd(align) || align == UI_Align::Center)) {
      position += align == UI_Align::Center ? free / 2 : free;
      free = 0;
    }
    spans[index].start = position;
    position += spans[index].length + spacing;
  }
  return spans;
}

TzQtLayout::Span TzQtLayout::PlaceAcross(const Node& box, const Node& child, int available) const {
  const bool isRow = GetAxis(box) == Axis::Horizontal;
  const Axis across = isRow ? Axis::Vertical : Axis::Horizontal;
  const Need& need = needs.at(&child).Along(across);
  if (Fills(child, across)) return {0, std::max(available, need.minimum)};
  const int length = std::max(std::min(need.preferred, available), need.minimum);
  UI_Align align = GetAlign(child, across);
  const bool isPictured = child.GetKind() == UI_NodeKind::Image || child.GetKind() == UI_NodeKind::Button;
  if (align == UI_Align::None && (isRow || (box.GetKind() == UI_NodeKind::Column && isPictured))) {
    align = UI_Align::Center;
  }
  if (align == UI_Align::Center) return {(available - length) / 2, length};
  return {IsAtEnd(align) ? available - length : 0, length};
}
