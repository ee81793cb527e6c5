// SPDX-License-Identifier: Apache-2.0
#include "apps/author/CourseScreen.h"

#include <algorithm>

#include "host/kelpui/UI_Button.h"
#include "host/sheets/TzDataModel.h"

using kelpui::controls::UI_Button;
using kelpui::controls::UI_Node;
using kelpui::controls::UI_NodeKind;
using kelpui::controls::UI_NodePtr;

namespace {

struct TemplateNames {
  CourseTemplate courseTemplate;
  const char* action;
  const char* typeCell;
  const char* subview;
};

constexpr TemplateNames kTemplates[] = {
    {CourseTemplate::MultipleScos, "multiple_scos_action", "course_type_linear", "linear_course_view"},
    {CourseTemplate::SimpleRemediation, "simple_remediation", "course_type_content_post",
     "content_post_course_view"},
    {CourseTemplate::TestRollup, "test_rollup", "course_type_pre_content_post",
     "pre_content_post_course_view"},
};

const TemplateNames& NamesOf(CourseTemplate courseTemplate) {
  return *std::ranges::find(kTemplates, courseTemplate, &TemplateNames::courseTemplate);
}

bool IsPanel(const TzCanvas& canvas) {
  const TzDataModel* cells = canvas.GetDataModel();
  return cells != nullptr && cells->GetSheet().Find("default_view") != nullptr;
}

bool IsBar(const TzCanvas& canvas) {
  return canvas.GetSpec().place == TzCanvasSpec::Place::AppBar && canvas.GetDataModel() != nullptr;
}

template <typename Wanted>
TzCanvas* FindLast(const std::vector<TzCanvasPtr>& canvases, const Wanted& isWanted) {
  const auto found = std::find_if(canvases.rbegin(), canvases.rend(),
                                  [&](const TzCanvasPtr& each) { return isWanted(*each); });
  return found != canvases.rend() ? found->get() : nullptr;
}

UI_Button* FindButton(const UI_Node& node, const TzString& action) {  // NOLINT(misc-no-recursion)
  for (const UI_NodePtr& child : node.GetChildren()) {
    if (!child->IsVisible()) continue;
    const bool isMeant = child->GetKind() == UI_NodeKind::Button && child->GetIdentifier() == action;
    if (isMeant) return static_cast<UI_Button*>(child.get());
    if (UI_Button* below = FindButton(*child, action)) return below;
  }
  return nullptr;
}

}  // namespace

bool PressBelow(const UI_Node& node, const TzString& action) {
  UI_Button* button = FindButton(node, action);
  if (button == nullptr || !button->IsEnabled()) return false;
  const UI_NodePtr held(button);
  button->Press();
  return true;
}

void CourseScreen::NoteCanvas(const TzCanvasPtr& canvas) {
  if (canvas->GetSpec().place == TzCanvasSpec::Place::Dialog) return;
  // What the component has taken off its cells won't come back.
  const auto isOver = [](const TzCanvasPtr& each) { return each->GetDataModel() == nullptr; };
  std::erase_if(canvases, isOver);
  canvases.push_back(canvas);
}

TzCanvas* CourseScreen::GetPanel() const { return FindLast(canvases, IsPanel); }
TzCanvas* CourseScreen::GetBar() const { return FindLast(canvases, IsBar); }

TzDataModel* CourseScreen::GetCells() const {
  const TzCanvas* panel = GetPanel();
  return panel != nullptr ? panel->GetDataModel() : nullptr;
}

std::optional<CourseTemplate> CourseScreen::GetTemplate() const {
  const TzDataModel* cells = GetCells();
  if (cells == nullptr || cells->GetCellValue("default_view").GetBool()) return std::nullopt;
  for (const TemplateNames& each : kTemplates) {
    if (cells->GetCellValue(each.typeCell).GetBool()) return each.courseTemplate;
  }
  return std::nullopt;
}

CourseScreen::Tree* CourseScreen::GetTree() const {
  const auto courseTemplate = GetTemplate();
  if (!courseTemplate) return nullptr;
  const UI_NodePtr subview = GetPanel()->FindChildRecursive(NamesOf(*courseTemplate).subview);
  if (subview == nullptr) return nullptr;
  for (const UI_NodePtr& child : subview->GetChildren()) {
    if (auto* tree = dynamic_cast<Tree*>(child.get())) return tree;
  }
  return nullptr;
}

bool CourseScreen::Press(const TzString& action) const {
  for (TzCanvas* canvas : {GetPanel(), GetBar()}) {
    if (canvas != nullptr && PressBelow(*canvas, action)) return true;
  }
  return false;
}

TzString CourseScreen::GetChooseAction(CourseTemplate courseTemplate) {
  return NamesOf(courseTemplate).action;
}

TzString CourseScreen::GetTypeCell(CourseTemplate courseTemplate) { return NamesOf(courseTemplate).typeCell; }
