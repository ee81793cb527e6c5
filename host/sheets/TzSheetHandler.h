// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "host/session/TzWindow.h"
#include "host/text/TzVariant.h"

class TzSheet;

/// Hears what happens on a sheet. The order of the operations is part of the interface.
///
/// The results say whether the handler dealt with it. A button's value is that of the cell that it is bound
/// to, or nothing.
class TzSheetHandler {
 public:
  virtual ~TzSheetHandler();
  virtual bool OnOkButton(const TzVariant& value, TzSheet* sheet);
  virtual bool OnCancelButton(const TzVariant& value, TzSheet* sheet);
  /// Every button comes here first; the base hands the actions "ok" and "cancel" to their operations.
  virtual bool OnButton(const TzString& action, const TzVariant& value, TzSheet* sheet);
  /// A person changed a cell; the watchers have been called.
  virtual bool OnChange(const TzString& cell, const TzVariant& value, TzSheet* sheet);
  /// While true, the sheet's watchers aren't called for what changes.
  virtual bool IsBlockChangeMonitors();
  /// The sheet's canvas has this size.
  virtual void OnEveCanvasResize(const TzRect& size, TzSheet* sheet);
};
