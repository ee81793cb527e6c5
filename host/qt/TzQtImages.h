// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QIcon>
#include <QSize>

#include "host/kelpui/UI_Image.h"

/// The image with its twin for dense screens; without content if there is none or it can't be read.
QIcon MakeTzIcon(const kelpui::controls::UI_ImageData& image);

/// The size of the image in logical pixels; empty without content.
QSize GetTzIconSize(const QIcon& icon);
