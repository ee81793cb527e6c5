// SPDX-License-Identifier: Apache-2.0
#include "panel/PlexoModuleBaseRow.h"

using kelpui::controls::UI_Node;
using kelpui::controls::UI_SubView;

void PlexoModuleBaseRow::KeepLaidOut(UI_SubView& cell, const LayOut& layOut) {
  layOut(cell.GetWidth(), cell.GetHeight());
  cell.InstallSizeChangedNotification(this,
                                      [layOut](UI_Node& node) { layOut(node.GetWidth(), node.GetHeight()); });
}
