// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

/// How a program is coloured.
enum class TzPalette { Light, Dark, System };

/// "light", "dark", in any case; anything else is the system's.
TzPalette ReadTzPalette(const QString& word);

/// Colours all that the program shows, from then on. The system's is the platform's own palette; where that
/// is light and the desktop asks for dark programs, the dark one.
void TzApplyPalette(TzPalette palette);
