// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>

#include "host/qt/TzQtMirror.h"

/// Makes the mirror of a button, check box, text, image, separator, group or sub-view; null for another node.
std::unique_ptr<TzQtMirror> MakeTzControl(kelpui::controls::UI_Node& node, QWidget* parent);
