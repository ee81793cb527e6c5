// SPDX-License-Identifier: Apache-2.0
#include "panel/PlexoTestHeaderRow.h"

using kelpui::controls::UI_StaticText;

void PlexoTestHeaderRow::CreateCellViews() {
  if (HasCellViews()) return;
  const auto cell = GetCellView(0);
  text = new UI_StaticText(label);
  addButton = new PlexoAddButton(tooltipKey, [this] { AddTest(); });
  cell->AddChild(text);
  cell->AddChild(addButton);
  KeepLaidOut(*cell, [this](TzReal width, TzReal height) {
    text->SetFrame({0.0, 0.0, 100.0, height});
    addButton->PlaceIn(width);
  });
}
