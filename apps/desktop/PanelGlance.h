// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QRect>

#include "apps/author/CourseScreen.h"

// What of the panel the program refers to beside pressing its buttons.

/// Whether the panel or the bar shows a button of this action, and it is enabled.
bool CanPress(const CourseScreen& screen, const TzString& action);

/// Where the node is on its canvas.
QRect GetPlaceOnCanvas(const kelpui::controls::UI_Node& node);

/// The place of the flat course's list, with or without a list in it; null while another screen shows.
kelpui::controls::UI_NodePtr FindFlatList(const CourseScreen& screen);
