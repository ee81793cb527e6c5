// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "host/session/TzWindow.h"
#include "host/text/ITzStringDictionary.h"

/// Shows a box with an OK button, titled with the dictionary's "kPlexoError", that says the text of the key.
void ShowErrorBox(const ITzStringDictionary& dictionary, const TzString& key, TzWindowHandle owner = nullptr);
