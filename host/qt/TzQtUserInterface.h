// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QMessageBox>
#include <QTimer>
#include <map>
#include <memory>
#include <vector>

#include "host/qt/TzQtMirrors.h"
#include "host/qt/TzQtWindows.h"
#include "host/session/ITzUserInterface.h"

class TzQtCanvas;

/// The icons of message boxes, by the dictionary's keys of their titles.
using TzQtIconKeys = std::map<TzString, QMessageBox::Icon>;

/// The user interface that draws. Needs a running `QApplication`.
///
/// Boxes and choosers stand in front of the dialog that is open, else of their owner, else of the main
/// window, and hold up that window. A box without Cancel that is closed answers as its button that changes
/// nothing. The words on its buttons are the dictionary's, where it has them.
class TzQtUserInterface : public ITzUserInterface {
 public:
  explicit TzQtUserInterface(TzQtWindows& windowSystem) : windows(windowSystem) {}
  ~TzQtUserInterface() override;
  TzQtUserInterface(const TzQtUserInterface&) = delete;
  TzQtUserInterface& operator=(const TzQtUserInterface&) = delete;

  int ShowMessageBox(const TzMessageBoxOptions& options, TzMessageBoxKind kind) override;
  std::vector<TzPath> ChooseFiles(const TzFileChooserRequest& request) override;
  TzString ChooseFolder(const TzFolderChooserRequest& request) override;
  TzCanvasPtr CreateCanvas(const TzCanvasSpec& spec) override;
  void StartTimer(TimerKey key, double delay) override;
  void StopTimer(TimerKey key) override;

  /// For the canvases that are created from then on.
  void SetTooltipKeys(TzQtTooltipKeys keys) {
    tooltipKeys = std::make_shared<const TzQtTooltipKeys>(std::move(keys));
  }

  /// Boxes whose title is the text of no such key show a question or a notice.
  void SetIconKeys(TzQtIconKeys keys) { iconKeys = std::move(keys); }

  /// While held, no timer fires: an operation that lets events through isn't to be entered again by one.
  void HoldTimers();
  void ReleaseTimers();

  /// The window that a dialog without an owner of its own belongs to; null without one.
  [[nodiscard]] QWidget* FindFrontWindow(TzWindowHandle owner) const;

 private:
  [[nodiscard]] QMessageBox::Icon GetIcon(const TzMessageBoxOptions& options, TzMessageBoxKind kind) const;
  void Fire(TimerKey key);

  TzQtWindows& windows;
  std::vector<TzQtCanvas*> canvases;
  std::shared_ptr<const TzQtTooltipKeys> tooltipKeys;
  TzQtIconKeys iconKeys;
  std::map<TimerKey, std::unique_ptr<QTimer>> timers;
  int holds = 0;
};
