// SPDX-License-Identifier: Apache-2.0
#include "host/sheets/TzSheet.h"

#include <stdexcept>

#include "host/session/ITzUserInterface.h"
#include "host/session/TzSession.h"

namespace {

const TzResource& RequireResource(const TzResourceInfo& library, int number, const char* type) {
  const TzResource* resource = GetFileResource(library, number, type);
  if (resource != nullptr) return *resource;
  throw std::logic_error("sheet " + std::to_string(number) + ": the library has no resource of this number");
}

}  // namespace

TzSheet::TzSheet(TzSheetHandler* sheetHandler, const TzResourceInfo& library,
                 TzSheetResourceLoader imageLoader, int propertySheet, int layoutSheet)
    : handler(sheetHandler),
      loader(std::move(imageLoader)),
      model(TzPropertySheet::Read(RequireResource(library, propertySheet, "adm"), GetStringDictionary())),
      layout(TzLayoutSheet::Read(RequireResource(library, layoutSheet, "eve"), model.GetSheet(),
                                 GetStringDictionary())) {
  if (handler == nullptr) return;
  model.SetMonitorBlock([this] { return handler->IsBlockChangeMonitors(); });
}

TzSheet::~TzSheet() { CloseCanvas(); }

TzCanvas* TzSheet::CreateDlgCanvasOnView(TzWindowHandle window) {
  return CreateCanvas({.place = TzCanvasSpec::Place::Window, .parent = window});
}

TzCanvas* TzSheet::CreateCanvas(const TzCanvasSpec& spec) {
  ITzUserInterface* ui = GetUserInterface();
  if (ui == nullptr) return nullptr;
  CloseCanvas();
  canvas = ui->CreateCanvas(spec);
  canvas->ShowSheet(
      layout, model,
      [this](const TzString& action, const TzVariant& value) {
        if (handler != nullptr) handler->OnButton(action, value, this);
      },
      loader);
  canvas->SetCellEntered([this](const TzString& cell, const TzVariant& value) {
    if (handler != nullptr) handler->OnChange(cell, value, this);
  });
  canvas->SetResized([this](const TzRect& size) {
    if (handler != nullptr) handler->OnEveCanvasResize(size, this);
  });
  return canvas.get();
}

void TzSheet::CloseCanvas() {
  if (canvas == nullptr) return;
  canvas->Unbind();
  canvas->SetResized(nullptr);
  canvas.reset();
}

void TzSheet::SetCellValue(const TzString& cell, const TzVariant& value, bool update) {
  model.SetCellValue(cell, value);
  if (update) model.Update();
}

TzVariant TzSheet::Read(const TzString& cell, TzVariant::Kind kind) const {
  TzVariant value = model.GetCellValue(cell);
  if (value.GetKind() == kind) return value;
  throw std::logic_error("cell '" + cell.GetUTF8String() + "': it holds " + GetKindWords(value.GetKind()) +
                         ", not " + GetKindWords(kind));
}

bool TzSheet::GetBool(const TzString& cell) const { return Read(cell, TzVariant::Kind::Bool).GetBool(); }

std::int64_t TzSheet::GetInteger(const TzString& cell) const {
  return Read(cell, TzVariant::Kind::Integer).GetInteger();
}

double TzSheet::GetDouble(const TzString& cell) const {
  return Read(cell, TzVariant::Kind::Double).GetDouble();
}

TzString TzSheet::GetString(const TzString& cell) const {
  return Read(cell, TzVariant::Kind::Text).GetString();
}
