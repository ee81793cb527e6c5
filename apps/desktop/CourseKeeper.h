// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>
#include <QTimer>
#include <optional>
#include <string>

#include "apps/author/CourseJournal.h"
#include "apps/desktop/CourseDesk.h"

/// Sees to it that no work is lost: notes the course in a journal soon after the author did something, and
/// offers at the start what another run left.
///
/// A second after an act at the earliest, and the less often the longer the reading of the course takes.
/// Nothing is noted while the component is busy, nor of a course that its file holds. Work that gave way to
/// another course without being saved stays in the journal until there is work on that one.
class CourseKeeper : public QObject {
 public:
  CourseKeeper(CourseDesk& courseDesk, const DesktopSession& programSession, const TzPath& journalFolder);

  /// Asks about the work that another run left, if there is any. True if it is back in the panel.
  bool OfferRestore(QWidget& window);

  /// Notes the course now. What isn't saved stays in the journal when the program ends.
  void Note();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void NoteSoon();
  void NoteUnlessBusy();

  CourseDesk& desk;
  const DesktopSession& session;
  CourseJournal journal;
  /// Of the course that was noted last.
  std::optional<std::string> notedFile;
  QTimer timer;
};
