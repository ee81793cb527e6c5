// SPDX-License-Identifier: Apache-2.0
#include "apps/desktop/DesktopProblems.h"

#include <QStringList>
#include <algorithm>

bool DesktopProblems::IsCancelled() const {
  return std::ranges::any_of(problems, [](const TzProblem& each) { return each.code == kTzCancelled; });
}

QString DesktopProblems::Take() {
  QStringList lines;
  for (const TzProblem& problem : problems) lines << QString::fromStdString(problem.GetText());
  lines.removeDuplicates();
  Forget();
  return lines.join(QLatin1Char('\n'));
}
