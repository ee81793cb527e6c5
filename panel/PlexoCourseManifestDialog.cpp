// SPDX-License-Identifier: Apache-2.0
#include "panel/PlexoCourseManifestDialog.h"

#include <optional>

#include "core/PlexoCourseModel.h"
#include "core/PlexoErrorBox.h"
#include "host/session/TzSession.h"
#include "panel/PlexoDuration.h"
#include "panel/PlexoSheetResources.h"
#include "panel/PlexoView.h"
#include "resources/PlexoResources.h"

namespace {

constexpr TzRect kBounds{300.0, 300.0, 1000.0, 1000.0};
constexpr int kPropertySheet = 113;
constexpr int kLayoutSheet = 114;

/// Values of the cell "SCORMVersion".
constexpr int kVersion12 = 0;
constexpr int kVersion2004 = 1;

bool IsLinear(const PlexoCourseModel& course) { return course.GetCourseType() == PlexoCourseType::LINEAR; }

/// What a manifest takes as an identifier, the blanks made underscores; none if another character is in it.
std::optional<TzString> MakeIdentifier(const TzString& entered) {
  std::u16string identifier = entered.GetUnits();
  for (char16_t& unit : identifier) {
    if (unit == u' ') unit = u'_';
    const bool isAllowed = (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z') ||
                           (unit >= u'0' && unit <= u'9') || unit == u'_';
    if (!isAllowed) return std::nullopt;
  }
  return TzString(identifier);
}

void StoreVersion(std::int64_t version, PlexoCourseModel& course) {
  const TzString text = version == kVersion2004 ? "2004" : "1.2";
  course.SetScormVersion(text);
  PlexoView* view = GetPlexoView(nullptr);
  const bool isKnown = version == kVersion12 || version == kVersion2004;
  if (isKnown && view != nullptr) view->SetScormVersionLabel(text);
}

/// Stores all but version and identifier. False, with the title alone stored, if there is no panel to show
/// the title.
bool StoreDetails(const TzSheet& sheet, PlexoCourseModel& course) {
  const TzString title = sheet.GetString("courseTitle");
  course.SetCourseTitle(title);
  if (!title.IsEmpty()) {
    PlexoView* view = GetPlexoView(nullptr);
    if (view == nullptr) return false;
    view->SetCourseNameHint(title);
  }
  course.SetCourseDescription(sheet.GetString("courseDescription"));
  course.SetCourseVersion(sheet.GetString("courseVersion"));
  const PlexoDuration duration{sheet.GetInteger("courseDurationHours"),
                               sheet.GetInteger("courseDurationMins"),
                               sheet.GetInteger("courseDurationSecs")};
  course.SetCourseDuration(duration.Format());
  course.SetCourseSubject(sheet.GetString("courseSubject"));
  course.SetEnableCourseVersion(sheet.GetBool("enableCourseVersion"));
  course.SetEnableCourseDuration(sheet.GetBool("enableCourseDuration"));
  course.SetEnableCourseSubject(sheet.GetBool("enableCourseSubject"));
  return true;
}

void ShowDetails(const PlexoCourseModel& course, TzSheet& sheet) {
  sheet.SetCellValue("courseIdentifier", course.GetCourseIdentifier(), false);
  sheet.SetCellValue("courseTitle", course.GetCourseTitle(), false);
  sheet.SetCellValue("courseDescription", course.GetCourseDescription(), false);
  sheet.SetCellValue("enableCourseVersion", course.GetEnableCourseVersion(), false);
  sheet.SetCellValue("courseVersion", course.GetCourseVersion(), false);
  sheet.SetCellValue("enableCourseDuration", course.GetEnableCourseDuration(), false);
  const PlexoDuration duration = PlexoDuration::Parse(course.GetCourseDuration());
  sheet.SetCellValue("courseDurationHours", duration.hours, false);
  sheet.SetCellValue("courseDurationMins", duration.minutes, false);
  sheet.SetCellValue("courseDurationSecs", duration.seconds, false);
  sheet.SetCellValue("enableCourseSubject", course.GetEnableCourseSubject(), false);
  sheet.SetCellValue("courseSubject", course.GetCourseSubject(), true);
  sheet.SetCellValue("isWindows", true, true);
}

}  // namespace

PlexoCourseManifestDialog::PlexoCourseManifestDialog()
    : TzSheetDialog(kBounds, GetPlexoResources(), LoadSheetResource, kPropertySheet, kLayoutSheet,
                    "kPlexoManifestDialogTitle", nullptr, kPlain, true) {}

bool PlexoCourseManifestDialog::PostActivate() {
  TzSheet* cells = GetSheet();
  const PlexoCourseModel* course = GetCourseModel();
  if (cells == nullptr || course == nullptr) return false;
  const int version = course->GetScormVersion() == "1.2" ? kVersion12 : kVersion2004;
  cells->SetCellValue("showOnlySCORM2004", !IsLinear(*course), false);
  if (version == kVersion12 && !IsLinear(*course)) {
    // The dialog stays up as far as it is filled: the author leaves it by Cancel, or starts anew with OK.
    if (const ITzStringDictionary* dictionary = GetStringDictionary(); dictionary != nullptr) {
      ShowErrorBox(*dictionary, "kPlexoErrorFeatureUnsupportedForVersion", GetWindow());
    }
    if (PlexoView* view = GetPlexoView(nullptr); view != nullptr) view->ReturnToTemplateChoice();
    return true;
  }
  cells->SetCellValue("SCORMVersion", version, false);
  ShowDetails(*course, *cells);
  return true;
}

bool PlexoCourseManifestDialog::OnOkButton(const TzVariant& value, TzSheet* pressedSheet) {
  const TzSheet* cells = GetSheet();
  PlexoCourseModel* course = GetCourseModel();
  if (cells == nullptr || course == nullptr) return false;
  const ITzStringDictionary* dictionary = GetStringDictionary();
  if (dictionary == nullptr) return true;
  const TzString entered = cells->GetString("courseIdentifier");
  const std::optional<TzString> identifier = MakeIdentifier(entered);
  if (entered.IsEmpty() || !identifier) {
    ShowErrorBox(
        *dictionary,
        entered.IsEmpty() ? "kPlexoErrorSCORMIdentifierNotEntered" : "kPlexoErrorSCORMIdentifierInvalid",
        GetWindow());
    return true;
  }
  // The course starts empty before its version is judged: a refused version leaves no files behind that
  // belong to another one.
  course->ResetManifestDetails();
  const std::int64_t version = cells->GetInteger("SCORMVersion");
  StoreVersion(version, *course);
  if (version != kVersion2004 && !IsLinear(*course)) {
    ShowErrorBox(*dictionary, "kPlexoErrorFeatureUnsupportedForVersion", GetWindow());
    return true;
  }
  course->SetCourseIdentifier(*identifier);
  course->SetPackageName(*identifier);
  if (!StoreDetails(*cells, *course)) return true;
  course->SetManifestDetailsEdited(true);
  return TzSheetDialog::OnOkButton(value, pressedSheet);
}

bool PlexoCourseManifestDialog::OnCancelButton(const TzVariant& value, TzSheet* pressedSheet) {
  PlexoView* view = GetPlexoView(nullptr);
  PlexoCourseModel* course = GetCourseModel();
  if (view == nullptr || course == nullptr) return false;
  view->ClearCourseViews();
  view->ReturnToTemplateChoice();
  course->SetScormVersion("2004");
  return TzSheetDialog::OnCancelButton(value, pressedSheet);
}
