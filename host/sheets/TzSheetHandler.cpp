// SPDX-License-Identifier: Apache-2.0
#include "host/sheets/TzSheetHandler.h"

TzSheetHandler::~TzSheetHandler() = default;

bool TzSheetHandler::OnOkButton(const TzVariant& /*value*/, TzSheet* /*sheet*/) { return false; }

bool TzSheetHandler::OnCancelButton(const TzVariant& /*value*/, TzSheet* /*sheet*/) { return false; }

bool TzSheetHandler::OnButton(const TzString& action, const TzVariant& value, TzSheet* sheet) {
  if (action == "ok") return OnOkButton(value, sheet);
  if (action == "cancel") return OnCancelButton(value, sheet);
  return false;
}

bool TzSheetHandler::OnChange(const TzString& /*cell*/, const TzVariant& /*value*/, TzSheet* /*sheet*/) {
  return false;
}

bool TzSheetHandler::IsBlockChangeMonitors() { return false; }

void TzSheetHandler::OnEveCanvasResize(const TzRect& /*size*/, TzSheet* /*sheet*/) {}
