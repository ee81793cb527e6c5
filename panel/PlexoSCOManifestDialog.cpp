// SPDX-License-Identifier: Apache-2.0
#include "panel/PlexoSCOManifestDialog.h"

#include <algorithm>
#include <iterator>

#include "core/PlexoCourseModel.h"
#include "host/session/TzSession.h"
#include "panel/PlexoDuration.h"
#include "panel/PlexoSheetResources.h"
#include "resources/PlexoResources.h"

namespace {

constexpr TzRect kBounds{300.0, 300.0, 1000.0, 1000.0};
constexpr int kPropertySheet = 117;
constexpr int kLayoutSheet = 118;

/// In the order of the popup's items.
constexpr const char* kTimeLimitActions[] = {"exit,message", "exit,no message", "continue,message",
                                             "continue,no message"};

}  // namespace

PlexoSCOManifestDialog::PlexoSCOManifestDialog(const TzString& titleKey)
    : TzSheetDialog(kBounds, GetPlexoResources(), LoadSheetResource, kPropertySheet, kLayoutSheet, titleKey,
                    nullptr, kPlain, true) {}

TzString PlexoSCOManifestDialog::TimeLimitActionText(std::int64_t index, bool& recognised) {
  if (GetStringDictionary() == nullptr) return {};
  recognised = index >= 0 && index < std::ssize(kTimeLimitActions);
  return recognised ? kTimeLimitActions[index] : TzString();
}

int PlexoSCOManifestDialog::TimeLimitActionIndex(const TzString& text, bool& recognised) {
  if (GetStringDictionary() == nullptr) return 1;
  const auto* found =
      std::ranges::find(kTimeLimitActions, text, [](const char* each) { return TzString(each); });
  recognised = found != std::end(kTimeLimitActions);
  return recognised ? static_cast<int>(found - std::begin(kTimeLimitActions)) : 0;
}

bool PlexoSCOManifestDialog::PostActivate() {
  TzSheet* cells = GetSheet();
  if (cells == nullptr) return false;
  accepted = false;
  cells->SetCellValue("scoTitle", scoManifest.title, true);
  cells->SetCellValue("enableSCOMasteryScore", scoManifest.hasMasteryScore, true);
  cells->SetCellValue("scoMasteryScore", std::int64_t{scoManifest.masteryScore.ToInteger()}, true);
  cells->SetCellValue("enableSCODuration", scoManifest.hasMaxTimeAllowed, true);
  const PlexoDuration duration = PlexoDuration::Parse(scoManifest.maxTimeAllowed);
  cells->SetCellValue("scoDurationHours", duration.hours, true);
  cells->SetCellValue("scoDurationMins", duration.minutes, true);
  cells->SetCellValue("scoDurationSecs", duration.seconds, true);
  bool recognised = false;
  const int action = TimeLimitActionIndex(scoManifest.timeLimitAction, recognised);
  if (recognised) cells->SetCellValue("scoTimeLimitAction", action, true);
  cells->SetCellValue("enableSCOTimeLimitAction", recognised && scoManifest.hasTimeLimitAction, true);
  cells->SetCellValue("scoLaunchData", scoManifest.dataFromLMS, true);
  cells->SetCellValue("enableSCOLaunchData", scoManifest.hasDataFromLMS, true);
  cells->SetCellValue("isWindows", true, true);
  return true;
}

bool PlexoSCOManifestDialog::OnOkButton(const TzVariant& value, TzSheet* pressedSheet) {
  const TzSheet* cells = GetSheet();
  if (cells == nullptr) return false;
  if (GetStringDictionary() == nullptr) return true;
  if (GetCourseModel() == nullptr) return false;
  scoManifest.title = cells->GetString("scoTitle");
  scoManifest.masteryScore =
      TzString::FromNumber(static_cast<std::uint64_t>(cells->GetInteger("scoMasteryScore")));
  const PlexoDuration duration{cells->GetInteger("scoDurationHours"), cells->GetInteger("scoDurationMins"),
                               cells->GetInteger("scoDurationSecs")};
  scoManifest.maxTimeAllowed = duration.Format();
  bool recognised = false;
  scoManifest.timeLimitAction = TimeLimitActionText(cells->GetInteger("scoTimeLimitAction"), recognised);
  scoManifest.dataFromLMS = cells->GetString("scoLaunchData");
  scoManifest.hasMasteryScore = cells->GetBool("enableSCOMasteryScore");
  scoManifest.hasMaxTimeAllowed = cells->GetBool("enableSCODuration");
  scoManifest.hasTimeLimitAction = cells->GetBool("enableSCOTimeLimitAction") && recognised;
  scoManifest.hasDataFromLMS = cells->GetBool("enableSCOLaunchData");
  accepted = true;
  return TzSheetDialog::OnOkButton(value, pressedSheet);
}

bool PlexoSCOManifestDialog::OnCancelButton(const TzVariant& value, TzSheet* pressedSheet) {
  accepted = false;
  return TzSheetDialog::OnCancelButton(value, pressedSheet);
}
