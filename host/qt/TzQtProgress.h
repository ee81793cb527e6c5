// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <memory>

#include "host/session/ITzProgressSink.h"

class QProgressDialog;
class TzQtUserInterface;

/// Shows the progress of long operations in a dialog with Cancel.
///
/// The dialog comes when an operation, or several in a row, have held up the person for 300 ms, and goes when
/// control is back with the person. While it is up no other window takes input and no timer of the user
/// interface fires, so that nothing enters the component in the middle of an operation. After Cancel every
/// report is answered with a stop, until control is back.
class TzQtProgress : public ITzProgressSink {
 public:
  explicit TzQtProgress(TzQtUserInterface& userInterface);
  ~TzQtProgress() override;
  TzQtProgress(const TzQtProgress&) = delete;
  TzQtProgress& operator=(const TzQtProgress&) = delete;

  bool Report(std::string_view activity, std::uint64_t done, std::uint64_t total) override;

 private:
  void Show();
  /// And lets events through.
  void ShowValue(const QString& text, int value);
  /// At the end of the running event.
  void ScheduleFinish();
  void Finish();

  TzQtUserInterface& ui;
  std::unique_ptr<QProgressDialog> dialog;
  QElapsedTimer sinceStart;
  QElapsedTimer sinceUpdate;
  bool isRunning = false;
  bool isTakingEvents = false;
  bool isCancelled = false;
  QObject connections;
};
