// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>

#include "host/qt/TzQtMirror.h"

/// Makes the mirror of a field of text, of a number, or of a popup, with its labels; null for another node.
std::unique_ptr<TzQtMirror> MakeTzField(kelpui::controls::UI_Node& node, QWidget* parent);
