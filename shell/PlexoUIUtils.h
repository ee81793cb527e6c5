// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "host/text/TzString.h"
#include "shell/PlexoExports.h"

/// What the host asks of the library beside the component. One instance, made on first use and never
/// destroyed.
class PLEXO_EXPORT PlexoUIUtils {
 public:
  static PlexoUIUtils* GetPlexoUIUtils();

  /// The language that the host has set; empty until then. Kept for the host: nothing here depends on it.
  static TzString GetLangId();
  static void SetLangId(const TzString& langId);

  /// True if the project may be closed: its course holds no unpublished work, or the author said Yes to a
  /// box. Yes closes without publishing; No keeps the course, so that the author can publish it. False too
  /// where nobody could be asked.
  static bool ContinueProjectClosure();

  /// There is nothing to copy.
  PlexoUIUtils& operator=(const PlexoUIUtils& other);

  static TzString m_LangID;
  static PlexoUIUtils* m_PlexoUIUtils;

 private:
  PlexoUIUtils();
  ~PlexoUIUtils();
};
