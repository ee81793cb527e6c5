// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <vector>

#include "host/kelpui/UI_Control.h"
#include "host/text/TzVariant.h"

namespace kelpui::controls {

struct UI_PopupItem {
  TzString name;
  TzVariant value;

  bool operator==(const UI_PopupItem& other) const = default;
};

/// A list of which one item is chosen. The value may be one that no item has: then none shows as chosen.
class UI_Popup : public UI_Control {
 public:
  UI_Popup() : UI_Control(UI_NodeKind::Popup) {}

  [[nodiscard]] const std::vector<UI_PopupItem>& GetItems() const { return items; }
  void SetItems(std::vector<UI_PopupItem> newItems);
  [[nodiscard]] const TzVariant& GetValue() const { return value; }
  void SetValue(const TzVariant& newValue);
  /// The item that the value belongs to.
  [[nodiscard]] std::optional<std::size_t> GetChosenIndex() const;
  /// The person chose; an index past the items is a `std::logic_error`.
  void EnterIndex(std::size_t index);

 private:
  std::vector<UI_PopupItem> items;
  TzVariant value;
};

}  // namespace kelpui::controls
