// SPDX-License-Identifier: Apache-2.0
#include "apps/desktop/PanelGlance.h"

#include <algorithm>

using kelpui::controls::UI_Node;
using kelpui::controls::UI_NodeKind;
using kelpui::controls::UI_NodePtr;

namespace {

bool HasPressable(const UI_Node& node, const TzString& action) {  // NOLINT(misc-no-recursion)
  return std::ranges::any_of(node.GetChildren(), [&](const UI_NodePtr& child) {
    if (!child->IsVisible()) return false;
    const bool isMeant = child->GetKind() == UI_NodeKind::Button && child->GetIdentifier() == action;
    return (isMeant && child->IsEnabled()) || HasPressable(*child, action);
  });
}

}  // namespace

bool CanPress(const CourseScreen& screen, const TzString& action) {
  const TzCanvas* panel = screen.GetPanel();
  const TzCanvas* bar = screen.GetBar();
  return (panel != nullptr && HasPressable(*panel, action)) || (bar != nullptr && HasPressable(*bar, action));
}

QRect GetPlaceOnCanvas(const UI_Node& node) {
  TzReal left = node.GetFrame().left;
  TzReal top = node.GetFrame().top;
  const UI_Node* above = node.GetParent();
  for (; above != nullptr && above->GetKind() != UI_NodeKind::Canvas; above = above->GetParent()) {
    left += above->GetFrame().left;
    top += above->GetFrame().top;
  }
  return {static_cast<int>(left), static_cast<int>(top), static_cast<int>(node.GetWidth()),
          static_cast<int>(node.GetHeight())};
}

UI_NodePtr FindFlatList(const CourseScreen& screen) {
  if (screen.GetTemplate() != CourseTemplate::MultipleScos) return nullptr;
  return screen.GetPanel()->FindChildRecursive("linear_course_view");
}
