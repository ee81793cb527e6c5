// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "host/sheets/TzCanvas.h"

/// How a dialog ended.
enum TzDialogResult : int { kTzDialogOk = 1, kTzDialogCancel = 2 };

/// A window that holds up everything else until it is answered.
class TzDialog {
 public:
  TzDialog() = default;
  virtual ~TzDialog();
  TzDialog(const TzDialog&) = delete;
  TzDialog& operator=(const TzDialog&) = delete;

  /// Shows the dialog and returns how it ended: a `TzDialogResult`. Cancel if there is nothing to show it on.
  virtual int DoModal() = 0;

  // Around the time that the dialog is up. The results aren't acted upon.
  virtual bool PreActivate();
  /// The dialog's views exist and show the defaults: the place to fill them.
  virtual bool PostActivate();
  virtual bool PreDeactivate();

 protected:
  /// Takes the canvas through its modal time.
  int Run(TzCanvas& canvas);
};
