// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "host/sheets/TzSheetDialog.h"

/// The dialog that names the package's file and folder, checks both, publishes the course and says that it
/// worked. The publisher reports its own failures.
///
/// Name and folder are stored in the course only when every check has passed.
class PlexoPublishDialog : public TzSheetDialog {
 public:
  PlexoPublishDialog();

  bool PostActivate() override;
  bool OnOkButton(const TzVariant& value, TzSheet* sheet) override;
  bool OnButton(const TzString& action, const TzVariant& value, TzSheet* sheet) override;
};
