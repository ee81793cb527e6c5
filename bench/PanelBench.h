// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "host/files/TzPath.h"
#include "host/headless/TzHeadlessUI.h"

/// Does to a large course on the panel what an author does, and prints the processor time of each act as
/// JSON.
///
/// The course is made by the panel's own buttons: every SCO is a copy of the package, chosen in the file
/// chooser and taken in; of modules, each has five. The session has words, windows and the user interface.
class PanelBench {
 public:
  static int MeasureFlatCourse(TzHeadlessUI& userInterface, const TzPath& package, std::size_t scos);
  static int MeasureModules(TzHeadlessUI& userInterface, const TzPath& package, std::size_t modules);
};
