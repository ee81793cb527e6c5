// SPDX-License-Identifier: Apache-2.0
#include "host/sheets/TzDialog.h"

#include "host/session/ITzUserInterface.h"
#include "host/session/TzSession.h"

TzDialog::~TzDialog() = default;

bool TzDialog::PreActivate() { return true; }
bool TzDialog::PostActivate() { return true; }
bool TzDialog::PreDeactivate() { return true; }

int TzDialog::Run(TzCanvas& canvas) {
  const TzCanvasPtr held(&canvas);
  PreActivate();
  PostActivate();
  const int result = canvas.RunModal();
  PreDeactivate();
  if (ITzUserInterface* ui = GetUserInterface(); ui != nullptr) ui->DialogClosed(canvas, result);
  return result;
}
