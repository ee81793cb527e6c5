// SPDX-License-Identifier: Apache-2.0
#include "apps/author/CourseDetails.h"

#include "apps/author/ManifestDetails.h"
#include "host/sheets/TzDataModel.h"

namespace {

constexpr const char* kRemediationForce = "force_module_sequence_content_post";
constexpr const char* kRollupForce = "force_module_sequence_pre_content_post";

}  // namespace

CourseDetails::CourseDetails(const CourseScreen& courseScreen) : screen(&courseScreen) {}

void CourseDetails::Attach() {
  TzDataModel* cells = screen->GetCells();
  if (cells == nullptr || cells == attached) return;
  attached = cells;
  Watch(*cells, "course_title", &CourseDetails::TitleChanged);
  Watch(*cells, kRemediationForce, &CourseDetails::ForceChanged);
  Watch(*cells, kRollupForce, &CourseDetails::ForceChanged);
  Watch(*cells, "default_view", &CourseDetails::ViewChanged);
  Watch(*cells, "course_type_content_post", &CourseDetails::RemediationChanged);
}

void CourseDetails::Watch(TzDataModel& cells, const char* cell,
                          void (CourseDetails::*changed)(const TzVariant& value)) {
  cells.MonitorCellValue(cell, [weak = std::weak_ptr(self), changed](const TzVariant& value) {
    if (const auto alive = weak.lock()) ((*alive)->*changed)(value);
  });
}

void CourseDetails::TitleChanged(const TzVariant& value) {
  details.title = value.GetString().GetUTF8String();
}

void CourseDetails::ForceChanged(const TzVariant& value) {
  const auto courseTemplate = screen->GetTemplate();
  if (!courseTemplate) return;
  (courseTemplate == CourseTemplate::MultipleScos ? isListForced : areModulesForced) = value.GetBool();
}

void CourseDetails::ViewChanged(const TzVariant& isTemplateChoice) {
  if (!isTemplateChoice.GetBool()) return;
  details = {};
  isListForced = false;
  if (courseEnded) courseEnded();
}

// Gives the check box back before anybody sees it.
void CourseDetails::RemediationChanged(const TzVariant& isInForce) {
  if (!isInForce.GetBool() || !isBoxBorrowed) return;
  isBoxBorrowed = false;
  TzDataModel* cells = screen->GetCells();
  cells->SetCellValue(kRemediationForce, areModulesForced);
  cells->Update();
}

void CourseDetails::NoteConfirmed(const TzDataModel& dialog) {
  if (IsManifestDialog(dialog)) ReadManifestDetails(dialog, details);
}

void CourseDetails::FillIn(CourseDocument& course) const {
  course.scormVersion = details.scormVersion;
  course.identifier = details.identifier;
  course.title = details.title;
  course.description = details.description;
  course.version = details.version;
  course.duration = details.duration;
  course.subject = details.subject;
  course.forceSequence = IsForced();
}

bool CourseDetails::IsForced() const {
  return screen->GetTemplate() == CourseTemplate::MultipleScos ? isListForced : areModulesForced;
}

void CourseDetails::ForceSequence(bool forced) {
  const auto courseTemplate = screen->GetTemplate();
  if (!courseTemplate) return;
  TzDataModel& cells = *screen->GetCells();
  const bool isRollup = courseTemplate == CourseTemplate::TestRollup;
  const char* cell = isRollup ? kRollupForce : kRemediationForce;
  const bool isFlat = courseTemplate == CourseTemplate::MultipleScos;
  const bool isShownSo = isFlat || cells.GetCellValue(cell).GetBool() == forced;
  if (isShownSo && IsForced() == forced) return;
  // The panel hears of changes only, and what the cell shows needn't be what the course has.
  if (cells.GetCellValue(cell).GetBool() == forced) {
    cells.SetCellValue(cell, !forced);
    cells.Update();
  }
  cells.SetCellValue(cell, forced);
  cells.Update();
  if (isFlat) isBoxBorrowed = true;
}
