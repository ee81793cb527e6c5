// SPDX-License-Identifier: Apache-2.0
#include <QApplication>
#include <QTimer>
#include <iostream>

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

int RunProgram(const DesktopArguments& arguments) {
  DesktopProgram program(DesktopPlaces::Installed(), arguments);
  if (!program.Start()) return kFailed;
  QTimer::singleShot(0, &program.GetWindow(), [&program] { program.Welcome(); });
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
