// SPDX-License-Identifier: Apache-2.0
#include "panel/PlexoContentHeaderRow.h"

#include "host/session/TzSession.h"
#include "host/text/ITzStringDictionary.h"

using kelpui::controls::UI_Checkbox;
using kelpui::controls::UI_StaticText;

void PlexoContentHeaderRow::CreateCellViews() {
  if (HasCellViews()) return;
  const auto cell = GetCellView(0);
  text = new UI_StaticText("Content");
  forcedSequence = new UI_Checkbox("Force Content Sequence");
  if (const ITzStringDictionary* dictionary = GetStringDictionary(); dictionary != nullptr) {
    forcedSequence->SetTooltip(dictionary->GetString("kPlexoUIContentForceSequenceToolTip"));
  }
  forcedSequence->InstallChangeNotification([this] { ForcedSequenceEntered(); });
  addButton =
      new PlexoAddButton("kPlexoUIAddContentTooltip", [this] { GetHandler().OnAddContent(GetModuleKey()); });
  cell->AddChild(text);
  cell->AddChild(forcedSequence);
  cell->AddChild(addButton);
  KeepLaidOut(*cell, [this](TzReal width, TzReal height) {
    text->SetFrame({0.0, 0.0, 100.0, height});
    forcedSequence->SetFrame({width / 2.0, 2.0, width / 2.0 + 145.0, 2.0 + height});
    addButton->PlaceIn(width);
  });
}

void PlexoContentHeaderRow::ForcedSequenceEntered() {
  GetHandler().OnContentForcedSequenceChanged(GetModuleKey(), forcedSequence->GetValue() == 1);
}
