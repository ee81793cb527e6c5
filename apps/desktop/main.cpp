// SPDX-License-Identifier: Apache-2.0
#include <QApplication>
#include <QTimer>
#include <QWindow>
#include <functional>
#include <iostream>
#include <utility>

#include "apps/desktop/DesktopProgram.h"

namespace {

constexpr int kDone = 0;
constexpr int kWrongCommandLine = 2;
constexpr int kFailed = 3;

QStringList ListWords(int count, char** words) {
  QStringList list;
  for (int index = 0; index < count; ++index) list << QString::fromLocal8Bit(words[index]);
  return list;
}

/// Calls when the window shows for the first time: before that it has no place for boxes to stand on.
class FirstSight : public QObject {
 public:
  FirstSight(QWindow& shownWindow, std::function<void()> notification) : seen(std::move(notification)) {
    if (shownWindow.isExposed()) {
      QTimer::singleShot(0, this, seen);
    } else {
      shownWindow.installEventFilter(this);
    }
  }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Expose) {
      watched->removeEventFilter(this);
      QTimer::singleShot(0, this, seen);
    }
    return QObject::eventFilter(watched, event);
  }

 private:
  std::function<void()> seen;
};

int RunProgram(const DesktopArguments& arguments) {
  DesktopProgram program(DesktopPlaces::Installed(), arguments);
  if (!program.Start()) return kFailed;
  const FirstSight sight(*program.GetWindow().windowHandle(), [&program] { program.Welcome(); });
  return QApplication::exec();
}

}  // namespace

int main(int argumentCount, char** arguments) {
  // These need no screen.
  const DesktopArguments asked = DesktopArguments::Read(ListWords(argumentCount, arguments));
  if (asked.wantsHelp || asked.wantsVersion) {
    std::cout
        << (asked.wantsHelp ? DesktopArguments::GetHelp() : DesktopArguments::GetVersion()).toStdString();
    return kDone;
  }
  const QApplication application(argumentCount, arguments);
  QApplication::setOrganizationName(QStringLiteral("Plexo"));
  QApplication::setApplicationName(QStringLiteral("Plexo"));
  QApplication::setApplicationVersion(QStringLiteral(PLEXO_VERSION));
  QApplication::setDesktopFileName(QStringLiteral("plexo-desktop"));
  // Qt has taken its own options out.
  const DesktopArguments given = DesktopArguments::Read(QApplication::arguments());
  if (!given.problem.isEmpty()) {
    std::cerr << "plexo-desktop: " << given.problem.toStdString() << '\n'
              << DesktopArguments::GetHelp().toStdString();
    return kWrongCommandLine;
  }
  return RunProgram(given);
}
