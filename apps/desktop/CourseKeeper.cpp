// SPDX-License-Identifier: Apache-2.0
#include "apps/desktop/CourseKeeper.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEvent>
#include <QMessageBox>
#include <QPushButton>
#include <algorithm>

namespace {

constexpr int kDelay = 1000;

void WarnOf(const std::optional<TzProblem>& problem) {
  if (problem) qWarning("journal: %s", problem->GetText().c_str());
}

}  // namespace

CourseKeeper::CourseKeeper(CourseDesk& courseDesk, const DesktopSession& programSession,
                           const TzPath& journalFolder)
    : desk(courseDesk), session(programSession), journal(journalFolder) {
  WarnOf(journal.GetProblem());
  timer.setSingleShot(true);
  timer.setInterval(kDelay);
  connect(&timer, &QTimer::timeout, this, [this] { NoteUnlessBusy(); });
  // Only a person changes a course, and only with these.
  QCoreApplication::instance()->installEventFilter(this);
}

bool CourseKeeper::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::KeyPress:
    case QEvent::MouseButtonRelease:
    case QEvent::Shortcut:
    case QEvent::Drop:
      NoteSoon();
      break;
    default:
      break;
  }
  return QObject::eventFilter(watched, event);
}

void CourseKeeper::NoteSoon() {
  if (!timer.isActive()) timer.start();
}

void CourseKeeper::NoteUnlessBusy() {
  if (session.IsBusy()) {
    NoteSoon();
    return;
  }
  Note();
}

void CourseKeeper::Note() {
  constexpr int kShare = 10;
  QElapsedTimer reading;
  reading.start();
  const auto course = desk.Look();
  timer.setInterval(std::max(kDelay, static_cast<int>(reading.elapsed()) * kShare));
  if (course && desk.IsModified()) {
    WarnOf(journal.NoteChange(*course, desk.GetFile()));
    notedFile = desk.GetFile();
  } else if (course && desk.GetFile() && (desk.IsSettled() || desk.GetFile() == notedFile)) {
    journal.Clear();
  }
}

bool CourseKeeper::OfferRestore(QWidget& window) {
  const auto left = journal.Find();
  if (!left) return false;
  QMessageBox box(QMessageBox::Question, QGuiApplication::applicationDisplayName(),
                  session.GetWord("kDesktopRestoreQuestion"), QMessageBox::NoButton, &window);
  const QPushButton* restore = box.addButton(session.GetWord("kDesktopRestore"), QMessageBox::AcceptRole);
  const QPushButton* discard =
      box.addButton(session.GetWord("kDesktopDiscard"), QMessageBox::DestructiveRole);
  // Neither: the work stays for another start.
  box.addButton(session.GetWord("kDesktopCancel"), QMessageBox::RejectRole);
  box.exec();
  if (box.clickedButton() == restore) {
    desk.Restore(*left);
    return session.GetScreen().GetTemplate().has_value();
  }
  if (box.clickedButton() == discard) journal.Clear();
  return false;
}
