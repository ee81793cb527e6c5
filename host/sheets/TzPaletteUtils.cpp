// SPDX-License-Identifier: Apache-2.0
#include "host/sheets/TzPaletteUtils.h"

#include "host/session/ITzUserInterface.h"
#include "host/session/TzSession.h"

std::unique_ptr<TzDataModel> TzPaletteUtils::CreateAdamSheet(const TzResource* propertySheet) {
  if (propertySheet == nullptr) return nullptr;
  return std::make_unique<TzDataModel>(TzPropertySheet::Read(*propertySheet, GetStringDictionary()));
}

TzCanvasPtr TzPaletteUtils::CreateCanvas(const TzResource* layoutSheet, TzDataModel& model,
                                         const TzActionCallback& action,
                                         const TzSheetResourceLoader& loader) {
  ITzUserInterface* ui = GetUserInterface();
  if (layoutSheet == nullptr || ui == nullptr) return nullptr;
  TzCanvasPtr canvas = ui->CreateCanvas({.place = TzCanvasSpec::Place::AppBar});
  canvas->ShowSheet(TzLayoutSheet::Read(*layoutSheet, model.GetSheet(), GetStringDictionary()), model, action,
                    loader);
  return canvas;
}
