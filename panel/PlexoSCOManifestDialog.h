// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "core/PlexoSCOManifest.h"
#include "host/sheets/TzSheetDialog.h"

/// The dialog that edits the details of one SCO's manifest: title, mastery score, time allowed, time limit
/// action and launch data. It works on a copy; callers fill it, run the dialog and take it if it was
/// accepted.
///
/// What is entered isn't checked: the limits of the number fields are the only ones.
class PlexoSCOManifestDialog : public TzSheetDialog {
 public:
  /// The title is a key of the dictionary.
  explicit PlexoSCOManifestDialog(const TzString& titleKey = "kPlexoSCOManifestDialogTitle");

  bool PostActivate() override;
  bool OnOkButton(const TzVariant& value, TzSheet* sheet) override;
  bool OnCancelButton(const TzVariant& value, TzSheet* sheet) override;

  // Between the items of the popup and what a manifest says in `adlcp:timelimitaction` (SCORM 1.2 content
  // aggregation). The labels that people read are other words, and aren't recognised. Without a dictionary
  // "" and 1, with `recognised` left as it was.
  static TzString TimeLimitActionText(std::int64_t index, bool& recognised);
  static int TimeLimitActionIndex(const TzString& text, bool& recognised);

  /// OK was pressed. False while the dialog is open.
  bool accepted = false;
  PlexoSCOManifest scoManifest;
};
