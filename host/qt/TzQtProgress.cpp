// SPDX-License-Identifier: Apache-2.0
#include "host/qt/TzQtProgress.h"

#include <QCoreApplication>
#include <QProgressDialog>
#include <QTimer>
#include <algorithm>

#include "host/qt/TzQtText.h"
#include "host/qt/TzQtUserInterface.h"
#include "host/session/TzSession.h"
#include "host/text/ITzStringDictionary.h"

namespace {

constexpr int kPatience = 300;
constexpr int kBetweenUpdates = 50;
constexpr int kSteps = 1000;

QString MakeSentence(std::string_view activity) {
  QString text = QString::fromUtf8(activity.data(), static_cast<qsizetype>(activity.size()));
  if (!text.isEmpty()) text[0] = text[0].toUpper();
  return text;
}

QString GetCancelWord() {
  const ITzStringDictionary* words = GetStringDictionary();
  const bool hasWord = words != nullptr && words->HasString("kTzMBButton_Cancel");
  return hasWord ? ToQtText(words->GetString("kTzMBButton_Cancel")) : QStringLiteral("Cancel");
}

}  // namespace

TzQtProgress::TzQtProgress(TzQtUserInterface& userInterface) : ui(userInterface) {}

TzQtProgress::~TzQtProgress() = default;

bool TzQtProgress::Report(std::string_view activity, std::uint64_t done, std::uint64_t total) {
  if (!isRunning) {
    isRunning = true;
    isCancelled = false;
    sinceStart.start();
    sinceUpdate.start();
    ScheduleFinish();
  }
  if (isCancelled) return false;
  if (sinceStart.elapsed() < kPatience || (dialog != nullptr && sinceUpdate.elapsed() < kBetweenUpdates)) {
    return true;
  }
  if (dialog == nullptr) Show();
  sinceUpdate.restart();
  const double share = static_cast<double>(done) / static_cast<double>(std::max<std::uint64_t>(total, 1));
  ShowValue(MakeSentence(activity), static_cast<int>(std::clamp(share, 0.0, 1.0) * kSteps));
  return !isCancelled;
}

void TzQtProgress::Show() {
  constexpr int kWidth = 420;
  dialog = std::make_unique<QProgressDialog>(ui.FindFrontWindow(nullptr));
  dialog->setWindowModality(Qt::ApplicationModal);
  dialog->setWindowTitle(QCoreApplication::applicationName());
  dialog->setCancelButtonText(GetCancelWord());
  dialog->setAutoClose(false);
  dialog->setAutoReset(false);
  dialog->setRange(0, kSteps);
  dialog->setMinimumDuration(0);
  dialog->setMinimumWidth(kWidth);
  QObject::connect(dialog.get(), &QProgressDialog::canceled, &connections, [this] { isCancelled = true; });
  dialog->show();
}

// A modal progress dialog takes events by itself at some values.
void TzQtProgress::ShowValue(const QString& text, int value) {
  isTakingEvents = true;
  ui.HoldTimers();
  dialog->setLabelText(text);
  dialog->setValue(value);
  QCoreApplication::processEvents(QEventLoop::ExcludeSocketNotifiers);
  ui.ReleaseTimers();
  isTakingEvents = false;
  // The one that was scheduled has come, too early.
  ScheduleFinish();
}

void TzQtProgress::ScheduleFinish() {
  QTimer::singleShot(0, &connections, [this] { Finish(); });
}

void TzQtProgress::Finish() {
  if (isTakingEvents) return;
  dialog.reset();
  isRunning = false;
}
