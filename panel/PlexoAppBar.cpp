// SPDX-License-Identifier: Apache-2.0
#include "panel/PlexoAppBar.h"

#include <memory>

#include "core/PlexoCourseLoss.h"
#include "core/PlexoCourseModel.h"
#include "core/PlexoErrorBox.h"
#include "core/PlexoPublishStatus.h"
#include "host/session/TzMessageBox.h"
#include "host/session/TzSession.h"
#include "host/sheets/TzPaletteUtils.h"
#include "panel/PlexoPublishDialog.h"
#include "panel/PlexoSheetResources.h"
#include "panel/PlexoStrings.h"
#include "panel/PlexoView.h"
#include "resources/PlexoResources.h"

namespace {

constexpr int kPropertySheet = 111;
constexpr int kLayoutSheet = 112;

/// The bar of the process.
struct AppBar {
  std::unique_ptr<TzDataModel> sheet;
  TzCanvasPtr canvas;
};

AppBar& GetBar() {
  static auto* const bar = new AppBar;
  return *bar;
}

/// In spite of their names the cells hold whether the buttons are enabled.
void SetButtonDisabled(const TzString& cell, bool disabled) {
  TzDataModel* sheet = GetBar().sheet.get();
  if (sheet == nullptr) return;
  sheet->SetCellValue(cell, !disabled);
  sheet->Update();
}

int AskAboutUnpublishedChanges(const ITzStringDictionary& dictionary) {
  TzMessageBoxOptions options(dictionary.GetString("kPlexoPublishDialogTitle"),
                              dictionary.GetString("kPlexoPublishUnsavedChangesDialogCaption"));
  options.SetToUseDictionary(false);
  return TzShowYesNoCancelMessageBox(options);
}

/// False if the author wants to stay with the course, or has to.
bool MayLeaveCourse(const PlexoView& view, const ITzStringDictionary& dictionary) {
  const PlexoCourseModel& course = *GetCourseModel();
  if (course.GetIsDirty()) ClearDirtyIfNothingToLose();
  if (!course.GetIsDirty()) return true;
  const int answer = AskAboutUnpublishedChanges(dictionary);
  if (answer == kTzButtonCancel) return false;
  if (answer != kTzButtonYes) return true;
  if (view.CheckPublishStatus() != PlexoPublishStatus::READY) {
    ShowErrorBox(dictionary, "kPlexoWarnNotReadyForPublish");
    return false;
  }
  PlexoPublishDialog().DoModal();
  return true;
}

void StartNewCourse(PlexoView& view, const ITzStringDictionary& dictionary) {
  if (!MayLeaveCourse(view, dictionary)) return;
  PlexoCourseModel& course = *GetCourseModel();
  const bool wereDetailsEdited = course.GetManifestDetailsEdited();
  view.ReturnToTemplateChoice();
  if (!course.GetManifestDetailsEdited()) course.SetManifestDetailsEdited(wereDetailsEdited);
}

void PublishCourse(const PlexoView& view, const ITzStringDictionary& dictionary) {
  const PlexoPublishStatus status = view.CheckPublishStatus();
  if (status == PlexoPublishStatus::READY) {
    PlexoPublishDialog().DoModal();
  } else {
    ShowErrorBox(dictionary, GetPublishStatusKey(status));
  }
}

}  // namespace

void CreateAppBar() {
  // A sheet can be read only when its words are known, and the host may ask for the strings later.
  RegisterDefaultStrings();
  AppBar& bar = GetBar();
  ReleaseAppBar();
  bar.sheet = TzPaletteUtils::CreateAdamSheet(GetFileResource(GetPlexoResources(), kPropertySheet, "adm"));
  if (bar.sheet == nullptr) return;
  bar.canvas = TzPaletteUtils::CreateCanvas(GetFileResource(GetPlexoResources(), kLayoutSheet, "eve"),
                                            *bar.sheet, OnAppBarAction, LoadSheetResource);
}

void ReleaseAppBar() {
  AppBar& bar = GetBar();
  // Whoever else holds the canvas finds views that nothing moves any more.
  if (bar.canvas != nullptr) bar.canvas->Unbind();
  bar.canvas.reset();
  bar.sheet.reset();
}

void OnAppBarAction(const TzString& action, const TzVariant& /*value*/) {
  PlexoView* view = GetPlexoView(nullptr);
  const ITzStringDictionary* dictionary = GetStringDictionary();
  if (view == nullptr || dictionary == nullptr || GetCourseModel() == nullptr) return;
  if (action == "new") StartNewCourse(*view, *dictionary);
  if (action == "publish") PublishCourse(*view, *dictionary);
}

void SetNewButtonDisabled(bool disabled) { SetButtonDisabled("disableNewManifestButton", disabled); }

void SetPublishButtonDisabled(bool disabled) { SetButtonDisabled("disablePublishButton", disabled); }
