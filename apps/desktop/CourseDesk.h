// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <optional>
#include <string>

#include "apps/course/CourseDocument.h"
#include "apps/course/CourseJournalFile.h"
#include "apps/desktop/DesktopSession.h"
#include "apps/desktop/DesktopSettings.h"
#include "apps/desktop/DesktopWindow.h"

/// The course in the panel as a document: opened from a course file, saved to one, shown in the window's
/// title. Whatever goes wrong is told in a box, and leaves the course in the panel and the file as they were.
class CourseDesk {
 public:
  CourseDesk(DesktopWindow& programWindow, DesktopSession& programSession, DesktopSettings& programSettings)
      : window(programWindow), session(programSession), settings(programSettings) {}

  /// Asks which.
  void Open();
  /// Asks first whether to save the course that is in the panel, if there is something to save.
  void OpenFile(const QString& file);
  /// To its file; asks for one where it has none. False if it wasn't saved.
  bool Save();
  bool SaveAs();
  /// Work that another run left.
  void Restore(const CourseJournalEntry& entry);

  /// Reads the course off the panel, and shows by the title whether there is something to save. None while
  /// the template choice shows.
  std::optional<CourseDocument> Look();
  /// As it was looked at last.
  [[nodiscard]] bool IsModified() const { return isModified; }
  /// What was in the panel up to the last look is saved, or was given up by the author's own word.
  [[nodiscard]] bool IsSettled() const { return isSettled && !isModified; }
  /// As text in UTF-8; none for a course that was never saved.
  [[nodiscard]] const std::optional<std::string>& GetFile() const { return courseFile; }

  /// The panel has gone back to the template choice.
  void NoteEnd();

 private:
  /// None, after a box that tells why, if it can't be read.
  [[nodiscard]] std::optional<CourseDocument> Read(const QString& path);
  /// False if the author stays with the course in the panel.
  [[nodiscard]] bool MayLeave();
  /// False if the course isn't in the panel.
  bool Play(const CourseDocument& course);
  bool SaveTo(const QString& file);
  void SetFile(const QString& file);
  void ShowTitle() const;
  void ShowList(const char* caption, const QStringList& messages) const;
  [[nodiscard]] QString GetFilter() const;

  DesktopWindow& window;
  DesktopSession& session;
  DesktopSettings& settings;
  std::optional<std::string> courseFile;
  /// What the file says; none if the panel doesn't hold what is in it.
  std::optional<CourseDocument> saved;
  bool isModified = false;
  bool isSettled = false;
  bool hadRefusals = false;
};
