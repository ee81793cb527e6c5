// SPDX-License-Identifier: Apache-2.0
#include "host/sheets/TzSheetDialog.h"

#include "host/session/TzSession.h"
#include "host/text/ITzStringDictionary.h"

TzSheetDialog::TzSheetDialog(const TzRect& dialogBounds, const TzResourceInfo& library,
                             const TzSheetResourceLoader& loader, int propertySheet, int layoutSheet,
                             TzString dialogTitle, TzWindowHandle dialogOwner, int /*dialogType*/,
                             bool titleIsKey)
    : bounds(dialogBounds),
      title(std::move(dialogTitle)),
      owner(dialogOwner),
      sheet(std::make_unique<TzSheet>(this, library, loader, propertySheet, layoutSheet)) {
  const ITzStringDictionary* dictionary = GetStringDictionary();
  if (titleIsKey && dictionary != nullptr) title = dictionary->GetString(title);
}

TzSheetDialog::~TzSheetDialog() = default;

int TzSheetDialog::DoModal() {
  TzCanvas* canvas = sheet->CreateCanvas(
      {.place = TzCanvasSpec::Place::Dialog, .parent = owner, .title = title, .bounds = bounds});
  if (canvas == nullptr) return kTzDialogCancel;
  const int result = Run(*canvas);
  sheet->CloseCanvas();
  return result;
}

bool TzSheetDialog::OnOkButton(const TzVariant& /*value*/, TzSheet* /*sheet*/) {
  Close(kTzDialogOk);
  return true;
}

bool TzSheetDialog::OnCancelButton(const TzVariant& /*value*/, TzSheet* /*sheet*/) {
  Close(kTzDialogCancel);
  return true;
}

void TzSheetDialog::Close(int result) {
  if (TzCanvas* canvas = sheet->GetCanvas(); canvas != nullptr) canvas->EndModal(result);
}
