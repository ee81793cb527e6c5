// SPDX-License-Identifier: Apache-2.0
#include "core/PlexoErrorBox.h"

#include "host/session/TzMessageBox.h"

void ShowErrorBox(const ITzStringDictionary& dictionary, const TzString& key, TzWindowHandle owner) {
  TzMessageBoxOptions options(dictionary.GetString("kPlexoError"), dictionary.GetString(key), owner);
  options.SetToUseDictionary(false);
  TzShowOkOnlyMessageBox(options);
}
