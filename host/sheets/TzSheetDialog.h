// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>

#include "host/sheets/TzDialog.h"
#include "host/sheets/TzSheet.h"

/// A dialog that is a pair of sheets. OK and Cancel close it, unless a derived class keeps their operations
/// from reaching the base.
class TzSheetDialog : public TzDialog, public TzSheetHandler {
 public:
  enum Type : int { kPlain = 0 };

  /// The title is a key of the dictionary where the last argument is true, and a text otherwise.
  TzSheetDialog(const TzRect& dialogBounds, const TzResourceInfo& library,
                const TzSheetResourceLoader& loader, int propertySheet, int layoutSheet, TzString dialogTitle,
                TzWindowHandle dialogOwner, int dialogType, bool titleIsKey);
  ~TzSheetDialog() override;

  int DoModal() override;
  bool OnOkButton(const TzVariant& value, TzSheet* sheet) override;
  bool OnCancelButton(const TzVariant& value, TzSheet* sheet) override;

  [[nodiscard]] TzSheet* GetSheet() const { return sheet.get(); }
  /// The window that the dialog's boxes belong to; null where windows aren't native.
  [[nodiscard]] TzWindowHandle GetWindow() const { return owner; }

 private:
  void Close(int result);

  TzRect bounds;
  TzString title;
  TzWindowHandle owner;
  std::unique_ptr<TzSheet> sheet;
};
