// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QLabel>
#include <QPointer>

#include "apps/desktop/DesktopSession.h"

/// Says on screens that are empty what to do there: how to start, below the template choice, and where to
/// drop files, in a flat list without any.
class CourseHints {
 public:
  CourseHints(DesktopWindow& programWindow, const DesktopSession& programSession)
      : window(programWindow), session(programSession) {}

  /// Shows what fits the screen. Cheap; to be called whenever something may have changed.
  void Refresh();

 private:
  void RefreshDropFiles(QWidget& dock);
  /// Made at first use.
  QLabel& GetDropFiles(QWidget& dock);

  DesktopWindow& window;
  const DesktopSession& session;
  QPointer<QLabel> dropFiles;
};
