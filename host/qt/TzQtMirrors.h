// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <unordered_map>

#include "host/qt/TzQtMirror.h"

/// Keys of the dictionary for controls whose sheets give them no tooltip, by the controls' identifiers.
using TzQtTooltipKeys = std::map<TzString, TzString>;

/// The mirrors of one canvas by their nodes.
class TzQtMirrors {
 public:
  using Node = kelpui::controls::UI_Node;

  TzQtMirrors() = default;
  explicit TzQtMirrors(std::shared_ptr<const TzQtTooltipKeys> keysOfTooltips)
      : tooltipKeys(std::move(keysOfTooltips)) {}

  /// Null if the node has none: boxes of a layout, which nobody sees, and nodes that aren't on the canvas.
  [[nodiscard]] TzQtMirror* Find(const Node& node) const;

  /// Makes the mirrors that are missing for the nodes below this one, in the widget that shows it.
  void MakeBelow(Node& node, QWidget& widget);
  void DropBelow(const Node& node);
  /// Drops the mirrors of nodes that don't hang below this one any more.
  void DropStrays(const Node& root);

  [[nodiscard]] const std::unordered_map<const Node*, std::unique_ptr<TzQtMirror>>& GetAll() const {
    return mirrors;
  }

 private:
  [[nodiscard]] std::unique_ptr<TzQtMirror> Make(Node& node, QWidget& parent);
  /// Of a list, what is told for the place that it was put into.
  [[nodiscard]] TzString FindTooltip(const Node& node) const;

  std::shared_ptr<const TzQtTooltipKeys> tooltipKeys;
  std::unordered_map<const Node*, std::unique_ptr<TzQtMirror>> mirrors;
};

/// Whether the node is the other one or hangs below it.
bool IsTzNodeBelow(const kelpui::controls::UI_Node& node, const kelpui::controls::UI_Node& root);
