// SPDX-License-Identifier: Apache-2.0
#pragma once

class ITzStringDictionary;

/// Enters the default English text of every key that the desktop program uses beside the component's.
void RegisterDesktopWords(ITzStringDictionary& dictionary);
