// SPDX-License-Identifier: Apache-2.0
// Figures of the desktop program, as JSON on standard output.
//
// usage: plexo-desktop-bench FOLDER start
//        plexo-desktop-bench FOLDER scroll-scos COUNT PACKAGE
//        plexo-desktop-bench FOLDER scroll-modules COUNT
//
// "start" tells the clock's time (CLOCK_MONOTONIC, seconds) at which the first screen could be used: whoever
// starts the program knows when that was. The others make a course with the panel's own buttons and scroll
// through it, and tell the seconds that a frame takes, drawn at once.
#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTimer>
#include <QTreeView>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <vector>

#include "apps/desktop/DesktopProgram.h"

namespace {

namespace fs = std::filesystem;

double Now() {
  return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

DesktopPlaces MakePlaces(const QString& folder) {
  DesktopPlaces places = DesktopPlaces::Installed();
  places.settingsFile = folder + "/settings.ini";
  places.journals = TzPath::FromNative(folder.toStdString() + "/journals");
  return places;
}

/// Lets the program come to rest.
void Settle() {
  for (int turn = 0; turn < 20; ++turn) QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
}

/// Usable: drawn, and with nothing left to do.
int MeasureStart(DesktopProgram& program) {
  QTimer::singleShot(0, &program.GetWindow(), [&program] {
    program.Welcome();
    program.GetWindow().repaint();
    QTimer::singleShot(0, &program.GetWindow(), [] {
      std::printf("{\"usable\": %.6f}\n", Now());
      QCoreApplication::quit();
    });
  });
  return QApplication::exec();
}

void Begin(DesktopProgram& program, const char* action) {
  bool isConfirmed = false;
  QTimer::singleShot(50, &program.GetWindow(), [&isConfirmed] {
    isConfirmed = true;
    QWidget* dialog = QApplication::activeModalWidget();
    dialog->findChildren<QLineEdit*>().first()->insert("Bench");
    for (auto* button : dialog->findChildren<QPushButton*>()) {
      if (button->isVisible() && button->isDefault()) return button->click();
    }
  });
  program.GetSession().GetScreen().Press(action);
  while (!isConfirmed) QCoreApplication::processEvents();
}

/// Files of one content and many names.
std::vector<TzPath> MakePackages(const QString& folder, int count, const char* package) {
  std::vector<TzPath> files;
  const fs::path desk = folder.toStdString() + "/desk";
  fs::create_directories(desk);
  for (int number = 0; number < count; ++number) {
    const fs::path file = desk / ("sco" + std::to_string(number) + ".zip");
    fs::create_hard_link(package, file);
    files.push_back(TzPath::FromNative(file.native()));
  }
  return files;
}

QTreeView* FindList(const QWidget& window) {
  for (auto* view : window.findChildren<QTreeView*>()) {
    if (view->isVisible()) return view;
  }
  return nullptr;
}

/// From frame to frame, as events of the running program: what a frame leaves to be done later counts too.
int MeasureScrolling(DesktopProgram& program) {
  constexpr int kFrames = 300;
  constexpr QSize kFullScreen(1920, 1080);
  program.GetWindow().resize(kFullScreen);
  Settle();
  QTreeView* list = FindList(program.GetWindow());
  QScrollBar* bar = list->verticalScrollBar();
  std::vector<double> starts;
  QTimer timer;
  QObject::connect(&timer, &QTimer::timeout, list, [&] {
    const int frame = static_cast<int>(starts.size());
    starts.push_back(Now());
    // Quitting would ask about the course.
    if (frame == kFrames) return QCoreApplication::exit();
    bar->setValue(bar->maximum() * frame / kFrames);
    list->repaint();
  });
  timer.start(0);
  const int status = QApplication::exec();
  double longest = 0;
  for (std::size_t frame = 0; frame < kFrames; ++frame) {
    longest = std::max(longest, starts[frame + 1] - starts[frame]);
  }
  std::printf("{\"frame\": %.6f, \"longest\": %.6f}\n", (starts.back() - starts.front()) / kFrames, longest);
  return status;
}

int Run(DesktopProgram& program, const QStringList& words) {
  const QString kind = words.value(2);
  if (kind == "start") return MeasureStart(program);
  const int count = words.value(3).toInt();
  if (kind == "scroll-scos") {
    Begin(program, "multiple_scos_action");
    program.GetSession().GetUserInterface().HandToChooser(
        MakePackages(words[1], count, words.value(4).toUtf8()));
    program.GetSession().GetScreen().Press("add_file");
  } else {
    Begin(program, "test_rollup");
    for (int number = 1; number < count; ++number) program.GetSession().GetScreen().Press("add_module");
  }
  return MeasureScrolling(program);
}

}  // namespace

int main(int argumentCount, char** arguments) {
  const QApplication application(argumentCount, arguments);
  QApplication::setApplicationName("Plexo");
  const QStringList words = QApplication::arguments();
  if (words.size() < 3) return 2;
  DesktopProgram program(MakePlaces(words[1]), {});
  if (!program.Start()) return 3;
  return Run(program, words);
}
