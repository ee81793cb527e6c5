// SPDX-License-Identifier: Apache-2.0
#include "host/qt/TzQtUserInterface.h"

#include <QApplication>
#include <QFileDialog>
#include <QLayout>
#include <QProgressDialog>
#include <QPushButton>
#include <algorithm>
#include <cmath>

#include "host/qt/TzQtCanvas.h"
#include "host/qt/TzQtText.h"
#include "host/session/TzSession.h"
#include "host/text/ITzStringDictionary.h"

using kelpui::controls::UI_NodeManager;

namespace {

struct BoxButton {
  TzMessageBoxButton answer;
  QMessageBox::StandardButton shown;
  const char* word;
};

constexpr BoxButton kOk{kTzButtonOk, QMessageBox::Ok, "kTzOk"};
constexpr BoxButton kYes{kTzButtonYes, QMessageBox::Yes, "kTzMBButton_Yes"};
constexpr BoxButton kNo{kTzButtonNo, QMessageBox::No, "kTzMBButton_No"};
constexpr BoxButton kCancel{kTzButtonCancel, QMessageBox::Cancel, "kTzMBButton_Cancel"};

/// The last one changes nothing.
std::vector<BoxButton> GetButtons(TzMessageBoxKind kind) {
  switch (kind) {
    case TzMessageBoxKind::YesNo:
      return {kYes, kNo};
    case TzMessageBoxKind::YesNoCancel:
      return {kYes, kNo, kCancel};
    case TzMessageBoxKind::Ok:
      break;
  }
  return {kOk};
}

/// "Packages (*.zip)". Both cases, for some choosers tell them apart.
QString MakeFilter(const TzFileFilter& filter) {
  QStringList patterns;
  for (const TzString& extension : filter.extensions) {
    const QString word = ToQtText(extension);
    patterns << QStringLiteral("*.") + word.toLower() << QStringLiteral("*.") + word.toUpper();
  }
  // Qt takes what stands in the last brackets for the patterns.
  return ToQtText(filter.name) + QStringLiteral(" (") + patterns.join(QLatin1Char(' ')) + QLatin1Char(')');
}

}  // namespace

TzQtUserInterface::~TzQtUserInterface() {
  for (TzQtCanvas* canvas : canvases) canvas->Forget();
}

QWidget* TzQtUserInterface::FindFrontWindow(TzWindowHandle owner) const {
  QWidget* modal = QApplication::activeModalWidget();
  // A progress dialog goes as soon as events are taken, and what stands on it with it.
  if (qobject_cast<QProgressDialog*>(modal) != nullptr) modal = modal->parentWidget();
  if (modal != nullptr) return modal->window();
  QWidget* owned = windows.FindWidget(owner);
  if (owned == nullptr) owned = windows.GetMainWidget();
  return owned != nullptr && owned->window()->isVisible() ? owned->window() : nullptr;
}

QMessageBox::Icon TzQtUserInterface::GetIcon(const TzMessageBoxOptions& options,
                                             TzMessageBoxKind kind) const {
  const ITzStringDictionary* words = GetStringDictionary();
  const TzString title = options.GetTitle();
  for (const auto& [key, icon] : iconKeys) {
    if (words != nullptr && words->HasString(key) && words->GetString(key) == title) return icon;
  }
  return kind == TzMessageBoxKind::Ok ? QMessageBox::Information : QMessageBox::Question;
}

int TzQtUserInterface::ShowMessageBox(const TzMessageBoxOptions& options, TzMessageBoxKind kind) {
  QMessageBox box(FindFrontWindow(options.GetOwner()));
  box.setIcon(GetIcon(options, kind));
  box.setWindowTitle(ToQtText(options.GetTitle()));
  box.setTextFormat(Qt::PlainText);
  box.setText(ToQtText(options.GetText()));
  if (box.parentWidget() != nullptr) box.setWindowModality(Qt::WindowModal);
  const std::vector<BoxButton> buttons = GetButtons(kind);
  const ITzStringDictionary* words = GetStringDictionary();
  for (const BoxButton& each : buttons) {
    QPushButton* button = box.addButton(each.shown);
    if (words != nullptr && words->HasString(each.word)) {
      button->setText(QLatin1Char('&') + ToQtText(words->GetString(each.word)));
    }
  }
  box.setDefaultButton(buttons.front().shown);
  box.setEscapeButton(buttons.back().shown);
  const int pressed = box.exec();
  const auto answer = std::ranges::find(buttons, pressed, &BoxButton::shown);
  return answer != buttons.end() ? answer->answer : buttons.back().answer;
}

std::vector<TzPath> TzQtUserInterface::ChooseFiles(const TzFileChooserRequest& request) {
  QFileDialog chooser(FindFrontWindow(request.parent), ToQtText(request.title),
                      QFile::decodeName(request.startFolder.GetNative().c_str()));
  chooser.setFileMode(request.multiple ? QFileDialog::ExistingFiles : QFileDialog::ExistingFile);
  QStringList filters;
  for (const TzFileFilter& filter : request.filters) filters << MakeFilter(filter);
  if (!filters.isEmpty()) chooser.setNameFilters(filters);
  if (chooser.exec() != QDialog::Accepted) return {};
  std::vector<TzPath> files;
  for (const QString& file : chooser.selectedFiles()) {
    files.push_back(TzPath::FromNative(QFile::encodeName(file).toStdString()));
  }
  return files;
}

TzString TzQtUserInterface::ChooseFolder(const TzFolderChooserRequest& request) {
  QFileDialog chooser(FindFrontWindow(request.parent), ToQtText(request.title),
                      ToQtText(request.startFolder));
  chooser.setFileMode(QFileDialog::Directory);
  chooser.setOption(QFileDialog::ShowDirsOnly);
  if (chooser.exec() != QDialog::Accepted || chooser.selectedFiles().isEmpty()) return {};
  return FromQtText(chooser.selectedFiles().front());
}

TzCanvasPtr TzQtUserInterface::CreateCanvas(const TzCanvasSpec& spec) {
  QWidget* parent = nullptr;
  switch (spec.place) {
    case TzCanvasSpec::Place::Window:
      parent = windows.FindWidget(spec.parent);
      break;
    case TzCanvasSpec::Place::AppBar:
      parent = windows.GetBar();
      break;
    case TzCanvasSpec::Place::Dialog:
      parent = FindFrontWindow(spec.parent);
      break;
  }
  auto* canvas = new TzQtCanvas(
      spec, parent, [this](TzQtCanvas& gone) { std::erase(canvases, &gone); }, tooltipKeys);
  canvases.push_back(canvas);
  if (spec.place == TzCanvasSpec::Place::Dialog || parent == nullptr) return canvas;
  if (spec.place == TzCanvasSpec::Place::AppBar) parent->layout()->addWidget(canvas->GetWidget());
  canvas->GetWidget()->show();
  return canvas;
}

void TzQtUserInterface::StartTimer(TimerKey key, double delay) {
  constexpr double kMillisecond = 1000.0;
  constexpr double kLongest = 2'000'000'000.0;
  auto timer = std::make_unique<QTimer>();
  QObject::connect(timer.get(), &QTimer::timeout, timer.get(), [this, key] { Fire(key); });
  timer->start(static_cast<int>(std::clamp(std::round(delay * kMillisecond), 0.0, kLongest)));
  timers[key] = std::move(timer);
}

void TzQtUserInterface::StopTimer(TimerKey key) {
  const auto found = timers.find(key);
  if (found == timers.end()) return;
  // It may be the one that is firing.
  found->second->stop();
  found->second.release()->deleteLater();
  timers.erase(found);
}

void TzQtUserInterface::Fire(TimerKey key) {
  if (holds == 0) UI_NodeManager::Get().FireTimer(key);
}

void TzQtUserInterface::HoldTimers() {
  // A timer without a delay would keep the processor busy.
  if (holds++ > 0) return;
  for (const auto& [key, timer] : timers) timer->stop();
}

void TzQtUserInterface::ReleaseTimers() {
  if (--holds > 0) return;
  for (const auto& [key, timer] : timers) timer->start();
}
