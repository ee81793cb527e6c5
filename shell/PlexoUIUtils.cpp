// SPDX-License-Identifier: Apache-2.0
#include "shell/PlexoUIUtils.h"

#include <new>

#include "core/PlexoCourseLoss.h"
#include "core/PlexoCourseModel.h"
#include "host/session/TzMessageBox.h"
#include "host/session/TzSession.h"
#include "host/text/ITzStringDictionary.h"

TzString PlexoUIUtils::m_LangID;
PlexoUIUtils* PlexoUIUtils::m_PlexoUIUtils = nullptr;

// Written out of line, as all of these: the library exports them as they stand.
PlexoUIUtils::PlexoUIUtils() = default;
PlexoUIUtils::~PlexoUIUtils() = default;

PlexoUIUtils& PlexoUIUtils::operator=(const PlexoUIUtils& /*other*/) { return *this; }  // NOLINT

PlexoUIUtils* PlexoUIUtils::GetPlexoUIUtils() {
  if (m_PlexoUIUtils == nullptr) m_PlexoUIUtils = new (std::nothrow) PlexoUIUtils;
  return m_PlexoUIUtils;
}

TzString PlexoUIUtils::GetLangId() { return m_LangID; }

void PlexoUIUtils::SetLangId(const TzString& langId) { m_LangID = langId; }

bool PlexoUIUtils::ContinueProjectClosure() {
  const PlexoCourseModel* course = GetCourseModel();
  if (course == nullptr) return false;
  if (course->GetIsDirty()) ClearDirtyIfNothingToLose();
  if (!course->GetIsDirty()) return true;
  const ITzStringDictionary* dictionary = GetStringDictionary();
  if (dictionary == nullptr) return false;
  TzMessageBoxOptions options(dictionary->GetString("kPlexoWarning"),
                              dictionary->GetString("kPlexoExitWithUnsavedChangesDialogCaption"));
  options.SetToUseDictionary(false);
  return TzShowYesNoMessageBox(options) == kTzButtonYes;
}
