// SPDX-License-Identifier: Apache-2.0
#include "apps/desktop/CourseDesk.h"

#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QGuiApplication>
#include <QMessageBox>
#include <QPushButton>
#include <algorithm>
#include <utility>

#include "apps/author/CoursePlayer.h"
#include "apps/author/CourseReader.h"
#include "apps/course/CourseFile.h"
#include "apps/course/CourseFileWriter.h"
#include "apps/desktop/MessageListDialog.h"

namespace {

using Folder = DesktopSettings::Folder;

constexpr const char* kSuffix = "plexo.yaml";

QString ToLine(const CourseFileError& error) {
  QString line = QString::fromStdString(error.message);
  if (!error.reason.empty()) line += QStringLiteral("\n") + QString::fromStdString(error.reason);
  if (error.line == 0) return line;
  return QStringLiteral("%1:%2: %3").arg(error.line).arg(error.column).arg(line);
}

/// Reads from left to right, whatever stands around it.
QString Isolate(const QString& path) {
  constexpr QChar kLeftToRightIsolate(0x2066);
  constexpr QChar kEndOfIsolate(0x2069);
  return QGuiApplication::isRightToLeft() ? kLeftToRightIsolate + path + kEndOfIsolate : path;
}

/// A course that somebody has only just begun is nothing to save.
bool HasWork(const CourseDocument& course) {
  return !course.files.empty() || course.modules.size() > 1 ||
         std::ranges::any_of(course.modules, [](const CourseModule& module) {
           return module.preTest || !module.content.empty() || module.postTest;
         });
}

}  // namespace

QString CourseDesk::GetFilter() const {
  return session.GetWord("kDesktopCourseFiles") + QStringLiteral(" (*.plexo.yaml *.plexo *.yaml *.yml)");
}

void CourseDesk::Open() {
  const QString folder = settings.GetFolder(Folder::Courses);
  QFileDialog chooser(&window, session.GetWord("kDesktopOpenCourse"), folder, GetFilter());
  chooser.setFileMode(QFileDialog::ExistingFile);
  if (chooser.exec() == QDialog::Accepted) OpenFile(chooser.selectedFiles().value(0));
}

void CourseDesk::OpenFile(const QString& file) {
  const QString path = QFileInfo(file).absoluteFilePath();
  if (!Read(path) || !MayLeave()) return;
  // What was saved just now may be this very file.
  const auto course = Read(path);
  if (!course || !Play(*course)) return;
  SetFile(path);
  // What the panel made of it is what the file says, but for what was refused.
  saved = hadRefusals ? std::nullopt : CourseReader(session.GetAuthor()).Read();
  Look();
}

std::optional<CourseDocument> CourseDesk::Read(const QString& path) {
  CourseFileResult read = ReadCourseDraft(QFile::encodeName(path).toStdString());
  if (read.errors.empty()) return std::move(read.course);
  QStringList lines{Isolate(QDir::toNativeSeparators(path))};
  for (const CourseFileError& error : read.errors) lines << ToLine(error);
  settings.RemoveRecentCourse(path);
  ShowList("kDesktopOpenFailed", lines);
  return std::nullopt;
}

bool CourseDesk::MayLeave() {
  if (!Look() || !isModified) return true;
  QMessageBox box(QMessageBox::Warning, QGuiApplication::applicationDisplayName(),
                  session.GetWord("kDesktopSaveQuestion"), QMessageBox::NoButton, &window);
  box.setTextFormat(Qt::PlainText);
  box.setInformativeText(session.GetWord("kDesktopUnsavedIsLost"));
  QPushButton* save = box.addButton(session.GetWord("kTzMBButton_Save"), QMessageBox::AcceptRole);
  const auto* giveUp = box.addButton(session.GetWord("kTzMBButton_DontSave"), QMessageBox::DestructiveRole);
  box.setDefaultButton(save);
  box.setEscapeButton(box.addButton(session.GetWord("kTzMBButton_Cancel"), QMessageBox::RejectRole));
  box.exec();
  if (box.clickedButton() == save) return Save();
  if (box.clickedButton() != giveUp) return false;
  isSettled = true;
  return true;
}

void CourseDesk::Restore(const CourseJournalEntry& entry) {
  if (!Play(entry.course)) return;
  courseFile = entry.courseFile;
  saved.reset();
  isSettled = false;
  Look();
}

bool CourseDesk::Play(const CourseDocument& course) {
  constexpr auto kAdding = "adding ";
  CoursePlayer player(session.GetAuthor(),
                      [this](const std::string& activity, std::size_t done, std::size_t total) {
                        return session.GetProgress().Report(kAdding + activity, done, total);
                      });
  const CoursePlayResult result = player.Play(course);
  session.GetProblems().Forget();
  QStringList lines;
  for (const auto& [subject, message] : result.refusals) {
    lines << Isolate(QString::fromStdString(subject)) + QStringLiteral(": ") +
                 QString::fromStdString(message);
  }
  const bool isOpened = result.outcome == CoursePlayResult::Outcome::Opened;
  hadRefusals = !lines.isEmpty();
  if (hadRefusals) ShowList(isOpened ? "kDesktopPartlyOpened" : "kDesktopOpenFailed", lines);
  if (!isOpened && !session.GetScreen().GetTemplate()) NoteEnd();
  return isOpened;
}

bool CourseDesk::Save() { return courseFile ? SaveTo(QFile::decodeName(courseFile->c_str())) : SaveAs(); }

bool CourseDesk::SaveAs() {
  const auto course = Look();
  if (!course) return false;
  QFileDialog chooser(&window, session.GetWord("kDesktopSaveCourseAs"), settings.GetFolder(Folder::Courses),
                      GetFilter());
  chooser.setAcceptMode(QFileDialog::AcceptSave);
  chooser.setDefaultSuffix(QLatin1String(kSuffix));
  const QString name = QString::fromStdString(course->identifier) + QLatin1Char('.') + QLatin1String(kSuffix);
  chooser.selectFile(courseFile ? QFile::decodeName(courseFile->c_str()) : name);
  return chooser.exec() == QDialog::Accepted && SaveTo(chooser.selectedFiles().value(0));
}

bool CourseDesk::SaveTo(const QString& file) {
  const auto course = Look();
  if (!course) return false;
  const auto problem = WriteCourseFile(QFile::encodeName(file).toStdString(), *course);
  if (problem) {
    QMessageBox box(QMessageBox::Critical, session.GetWord("kDesktopSaveCourse"),
                    session.GetWord("kDesktopSaveFailed"), QMessageBox::Ok, &window);
    box.setTextFormat(Qt::PlainText);
    box.setInformativeText(QString::fromStdString(problem->GetText()));
    box.button(QMessageBox::Ok)->setText(session.GetWord("kTzOk"));
    box.exec();
    return false;
  }
  SetFile(file);
  saved = course;
  isSettled = true;
  Look();
  return true;
}

std::optional<CourseDocument> CourseDesk::Look() {
  auto course = CourseReader(session.GetAuthor()).Read();
  if (!course) {
    NoteEnd();
    return course;
  }
  isModified = courseFile ? course != saved : HasWork(*course);
  ShowTitle();
  return course;
}

void CourseDesk::NoteEnd() {
  courseFile.reset();
  saved.reset();
  isModified = false;
  isSettled = false;
  ShowTitle();
}

void CourseDesk::SetFile(const QString& file) {
  courseFile = QFile::encodeName(file).toStdString();
  settings.AddRecentCourse(file);
  settings.SetFolder(Folder::Courses, QFileInfo(file).absolutePath());
}

void CourseDesk::ShowTitle() const {
  if (!session.GetScreen().GetTemplate()) {
    window.ShowTitle({}, false);
    return;
  }
  const QString name = courseFile ? QFileInfo(QFile::decodeName(courseFile->c_str())).fileName()
                                  : session.GetWord("kDesktopUnsavedCourse");
  window.ShowTitle(name, isModified);
}

void CourseDesk::ShowList(const char* caption, const QStringList& messages) const {
  MessageListDialog(&window, session.GetWord(caption), messages, session.GetWord("kTzOk")).exec();
}
