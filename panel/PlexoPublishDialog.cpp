// SPDX-License-Identifier: Apache-2.0
#include "panel/PlexoPublishDialog.h"

#include "core/PlexoCourseModel.h"
#include "core/PlexoErrorBox.h"
#include "core/PlexoModuleCourseModel.h"
#include "host/files/TzFileUtil.h"
#include "host/session/TzFileChooser.h"
#include "host/session/TzMessageBox.h"
#include "host/session/TzSession.h"
#include "intake/PlexoSharedPlayer.h"
#include "panel/PlexoSheetResources.h"
#include "panel/PlexoView.h"
#include "publish/PlexoPublisher.h"
#include "resources/PlexoResources.h"

namespace {

constexpr TzRect kBounds{300.0, 300.0, 1000.0, 1000.0};
constexpr int kPropertySheet = 115;
constexpr int kLayoutSheet = 116;

bool HasWrongWeightages() {
  const PlexoModuleCourseModel* modules = GetModuleCourseModel();
  return modules->GetCourseType() != PlexoCourseType::LINEAR && !modules->HasValidTotalWeightage();
}

/// The package's file name for what the author entered. Capitals count: "course.ZIP" becomes
/// "course.ZIP.zip".
TzString MakePackageName(const TzString& entered) {
  return TzFileUtil::GetExtensionAsWritten(TzPath(entered)) == "zip" ? entered : entered + ".zip";
}

TzMessageBoxOptions MakeWarning(const ITzStringDictionary& dictionary, const TzString& key,
                                TzWindowHandle owner) {
  TzMessageBoxOptions options(dictionary.GetString("kPlexoWarning"), dictionary.GetString(key), owner);
  options.SetToUseDictionary(false);
  return options;
}

/// Asks about everything that stands between the course and a package at this place, in the order in which
/// an author would meet it. False if the author has to change something first.
class TargetCheck {
 public:
  TargetCheck(const ITzStringDictionary& stringDictionary, TzWindowHandle boxOwner)
      : dictionary(stringDictionary), owner(boxOwner) {}

  [[nodiscard]] bool Check(const TzString& entered, const TzString& packageName,
                           const TzString& folder) const {
    if (entered.IsEmpty() || !TzFileUtil::IsValidFileName(packageName)) {
      return Refuse("kPlexoErrorPublishFileNameInvalid");
    }
    if (!TzFileUtil::IsValidPath(folder)) return Refuse("kPlexoErrorPublishFolderPathNameInvalid");
    const TzPath path(folder);
    return ProvideFolder(path) && MayReplace(path / packageName);
  }

 private:
  [[nodiscard]] bool ProvideFolder(const TzPath& folder) const {
    if (TzFile(folder).Exists()) return true;
    if (IsRefused("kPlexoWarningPublishFolderDoesntExist")) return false;
    return TzFileUtil::CreateDirectory(folder, true) || Refuse("kPlexoErrorFolderCreate");
  }

  [[nodiscard]] bool MayReplace(const TzPath& package) const {
    return !TzFile(package).Exists() || !IsRefused("kPlexoWarningPublishPromptForOverwrite");
  }

  [[nodiscard]] bool Refuse(const TzString& key) const {
    ShowErrorBox(dictionary, key, owner);
    return false;
  }

  [[nodiscard]] bool IsRefused(const TzString& key) const {
    return TzShowYesNoMessageBox(MakeWarning(dictionary, key, owner)) == kTzButtonNo;
  }

  const ITzStringDictionary& dictionary;
  TzWindowHandle owner;
};

}  // namespace

PlexoPublishDialog::PlexoPublishDialog()
    : TzSheetDialog(kBounds, GetPlexoResources(), LoadSheetResource, kPropertySheet, kLayoutSheet,
                    "kPlexoPublishDialogTitle", nullptr, kPlain, true) {}

bool PlexoPublishDialog::PostActivate() {
  TzSheet* cells = GetSheet();
  const PlexoCourseModel* course = GetCourseModel();
  if (cells == nullptr || course == nullptr) return false;
  cells->SetCellValue("publishFileName", course->GetPackageName(), true);
  cells->SetCellValue("publishFolder", course->GetPublishFolder().GetString(), true);
  cells->SetCellValue("isWindows", true, true);
  return true;
}

bool PlexoPublishDialog::OnButton(const TzString& action, const TzVariant& value, TzSheet* pressedSheet) {
  TzSheet* cells = GetSheet();
  const PlexoCourseModel* course = GetCourseModel();
  if (cells == nullptr || course == nullptr) return true;
  if (action != "browse") {
    TzSheetDialog::OnButton(action, value, pressedSheet);
    return true;
  }
  const ITzStringDictionary* dictionary = GetStringDictionary();
  const TzString question =
      dictionary != nullptr ? dictionary->GetString("kPlexoPublishDialogBrowse") : TzString();
  // From the folder of the last package, not from what the field shows.
  const TzString folder =
      TzFileChooserUtils::BrowseForFolders(question, nullptr, course->GetPublishFolder().GetString());
  if (!folder.IsEmpty()) cells->SetCellValue("publishFolder", folder, true);
  return true;
}

bool PlexoPublishDialog::OnOkButton(const TzVariant& value, TzSheet* pressedSheet) {
  const TzSheet* cells = GetSheet();
  PlexoCourseModel* course = GetCourseModel();
  if (cells == nullptr || course == nullptr) return false;
  const ITzStringDictionary* dictionary = GetStringDictionary();
  if (dictionary == nullptr) return true;
  if (GetPlexoView(nullptr) == nullptr) return false;
  if (HasWrongWeightages()) {
    ShowErrorBox(*dictionary, "kPlexoErrorWeightagesInvalid", GetWindow());
    return false;
  }
  const TzString entered = cells->GetString("publishFileName");
  const TzString folder = cells->GetString("publishFolder");
  const TzString packageName = MakePackageName(entered);
  if (!TargetCheck(*dictionary, GetWindow()).Check(entered, packageName, folder)) return true;
  course->SetPackageName(packageName);
  course->SetPublishFolder(TzPath(folder));
  PlexoPublisher* publisher = PlexoPublisher::GetPublisher();
  if (publisher == nullptr) return false;
  // The author may have taken out the last movie or document since its player came.
  PlexoSharedPlayer::RemoveUnusedPlayers();
  if (publisher->PublishPackage() == 0) {
    TzShowOkOnlyMessageBox(MakeWarning(*dictionary, "kPlexoPublishSuccess", GetWindow()));
  }
  return TzSheetDialog::OnOkButton(value, pressedSheet);
}
