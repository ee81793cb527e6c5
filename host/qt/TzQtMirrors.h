// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <memory>
#include <unordered_map>

#include "host/qt/TzQtMirror.h"

/// The mirrors of one canvas by their nodes.
class TzQtMirrors {
 public:
  using Node = kelpui::controls::UI_Node;

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

  std::unordered_map<const Node*, std::unique_ptr<TzQtMirror>> mirrors;
};

/// Whether the node is the other one or hangs below it.
bool IsTzNodeBelow(const kelpui::controls::UI_Node& node, const kelpui::controls::UI_Node& root);
