// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include "host/files/TzPath.h"

/// Where the program finds what it needs, and keeps what outlives a run.
struct DesktopPlaces {
  /// The component's library.
  TzPath component;
  /// The folder of the languages.
  TzPath translations;
  QString settingsFile;
  TzPath journals;

  /// The component and the languages lie beside the running program, whether it is installed or was just
  /// built; the rest is the person's. Needs a `QCoreApplication` with its names.
  static DesktopPlaces Installed();
};
