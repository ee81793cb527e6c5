// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "host/sheets/TzSheetDialog.h"

/// The dialog in which the author fixes the course's SCORM version and details, between the choice of a
/// template and the work on the course. OK empties the course's working folder and stores the details; Cancel
/// throws the course away and returns the panel to the template choice, however the dialog was opened.
///
/// Everything goes through the course model and the panel: callers take no result.
class PlexoCourseManifestDialog : public TzSheetDialog {
 public:
  PlexoCourseManifestDialog();

  bool PostActivate() override;
  bool OnOkButton(const TzVariant& value, TzSheet* sheet) override;
  bool OnCancelButton(const TzVariant& value, TzSheet* sheet) override;
};
