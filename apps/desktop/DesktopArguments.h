// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QStringList>

/// What the command line asks for.
struct DesktopArguments {
  /// A course file to open; empty for none.
  QString course;
  /// For this run, in place of the settings'; empty where it isn't given.
  QString language;
  QString palette;

  bool wantsHelp = false;
  bool wantsVersion = false;
  /// What is wrong with the command line; empty if nothing is.
  QString problem;

  /// Of all words of the command line, the program's own in front.
  static DesktopArguments Read(const QStringList& words);
  static QString GetHelp();
  static QString GetVersion();
};
