// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

#include "host/kelpui/UI_NodeManager.h"
#include "host/session/TzFileChooser.h"
#include "host/session/TzMessageBox.h"
#include "host/sheets/TzCanvas.h"

/// Shows things to the author and takes answers. Drawn by a desktop program, scripted on the command line and
/// in tests.
class ITzUserInterface {
 public:
  using TimerKey = kelpui::controls::UI_NodeManager::TimerKey;

  virtual ~ITzUserInterface() = default;
  /// Blocks until answered; the answer is a `TzMessageBoxButton` that the kind offers.
  virtual int ShowMessageBox(const TzMessageBoxOptions& options, TzMessageBoxKind kind) = 0;
  /// Empty when cancelled.
  virtual std::vector<TzPath> ChooseFiles(const TzFileChooserRequest& request) = 0;
  /// The title that the author gave the file when choosing it last; empty if none was given.
  [[nodiscard]] virtual TzString GetGivenTitle(const TzPath& /*file*/) const { return {}; }
  /// Empty when cancelled.
  virtual TzString ChooseFolder(const TzFolderChooserRequest& request) = 0;

  /// An empty canvas at its place; a dialog shows when its modal time begins. The canvas may outlive the user
  /// interface, and shows nothing then.
  virtual TzCanvasPtr CreateCanvas(const TzCanvasSpec& spec) = 0;

  /// A dialog ended with this `TzDialogResult`; its cells can still be read. Nothing has to be done.
  virtual void DialogClosed(TzCanvas& /*dialog*/, int /*result*/) {}

  /// Calls `UI_NodeManager::FireTimer` with the key every `delay` seconds, between events, until it is
  /// stopped.
  virtual void StartTimer(TimerKey key, double delay) = 0;
  /// A key that isn't running is passed over.
  virtual void StopTimer(TimerKey key) = 0;
};
