// SPDX-License-Identifier: Apache-2.0
#include "panel/PlexoModuleViewRow.h"

#include "host/session/TzSession.h"
#include "host/text/ITzStringDictionary.h"

using kelpui::controls::UI_NumberData;
using kelpui::controls::UI_NumberEdit;
using kelpui::controls::UI_StaticText;
using kelpui::controls::UI_TextEdit;

namespace {

constexpr UI_NumberData kPercent{.minimum = 0.0, .maximum = 100.0, .decimalPlaces = 0};
/// The share that a module of the model starts with.
constexpr double kWholeCourse = 100.0;

TzString NextDefaultTitle() {
  static std::uint64_t last = 0;
  return TzString("Module_") + TzString::FromNumber(++last);
}

}  // namespace

PlexoModuleViewRow::PlexoModuleViewRow(std::shared_ptr<const TzString> key,
                                       IPlexoPreContentPostCourseHandler* courseHandler)
    : PlexoModuleBaseRow(std::move(key), courseHandler), title(NextDefaultTitle()) {}

void PlexoModuleViewRow::CreateCellViews() {
  if (HasCellViews()) return;
  const auto cell = GetCellView(0);
  titleEdit = new UI_TextEdit;
  titleEdit->SetText(title);
  if (const ITzStringDictionary* dictionary = GetStringDictionary(); dictionary != nullptr) {
    titleEdit->SetTooltip(dictionary->GetString("kTzPlexoEditModuleName"));
  }
  titleEdit->InstallChangeNotification([this] { TitleEntered(); });
  weightageText = new UI_StaticText("Weightage:");
  weightageEdit = new UI_NumberEdit(kPercent);
  weightageEdit->SetValue(kWholeCourse);
  weightageEdit->SetInlineUnit("%");
  weightageEdit->InstallChangeNotification([this] { WeightageEntered(); });
  cell->AddChild(titleEdit);
  cell->AddChild(weightageText);
  cell->AddChild(weightageEdit);
  KeepLaidOut(*cell, [this](TzReal width, TzReal height) {
    titleEdit->SetFrame({0.0, 0.0, 100.0, height});
    weightageText->SetFrame({width - 120.0, 0.0, width - 20.0, height});
    weightageEdit->SetFrame({width - 60.0, 0.0, width - 10.0, height});
  });
}

void PlexoModuleViewRow::TitleEntered() {
  title = titleEdit->GetText();
  GetHandler().OnModuleTitleChanged(GetModuleKey(), title);
}

void PlexoModuleViewRow::WeightageEntered() {
  GetHandler().OnWeightageChanged(GetModuleKey(), weightageEdit->GetValue() / 100.0);
}
