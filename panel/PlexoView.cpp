// SPDX-License-Identifier: Apache-2.0
#include "panel/PlexoView.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <system_error>

#include "core/PlexoCourseModel.h"
#include "core/PlexoTreeId.h"
#include "host/kelpui/UI_NodeManager.h"
#include "host/session/ITzWindowSystem.h"
#include "host/session/TzMessageBox.h"
#include "host/session/TzSession.h"
#include "intake/PlexoAddFileDriver.h"
#include "panel/PlexoAppBar.h"
#include "panel/PlexoCourseManifestDialog.h"
#include "panel/PlexoSCORemoval.h"
#include "panel/PlexoSheetResources.h"
#include "panel/PlexoStrings.h"
#include "panel/PlexoStrobeCommands.h"
#include "resources/PlexoResources.h"

using kelpui::controls::UI_Node;
using kelpui::controls::UI_NodeManager;
using kelpui::controls::UI_NodePtr;

/// What a course type has on the panel's two screens.
struct PlexoView::Template {
  PlexoCourseType type;
  /// Of its button.
  const char* action;
  /// True while its screen shows.
  const char* cell;
  /// Of its list's place.
  const char* identifier;
  /// The least number of rows at which the delete button is on, whatever is selected: the last module of a
  /// course stays.
  std::size_t rowsToDelete;

  static const std::array<Template, 3> kAll;
};

/// In the order of `PlexoCourseType`.
const std::array<PlexoView::Template, 3> PlexoView::Template::kAll = {{
    {PlexoCourseType::PRE_CONTENT_POST, "test_rollup", "course_type_pre_content_post",
     "pre_content_post_course_view", 2},
    {PlexoCourseType::CONTENT_POST, "simple_remediation", "course_type_content_post",
     "content_post_course_view", 2},
    {PlexoCourseType::LINEAR, "multiple_scos_action", "course_type_linear", "linear_course_view", 1},
}};

namespace {

constexpr int kPropertySheet = 121;
constexpr int kLayoutSheet = 122;

/// The library's resources, and in the dictionary the words that its sheets name: a sheet refuses a key that
/// has no text.
TzResourceInfo GetResourcesWithWords() {
  RegisterDefaultStrings();
  return GetPlexoResources();
}

void MarkDirty() { GetCourseModel()->SetIsDirty(true); }

/// As C's format "%f" writes it, in any locale.
TzString FormatFraction(double fraction) {
  std::array<char, std::numeric_limits<double>::max_exponent10 + 16> text{};
  const auto [end, error] =
      std::to_chars(text.data(), text.data() + text.size(), fraction, std::chars_format::fixed, 6);
  return error == std::errc() ? TzString(std::string_view(text.data(), end)) : TzString();
}

}  // namespace

PlexoView::PlexoView(TzWindowHandle window)
    : parentWindow(window),
      sheet(std::make_unique<TzSheet>(this, GetResourcesWithWords(), LoadSheetResource, kPropertySheet,
                                      kLayoutSheet)) {
  sheet->CreateDlgCanvasOnView(parentWindow);
  WatchCells();
  timerId = UI_NodeManager::Get().GetUniqueTimerID();
}

PlexoView::~PlexoView() = default;

void PlexoView::WatchCells() {
  TzDataModel& cells = sheet->GetDataModel();
  cells.MonitorCellValue("course_title", [this](const TzVariant& title) {
    GetCourseModel()->SetCourseTitle(title.GetString());
    MarkDirty();
    SetPanelSize({});
  });
  for (const char* cell : {"force_module_sequence_content_post", "force_module_sequence_pre_content_post"}) {
    cells.MonitorCellValue(cell, [this](const TzVariant& forced) {
      SetForcedSequence(forced.GetBool());
      SetPanelSize({});
    });
  }
  cells.MonitorCellValue("default_view", [this](const TzVariant& isTemplateChoice) {
    SetNewButtonDisabled(isTemplateChoice.GetBool());
    SetPublishButtonDisabled(isTemplateChoice.GetBool());
    SetPanelSize({});
  });
}

bool PlexoView::OnButton(const TzString& action, const TzVariant& /*value*/, TzSheet* /*sheet*/) {
  for (const Template& each : Template::kAll) {
    if (action != each.action) continue;
    ChooseTemplate(each);
    return true;
  }
  static constexpr struct {
    const char* name;
    void (*run)(PlexoView& view);
  } kActions[] = {
      {"add_file", [](PlexoView& view) { view.AddFiles(); }},
      {"add_module", [](PlexoView& view) { view.AddModule(); }},
      {"move_up", [](PlexoView& view) { view.MoveSelection(true); }},
      {"move_down", [](PlexoView& view) { view.MoveSelection(false); }},
      {"delete", [](PlexoView& view) { view.DeleteSelection(); }},
  };
  for (const auto& [name, run] : kActions) {
    if (action != name) continue;
    run(*this);
    return true;
  }
  return false;
}

void PlexoView::ChooseTemplate(const Template& chosen) {
  StoreCourseType(chosen.type);
  OpenManifestDialogLater();
  sheet->SetCellValue("default_view", false, false);
  for (const Template& each : Template::kAll) {
    if (each.type != chosen.type) sheet->SetCellValue(each.cell, false, false);
  }
  sheet->SetCellValue(chosen.cell, true, true);
  SetPanelSize({});
  const UI_NodePtr place = FindPlace(chosen);
  if (place == nullptr) return;
  if (chosen.type == PlexoCourseType::LINEAR) {
    sheet->GetCanvas()->ClearSelection();
  } else {
    const bool hasPreTest = chosen.type == PlexoCourseType::PRE_CONTENT_POST;
    auto& view = hasPreTest ? preContentPostView : contentPostView;
    if (view == nullptr) {
      view = new PlexoPreContentPostCourseView(this, hasPreTest);
      Show(*view, *place);
    }
    AddModule();
  }
  place->InstallSizeChangedNotification(this, [this](UI_Node& node) {
    OnEveCanvasResize({0.0, 0.0, node.GetWidth(), node.GetHeight()}, sheet.get());
  });
}

void PlexoView::OpenManifestDialogLater() {
  TzCanvas* canvas = sheet->GetCanvas();
  if (canvas == nullptr) return;
  canvas->InstallTimerNotification(this, [this](UI_Node& node, std::uint32_t firedId) {
    if (firedId != timerId) return false;
    node.UI_RemoveTimer(firedId);
    ShowCourseManifestDialog();
    return true;
  });
  canvas->UI_InstallTimer(0.0, timerId);
}

void PlexoView::AddFiles() {
  const std::vector<TzString> names = PlexoAddFileDriver::AddFilesToLinearCourse(linearCourse);
  const UI_NodePtr place = FindPlace(Template::kAll[static_cast<std::size_t>(PlexoCourseType::LINEAR)]);
  if (place == nullptr) return;
  if (linearView == nullptr) {
    linearView = new PlexoLinearCourseView(this);
    Show(*linearView, *place);
  }
  for (const TzString& name : names) linearView->AddRow(name);
  linearView->ClearSelection();
}

void PlexoView::AddModule() {
  PlexoPreContentPostCourseView* view = GetCurrentModuleView();
  if (view == nullptr) return;
  view->AddModuleRow(TzString::FromNumber(GetNextTreeId()));
  view->ClearSelection();
  view->Invalidate();
}

void PlexoView::MoveSelection(bool up) {
  if (PlexoCourseTree* tree = GetCurrentTree(); tree != nullptr) tree->MoveSelection(up);
}

void PlexoView::DeleteSelection() {
  if (PlexoCourseTree* tree = GetCurrentTree(); tree != nullptr) tree->RemoveSelection();
}

const PlexoView::Template& PlexoView::GetCurrentTemplate() {
  return Template::kAll.at(static_cast<std::size_t>(GetCourseModel()->GetCourseType()));
}

UI_NodePtr PlexoView::FindPlace(const Template& ofTemplate) const {
  const TzCanvas* canvas = sheet->GetCanvas();
  return canvas != nullptr ? canvas->FindChildRecursive(ofTemplate.identifier) : nullptr;
}

void PlexoView::Show(PlexoCourseTree& tree, UI_Node& place) {
  place.AddChild(&tree);
  tree.SetFrame({0.0, 0.0, place.GetWidth(), place.GetHeight()});
  tree.SetVisible(true);
}

PlexoCourseTree* PlexoView::GetCurrentTree() const {
  if (GetCourseModel()->GetCourseType() == PlexoCourseType::LINEAR) return linearView.get();
  return GetCurrentModuleView();
}

PlexoPreContentPostCourseView* PlexoView::GetCurrentModuleView() const {
  switch (GetCourseModel()->GetCourseType()) {
    case PlexoCourseType::PRE_CONTENT_POST:
      return preContentPostView.get();
    case PlexoCourseType::CONTENT_POST:
      return contentPostView.get();
    case PlexoCourseType::LINEAR:
      break;
  }
  return nullptr;
}

void PlexoView::OnEveCanvasResize(const TzRect& size, TzSheet* /*sheet*/) {
  PlexoCourseTree* tree = GetCurrentTree();
  const UI_NodePtr place = FindPlace(GetCurrentTemplate());
  if (tree == nullptr || place == nullptr) return;
  // The size may be the whole canvas's, of which the list has a part.
  tree->SetFrame({0.0, 0.0, std::min(size.right - size.left, place->GetWidth()),
                  std::min(size.bottom - size.top, place->GetHeight())});
}

void PlexoView::ResizePanel(TzReal width, TzReal height) {
  PlexoView* view = GetPlexoView(nullptr);
  if (view != nullptr) view->SetPanelSize({0.0, 0.0, width, height});
}

void PlexoView::SetPanelSize(const TzRect& /*size*/) {
  ITzWindowSystem* windows = GetWindowSystem();
  TzCanvas* canvas = sheet->GetCanvas();
  if (windows != nullptr && canvas != nullptr) canvas->SetSize(windows->GetClientRect(parentWindow));
}

void PlexoView::ReturnToTemplateChoice() {
  GetCourseModel()->SetScormVersion("2004");
  GetCourseModel()->SetIsDirty(false);
  if (linearView != nullptr) linearView->RemoveAllRows();
  if (preContentPostView != nullptr) preContentPostView->RemoveAllRows();
  if (contentPostView != nullptr) contentPostView->RemoveAllRows();
  ClearModel();
  sheet->SetCellValue("default_view", true, false);
  sheet->SetCellValue("course_type_linear", false, false);
  sheet->SetCellValue("course_type_content_post", false, false);
  sheet->SetCellValue("course_type_pre_content_post", false, true);
  SetPanelSize({});
}

void PlexoView::ClearCourseViews() {
  ClearModel();
  SetPanelSize({});
}

void PlexoView::ClearModel() {
  if (GetCourseModel()->GetCourseType() == PlexoCourseType::LINEAR) {
    GetLinearCourseModel()->Clear();
  } else {
    GetModuleCourseModel()->Clear();
  }
}

void PlexoView::SetScormVersionLabel(const TzString& version) {
  sheet->SetCellValue("scorm_version", version, true);
}

void PlexoView::ShowErrorBox(const TzString& title, const TzString& text) {
  TzMessageBoxOptions options(title, text);
  options.SetToUseDictionary(false);
  TzShowOkOnlyMessageBox(options);
}

void PlexoView::ShowCourseManifestDialog() { PlexoCourseManifestDialog().DoModal(); }

bool PlexoView::HandleStrobeCall(const TzFPFunctionArgumentList& call, TzString& reply) {
  PlexoStrobeCommands::Run(*this, call, reply);
  return true;
}

PlexoModuleCourseModel& PlexoView::GetModules() const {
  return moduleCourse != nullptr ? *moduleCourse : *GetModuleCourseModel();
}

void PlexoView::StoreCourseType(PlexoCourseType type) {
  GetCourseModel()->SetCourseType(type);
  GetModules().SetCourseType(type);
  if (type == PlexoCourseType::LINEAR) linearCourse = GetLinearCourseModel();
}

void PlexoView::SetForcedSequence(bool forced) {
  if (GetCourseModel()->GetCourseType() == PlexoCourseType::LINEAR) {
    GetLinearCourseModel()->SetForcedSequence(forced);
  } else {
    GetModules().SetModuleForcedSequence(forced);
  }
  MarkDirty();
}

void PlexoView::SwapModules(int first, int second) {
  MarkDirty();
  const auto last = static_cast<std::int64_t>(GetModules().CountOrderedModules()) - 1;
  if (std::min(first, second) < 0 || std::max(first, second) > last) return;
  GetModules().SwapModules(static_cast<std::size_t>(first), static_cast<std::size_t>(second));
}

void PlexoView::UpdateSelectionCells() {
  const PlexoCourseTree* tree = GetCurrentTree();
  const std::size_t rows = tree != nullptr ? tree->CountRows() : 0;
  const std::vector<int> selected = tree != nullptr ? tree->GetSelectedIndices() : std::vector<int>();
  const bool isOne = selected.size() == 1;
  sheet->SetCellValue("enable_delete", rows >= GetCurrentTemplate().rowsToDelete, false);
  sheet->SetCellValue("enable_move_up", isOne && selected.front() > 0, false);
  sheet->SetCellValue("enable_move_down", isOne && static_cast<std::size_t>(selected.front()) + 1 < rows,
                      true);
}

TzString PlexoView::JoinNames(const std::vector<TzString>& names) {
  TzString joined;
  for (const TzString& name : names) {
    if (&name != &names.front()) joined.AppendUTF8(",");
    joined += name;
  }
  return joined;
}

void PlexoView::OnModuleAdded(const TzString& key, const TzString& title) {
  GetModules().AddModule(key, title);
  MarkDirty();
}

void PlexoView::OnAddPreTest(const TzString& key) {
  if (GetCourseModel()->GetCourseType() != PlexoCourseType::PRE_CONTENT_POST) return;
  const std::vector<TzString> names = PlexoAddFileDriver::AddFilesToModule(key, PlexoSCOKind::PRE_TEST);
  if (names.empty()) return;
  if (preContentPostView != nullptr) preContentPostView->SetPreTestName(key, names.front());
  MarkDirty();
}

void PlexoView::OnAddPostTest(const TzString& key) {
  const std::vector<TzString> names = PlexoAddFileDriver::AddFilesToModule(key, PlexoSCOKind::POST_TEST);
  if (names.empty()) return;
  if (auto* view = GetCurrentModuleView(); view != nullptr) view->SetPostTestName(key, names.front());
  MarkDirty();
}

void PlexoView::OnAddContent(const TzString& key) {
  const std::vector<TzString> names = PlexoAddFileDriver::AddFilesToModule(key, PlexoSCOKind::CONTENT);
  if (names.empty()) return;
  if (auto* view = GetCurrentModuleView(); view != nullptr) view->SetContentName(key, JoinNames(names));
  MarkDirty();
}

void PlexoView::OnModuleRemoved(const TzString& key) { PlexoSCORemoval::RemoveModule(GetModules(), key); }

void PlexoView::OnModuleTitleChanged(const TzString& key, const TzString& title) {
  GetModules().SetModuleTitle(key, title);
  MarkDirty();
}

// Alone among the edits this leaves the dirty mark as it is.
void PlexoView::OnWeightageChanged(const TzString& key, double fraction) {
  GetModules().SetWeightage(key, FormatFraction(fraction));
}

void PlexoView::OnContentForcedSequenceChanged(const TzString& key, bool forced) {
  GetModules().SetContentForcedSequence(key, forced);
  MarkDirty();
}

void PlexoView::OnLinearSCOsSwapped(std::int32_t from, std::int32_t to) {
  GetLinearCourseModel()->SwapSCOs(from, to);
  MarkDirty();
}

void PlexoView::OnLinearSCOsRemoved(const std::vector<int>& indices) {
  PlexoSCORemoval::RemoveLinearSCOs(*GetLinearCourseModel(), indices);
}

PlexoView* GetPlexoView(TzWindowHandle parentWindow) {
  static PlexoView* view = nullptr;
  if (view == nullptr && parentWindow != nullptr) view = new PlexoView(parentWindow);
  return view;
}
