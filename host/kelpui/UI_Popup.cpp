// SPDX-License-Identifier: Apache-2.0
#include "host/kelpui/UI_Popup.h"

#include <algorithm>
#include <stdexcept>

namespace kelpui::controls {

void UI_Popup::SetItems(std::vector<UI_PopupItem> newItems) {
  if (items == newItems) return;
  items = std::move(newItems);
  NoteChange(UI_Change::State);
}

void UI_Popup::SetValue(const TzVariant& newValue) {
  if (value == newValue) return;
  value = newValue;
  NoteChange(UI_Change::State);
}

std::optional<std::size_t> UI_Popup::GetChosenIndex() const {
  const auto chosen = std::ranges::find(items, value, &UI_PopupItem::value);
  if (chosen == items.end()) return std::nullopt;
  return static_cast<std::size_t>(chosen - items.begin());
}

void UI_Popup::EnterIndex(std::size_t index) {
  if (index >= items.size()) throw std::logic_error("popup: it has no such item");
  if (!IsEnabled() || value == items[index].value) return;
  value = items[index].value;
  NoteEntered();
}

}  // namespace kelpui::controls
