// SPDX-License-Identifier: Apache-2.0
#include "apps/desktop/DesktopPlaces.h"

#include <QSettings>
#include <QStandardPaths>

#include "host/files/TzFileUtil.h"
#include "host/qt/TzQtText.h"

DesktopPlaces DesktopPlaces::Installed() {
  const TzPath folder = TzFileUtil::GetCurrentExecutablePath().GetParentTzPath();
  const QString data = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
  return {.component = folder / "libplexo.so",
          .translations = folder / "translations",
          .settingsFile = QSettings().fileName(),
          .journals = TzPath(FromQtText(data)) / "journals"};
}
