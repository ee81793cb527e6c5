// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "host/headless/TzHeadlessDriver.h"
#include "panel/PlexoView.h"
#include "support/TestSession.h"

/// The panel in a window and the application bar beside it, with the default words, a strict person in front
/// and an empty course behind: how an author finds the program after its start.
///
/// There is one panel of the process, so there is one session and one window for it too. Each object of this
/// class takes them back to the start; only the title and the check boxes of the panel keep what was entered.
class PanelSession {
 public:
  PanelSession();
  ~PanelSession();
  PanelSession(const PanelSession&) = delete;
  PanelSession& operator=(const PanelSession&) = delete;

  /// Presses a button of the first screen and confirms the details with an identifier.
  void Choose(const std::string& templateName);
  /// Adds the files as they stand to the flat course: presses "+ File" and chooses them.
  void AddFiles(std::vector<TzPath> files);

  TestSession& session;
  TzWindowHandle window;
  PlexoView& view;
  TzHeadlessDriver ui;

 private:
  TzSession previous;
};
