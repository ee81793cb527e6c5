// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "host/kelpui/UI_Node.h"

namespace kelpui::controls {

/// A container for what somebody else makes: a place of a layout sheet that a tree is put into, a cell of a
/// row.
class UI_SubView : public UI_Node {
 public:
  UI_SubView() : UI_Node(UI_NodeKind::SubView) {}
};

}  // namespace kelpui::controls
